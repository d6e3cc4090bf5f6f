// SPDX-License-Identifier: Apache-2.0
// The operations that cross the boundary between host and apps stand in their slots.

#include "Foreign.h"

#include <FakeVYR.h>
#include <apps/AppInterface.h>
#include <apps/HostEnvironmentInterface.h>
#include <apps/StatusBarText.h>
#include <camera/StereoFrame.h>
#include <camera/VYRCameraDevice.h>
#include <libs/IPPCoreLib/ImageProcessingNodeWithThread.h>
#include <libs/IPPCoreLib/ImageProcessingPipeline.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <type_traits>

namespace {

using Foreign::asText;
using Foreign::Log;
using testing::ElementsAre;
using testing::IsEmpty;

static_assert(!std::has_virtual_destructor<AppInterface>::value, "called by slot");
static_assert(!std::has_virtual_destructor<HostEnvironmentInterface>::value, "called by slot");
static_assert(!std::has_virtual_destructor<StatusBarText>::value, "called by slot");
static_assert(!std::has_virtual_destructor<NodeData>::value, "called by slot");
static_assert(!std::has_virtual_destructor<ImageProcessingThread>::value, "called by slot");
static_assert(std::has_virtual_destructor<ImageProcessingNode>::value, "the destructor takes the first two slots");
static_assert(std::has_virtual_destructor<ImageProcessingPipeline>::value, "the destructor takes the first two slots");
static_assert(std::has_virtual_destructor<WaitableQueue<NodeData*>>::value, "the destructor takes the first two slots");

/// The other side's view of an object: what its compiler makes of the same address.
template<typename View, typename Interface>
View* seenAs(Interface* object)
{
    return static_cast<View*>(static_cast<void*>(object));
}

class NoApp final : public AppInterface
{
public:
    explicit NoApp(Log& log)
        : _log(log)
    {
    }

    void initialize(HostEnvironmentInterface* host) override { _log.push_back("initialize " + asText(host)); }
    bool requiresCamera() override { return note("requiresCamera"), true; }
    QString name() override { return note("name"), QString("Name"); }
    QString version() override { return note("version"), QString("Version"); }
    QString description() override { return note("description"), QString("Description"); }
    QIcon icon() override { return note("icon"), QIcon(); }
    void reserved() override { note("reserved"); }
    void start() override { note("start"); }
    void stop() override { note("stop"); }
    bool updatePending() override { return note("updatePending"), true; }
    void update() override { note("update"); }
    bool handleKeyEvent(QEvent* event) override { return note("handleKeyEvent " + asText(event)), false; }
    QWidget* createSettingsWidget(QWidget* parent) override
    {
        note("createSettingsWidget " + asText(parent));
        return parent;
    }

private:
    void note(const std::string& call) { _log.push_back(call); }

