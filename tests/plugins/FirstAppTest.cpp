// SPDX-License-Identifier: Apache-2.0
// The app that docs/first-app.md builds.

#include "TestHost.h"

#include <FakeVYR.h>

#include <apps/AppInterface.h>

#include <QDockWidget>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

class FirstApp : public testing::Test
{
protected:
    FirstApp()
    {
        FakeVYR::reset();
        host = std::make_unique<TestHost>(FakeVYR::defaultModes().front());
        app = host->load(QStringLiteral(FIRST_APP));
    }

    void SetUp() override { ASSERT_NE(app, nullptr); }

    QString shown() const { return static_cast<QLabel*>(host->centralDock()->widget())->text(); }

    bool shows(const char* text) const
    {
        return QTest::qWaitFor([&] { return shown() == QLatin1String(text); });
    }

    std::unique_ptr<TestHost> host;
    AppInterface* app = nullptr;
};

TEST_F(FirstApp, IntroducesItself)
{
    EXPECT_EQ(app->name(), "Frame Counter");
    EXPECT_TRUE(app->requiresCamera());
}

TEST_F(FirstApp, CountsFrames)
{
    host->start();
    EXPECT_EQ(shown(), "Waiting for frames");
    FakeVYR::emitFrame(0);
    EXPECT_TRUE(shows("1 frames, 0.0 per second"));
    FakeVYR::emitFrame(5000);
    FakeVYR::emitFrame(10000);
    EXPECT_TRUE(shows("3 frames, 2.0 per second"));
}

TEST_F(FirstApp, CountsAnewAfterAStopAndLeavesTheDockClean)
{
    host->start();
    FakeVYR::emitFrame(0);
    EXPECT_TRUE(shows("1 frames, 0.0 per second"));
    host->stop();
    EXPECT_FALSE(FakeVYR::isStreaming());
    EXPECT_EQ(host->centralDock()->widget(), nullptr);
    EXPECT_FALSE(app->updatePending());
    host->start();
    FakeVYR::emitFrame(0);
    EXPECT_TRUE(shows("1 frames, 0.0 per second"));
}

} // namespace
