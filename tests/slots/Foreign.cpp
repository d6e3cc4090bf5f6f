// SPDX-License-Identifier: Apache-2.0
// Calls by slot, through declarations of their own.

#include "Foreign.h"

#include <QColor>

#include <sstream>

namespace Foreign {

namespace {

class LoggingApp final : public App
{
public:
    explicit LoggingApp(Log& log)
        : _log(log)
    {
    }

    void slot0(Host* host) override { note(0, asText(host)); }
    bool slot1() override { return note(1), true; }
    QString slot2() override { return note(2), QString("the name"); }
    QString slot3() override { return note(3), QString("the version"); }
    QString slot4() override { return note(4), QString("the description"); }
    QIcon slot5() override { return note(5), QIcon(); }
    void slot6() override { note(6); }
    void slot7() override { note(7); }
    void slot8() override { note(8); }
    bool slot9() override { return note(9), true; }
    void slot10() override { note(10); }
    bool slot11(QEvent* event) override { return note(11, asText(event)), true; }
    QWidget* slot12(QWidget* parent) override { return note(12, asText(parent)), parent; }

private:
    void note(int slot, const std::string& argument = std::string())
    {
        _log.push_back("slot" + std::to_string(slot) + argument);
    }

    Log& _log;
};

} // namespace

std::string asText(const void* pointer)
{
    std::ostringstream text;
    text << pointer;
    return text.str();
}

Log callEverySlot(App* app, Host* host, QEvent* event, QWidget* parent)
{
    Log answers;
    app->slot0(host);
    answers.push_back(app->slot1() ? "true" : "false");
    answers.push_back(app->slot2().toStdString());
    answers.push_back(app->slot3().toStdString());
    answers.push_back(app->slot4().toStdString());
    answers.push_back(app->slot5().isNull() ? "no icon" : "icon");
    app->slot6();
    app->slot7();
    app->slot8();
    answers.push_back(app->slot9() ? "true" : "false");
    app->slot10();
    answers.push_back(app->slot11(event) ? "true" : "false");
    answers.push_back(asText(app->slot12(parent)));
    return answers;
}

Log callEverySlot(Host* host, int statusIndex)
{
    const Resolution resolution = host->slot5();
    std::ostringstream mode;
    mode << resolution.width << ' ' << resolution.height << ' ' << resolution.binning << ' ' << resolution.fps << ' '
         << resolution.minFps << ' ' << resolution.maxFps;
    return {asText(host->slot0()), asText(host->slot1()),
            asText(host->slot2()), asText(host->slot3(statusIndex)),
            asText(host->slot4()), mode.str()};
}

void callEverySlot(StatusText* text)
{
    text->slot0("plain");
    text->slot1("coloured", QColor(1, 2, 3));
    text->slot2(true);
}

void callEverySlot(Node* node, Node* input, Item* item)
{
    node->slot2(input);
    node->slot3();
    node->slot4();
    node->slot5();
    node->slot6(item);
}

void callEverySlot(Hooks* hooks)
{
    hooks->slot0();
    hooks->slot1();
    hooks->slot2();
}

void callStartAndStop(NodeWithHooks* node)
{
    node->slot5();
    node->slot6();
}

void callProcess(Camera* camera)
{
    camera->process(nullptr);
}

void callStartStopClose(Camera* camera)
{
    camera->start();
    camera->stop();
    camera->close();
}

void release(Item* item)
{
    item->slot0();
}

void* makeLoggingApp(Log& log)
{
    return static_cast<App*>(new LoggingApp(log));
}

void deleteLoggingApp(void* app)
{
    delete static_cast<LoggingApp*>(static_cast<App*>(app));
}

} // namespace Foreign