    Log& _log;
};

/// Addresses to hand through calls that nobody looks behind.
char places[8];

template<typename Type>
Type* place(int index)
{
    return reinterpret_cast<Type*>(&places[index]);
}

TEST(Slots, AppOperationsAreCalledInTheirOrder)
{
    Log log;
    NoApp app(log);
    const Log answers = Foreign::callEverySlot(seenAs<Foreign::App>(static_cast<AppInterface*>(&app)),
                                               place<Foreign::Host>(0), place<QEvent>(1), place<QWidget>(2));
    EXPECT_THAT(log, ElementsAre("initialize " + asText(&places[0]), "requiresCamera", "name", "version", "description",
                                 "icon", "reserved", "start", "stop", "updatePending", "update",
                                 "handleKeyEvent " + asText(&places[1]), "createSettingsWidget " + asText(&places[2])));
    EXPECT_THAT(answers,
                ElementsAre("true", "Name", "Version", "Description", "no icon", "true", "false", asText(&places[2])));
}

TEST(Slots, HostFindsTheOperationsOfAForeignApp)
{
    Log log;
    void* const foreign = Foreign::makeLoggingApp(log);
    auto* const app = static_cast<AppInterface*>(foreign);
    app->initialize(place<HostEnvironmentInterface>(0));
    EXPECT_TRUE(app->requiresCamera());
    EXPECT_EQ(app->name(), "the name");
    EXPECT_EQ(app->version(), "the version");
    EXPECT_EQ(app->description(), "the description");
    EXPECT_TRUE(app->icon().isNull());
    app->start();
    app->stop();
    EXPECT_TRUE(app->updatePending());
    app->update();
    EXPECT_TRUE(app->handleKeyEvent(place<QEvent>(1)));
    EXPECT_EQ(app->createSettingsWidget(place<QWidget>(2)), place<QWidget>(2));
    EXPECT_THAT(log,
                ElementsAre("slot0" + asText(&places[0]), "slot1", "slot2", "slot3", "slot4", "slot5", "slot7", "slot8",
                            "slot9", "slot10", "slot11" + asText(&places[1]), "slot12" + asText(&places[2])))
        << "slot 6 is nobody's to call";
    Foreign::deleteLoggingApp(foreign);
}

class NoHost final : public HostEnvironmentInterface
{
public:
    QDockWidget* centralDock() override { return place<QDockWidget>(0); }
    QDockWidget* sideDock() override { return place<QDockWidget>(1); }
    QDockWidget* bottomDock() override { return place<QDockWidget>(2); }
    StatusBarText* statusText(int index) override { return place<StatusBarText>(index); }
    VYRCameraDevice* cameraDevice() override { return place<VYRCameraDevice>(4); }
    VYRResolutionInfo currentResolution() override { return {320, 240, 5, 30.0F, 0.5F, 60.0F}; }
};

TEST(Slots, HostOperationsAreCalledInTheirOrder)
{
    NoHost host;
    EXPECT_THAT(Foreign::callEverySlot(seenAs<Foreign::Host>(static_cast<HostEnvironmentInterface*>(&host)), 3),
                ElementsAre(asText(&places[0]), asText(&places[1]), asText(&places[2]), asText(&places[3]),
                            asText(&places[4]), "320 240 5 30 0.5 60"));
}

TEST(Slots, StatusTextOperationsAreCalledInTheirOrder)
{
    class Text final : public StatusBarText
    {
    public:
        void setStatusText(QString text) override { log.push_back("text " + text.toStdString()); }
        void setStatusTextColored(QString text, QColor color) override
        {
            log.push_back("coloured " + text.toStdString() + " " + color.name().toStdString());
        }
        void setStatusVisible(bool visible) override { log.push_back(visible ? "visible" : "hidden"); }

        Log log;
    };
    Text text;
    Foreign::callEverySlot(seenAs<Foreign::StatusText>(static_cast<StatusBarText*>(&text)));
    EXPECT_THAT(text.log, ElementsAre("text plain", "coloured coloured #010203", "visible"));
}

class LoggingWorker : public ImageProcessingNodeWithThread
{
public:
    void ThreadInit() override { log.push_back("init"); }
    void ThreadStep() override { log.push_back("step"); }
    void ThreadExit() override { log.push_back("exit"); }
    void StartProcessing() override { log.push_back("start"); }
    void StopProcessing() override { log.push_back("stop"); }
    void SetInputNode(ImageProcessingNode* input) override { log.push_back("input " + asText(input)); }
    void Close() override { log.push_back("close"); }
    void Process(NodeData* item) override { log.push_back("process " + asText(item)); }

    Log log;
};

TEST(Slots, NodeOperationsAreCalledInTheirOrder)
{
    LoggingWorker worker;
    Foreign::callEverySlot(seenAs<Foreign::Node>(static_cast<ImageProcessingNode*>(&worker)), place<Foreign::Node>(0),
                           place<Foreign::Item>(1));
    EXPECT_THAT(worker.log,
                ElementsAre("input " + asText(&places[0]), "start", "stop", "close", "process " + asText(&places[1])));
}

TEST(Slots, ThreadHooksAreCalledInTheirOrder)
{
    LoggingWorker worker;
    Foreign::callEverySlot(seenAs<Foreign::Hooks>(static_cast<ImageProcessingThread*>(&worker)));
    EXPECT_THAT(worker.log, ElementsAre("init", "step", "exit"));
}

TEST(Slots, NodeWithThreadStartsAndStopsBehindItsDestructors)
{
    LoggingWorker worker;
    Foreign::callStartAndStop(seenAs<Foreign::NodeWithHooks>(static_cast<ImageProcessingThread*>(&worker)));
    EXPECT_THAT(worker.log, ElementsAre("start", "stop"));
    EXPECT_EQ(static_cast<void*>(static_cast<ImageProcessingThread*>(&worker)), static_cast<void*>(&worker))
        << "the thread is the first base";
}

TEST(Slots, CameraOperationsFollowThoseOfQObject)
{
    FakeVYR::reset();
    VYRCameraDevice camera(5, 320, 240, 30.0F);
    FakeVYR::clearCalls();
    auto* const foreign = seenAs<Foreign::Camera>(static_cast<QObject*>(&camera));
    Foreign::callProcess(foreign);
    EXPECT_THAT(FakeVYR::calls(), IsEmpty()) << "a camera processes nothing";
    Foreign::callStartStopClose(foreign);
    const Log calls = FakeVYR::calls();
    ASSERT_GE(calls.size(), 4U);
    EXPECT_EQ(calls[calls.size() - 4], "StartVYR 1");
    EXPECT_EQ(calls[calls.size() - 2], "StopVYR");
    EXPECT_EQ(calls[calls.size() - 1], "CloseVYR");
}

/// The fields of the camera node, as plain values behind the same bases.
class CameraFields : public QObject, public ImageProcessingNode
{
public:
    std::int32_t binning;
    std::int32_t width;
    std::int32_t height;
    float fps;
    std::uint8_t verticalFlip;
    std::uint8_t horizontalFlip;
    void* instance;
    std::int32_t exposure;
    std::int32_t gain;
    std::int32_t led;
    std::int32_t frameCount;
    float measuredFps;
    float temperature;
    std::uint64_t lastTimestamp;
    std::uint8_t streaming;
};

class CameraFieldsTest : public testing::Test
{
protected:
    CameraFieldsTest() { FakeVYR::reset(); }

    static const CameraFields& fieldsOf(VYRCameraDevice& camera)
    {
        return *seenAs<CameraFields>(static_cast<QObject*>(&camera));
    }
};

TEST_F(CameraFieldsTest, AFreshDeviceHoldsItsModeAndNothingElse)
{
    VYRCameraDevice camera(5, 320, 240, 30.0F);
    const CameraFields& fields = fieldsOf(camera);
    EXPECT_EQ(fields.binning, 5);
    EXPECT_EQ(fields.width, 320);
    EXPECT_EQ(fields.height, 240);
    EXPECT_EQ(fields.fps, 30.0F);
    EXPECT_EQ(fields.verticalFlip, 0);
    EXPECT_EQ(fields.horizontalFlip, 0);
    EXPECT_EQ(fields.instance, camera.Instance());
    EXPECT_EQ(fields.exposure, 0);
    EXPECT_EQ(fields.gain, 0);
    EXPECT_EQ(fields.led, 0);
    EXPECT_EQ(fields.frameCount, 0);
    EXPECT_EQ(fields.measuredFps, 0.0F);
    EXPECT_EQ(fields.temperature, -1.0F);
    EXPECT_EQ(fields.lastTimestamp, ~std::uint64_t(0));
    EXPECT_EQ(fields.streaming, 0);
}

TEST_F(CameraFieldsTest, MeasurementsStandInTheirPlaces)
{
    VYRCameraDevice camera(5, 320, 240, 30.0F);
    camera.StartProcessing();
    FakeVYR::emitFrame(0);
    FakeVYR::emitFrame(10'000);
    FakeVYR::emitFrameWithTemperature(12'000, 42.0F);
    const CameraFields& fields = fieldsOf(camera);
    EXPECT_EQ(fields.frameCount, 1);
    EXPECT_EQ(fields.measuredFps, 1.0F);
    EXPECT_EQ(fields.temperature, 42.0F);
    EXPECT_EQ(fields.lastTimestamp, 10'000U);
    EXPECT_EQ(fields.streaming, 1);
}

TEST_F(CameraFieldsTest, ControlsOfAClosedDeviceAreRemembered)
{
    FakeVYR::setOpens(false);
    VYRCameraDevice camera(5, 320, 240, 30.0F);
    camera.Exposure(7);
    camera.Gain(8);
    camera.Led(9);
    camera.HFlip(true);
    camera.VFlip(true);
    const CameraFields& fields = fieldsOf(camera);
    EXPECT_EQ(fields.exposure, 7);
    EXPECT_EQ(fields.gain, 8);
    EXPECT_EQ(fields.led, 9);
    EXPECT_EQ(fields.horizontalFlip, 1);
    EXPECT_EQ(fields.verticalFlip, 1);
    camera.HFlip(false);
    EXPECT_EQ(fields.horizontalFlip, 0);
    EXPECT_EQ(fields.verticalFlip, 1);
}

TEST(Slots, FrameIsReadByItsFieldsAndReleasedByItsSlot)
{
    FakeVYR::reset();
    VYRCameraDevice camera(5, 320, 240, 30.0F);
    camera.StartProcessing();
    FakeVYR::emitFrame(1234);
    NodeData* const item = camera.OutputQueue().Pop(0);
    ASSERT_NE(item, nullptr);
    const auto* const frame = seenAs<Foreign::Frame>(item);
    EXPECT_EQ(frame->owner, &camera);
    EXPECT_EQ(static_cast<const VYRFrameRecord*>(frame->record)->timestamp, 1234U);
    EXPECT_EQ(frame->fps, 0.0F);
    Foreign::release(seenAs<Foreign::Item>(item));
    int free = 0;
    while (camera.FrameCache().Acquire() != nullptr)
        ++free;
    EXPECT_EQ(free, 32);
}

} // namespace
