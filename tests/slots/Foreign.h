// SPDX-License-Identifier: Apache-2.0
// The interfaces between host and apps as somebody else's compiler sees them: declared here once more, by slot.

#pragma once

#include <QIcon>
#include <QObject>
#include <QString>

#include <string>
#include <vector>

class QDockWidget;
class QEvent;
class QWidget;

/// Nothing of the host's headers is included here: an app that was compiled against an older or a differently written
/// declaration must find every operation in its place. A change of the host's declarations that moves a slot shows up
/// as a call that lands in the wrong operation.
///
/// The destructors are protected and not virtual wherever a virtual one would take up a slot.
namespace Foreign {

using Log = std::vector<std::string>;

struct Resolution
{
    int width;
    int height;
    int binning;
    float fps;
    float minFps;
    float maxFps;
};

class Item
{
public:
    virtual void slot0() = 0; // gives the item back

protected:
    ~Item() = default;
};

/// A lent camera frame, by its fields.
struct Frame
{
    void* operations;
    void* owner;
    const void* record;
    float fps;
};

class Node
{
public:
    virtual ~Node() = default;
    virtual void slot2(Node* input) = 0;
    virtual void slot3() = 0; // starts
    virtual void slot4() = 0; // stops
    virtual void slot5() = 0; // closes
    virtual void slot6(Item* item) = 0;
};

class Hooks
{
public:
    virtual void slot0() = 0; // before the first step
    virtual void slot1() = 0; // a step
    virtual void slot2() = 0; // after the last step

protected:
    ~Hooks() = default;
};

class NodeWithHooks : public Hooks
{
public:
    virtual ~NodeWithHooks() = default;
    virtual void slot5() = 0; // starts
    virtual void slot6() = 0; // stops
};

class Camera : public QObject
{
public:
    virtual void start() = 0;
    virtual void stop() = 0;
    virtual void close() = 0;
    virtual void process(Item* item) = 0;
};

class StatusText
{
public:
    virtual void slot0(QString text) = 0;
    virtual void slot1(QString text, QColor color) = 0;
    virtual void slot2(bool visible) = 0;

protected:
    ~StatusText() = default;
};

class Host
{
public:
    virtual QDockWidget* slot0() = 0; // central
    virtual QDockWidget* slot1() = 0; // side
    virtual QDockWidget* slot2() = 0; // bottom
    virtual StatusText* slot3(int index) = 0;
    virtual Camera* slot4() = 0;
    virtual Resolution slot5() = 0;

protected:
    ~Host() = default;
};

class App
{
public:
    virtual void slot0(Host* host) = 0; // initialize
    virtual bool slot1() = 0;           // requires a camera
    virtual QString slot2() = 0;        // name
    virtual QString slot3() = 0;        // version
    virtual QString slot4() = 0;        // description
    virtual QIcon slot5() = 0;
    virtual void slot6() = 0;  // never called by the host
    virtual void slot7() = 0;  // start
    virtual void slot8() = 0;  // stop
    virtual bool slot9() = 0;  // update pending
    virtual void slot10() = 0; // update
    virtual bool slot11(QEvent* event) = 0;
    virtual QWidget* slot12(QWidget* parent) = 0;

protected:
    ~App() = default;
};

/// Calls every slot in ascending order and returns what the slots answered, as text. Implemented apart from the tests,
/// so that no compiler sees both declarations at once.
Log callEverySlot(App* app, Host* host, QEvent* event, QWidget* parent);
void callEverySlot(StatusText* text);
void callEverySlot(Node* node, Node* input, Item* item);
void callEverySlot(Hooks* hooks);
void callStartAndStop(NodeWithHooks* node);
void callProcess(Camera* camera);
void callStartStopClose(Camera* camera);
void release(Item* item);

/// The host's answers, pointers as text.
Log callEverySlot(Host* host, int statusIndex);

/// An app that logs "slotN" for every call, with its arguments as pointers.
void* makeLoggingApp(Log& log);
void deleteLoggingApp(void* app);

std::string asText(const void* pointer);

} // namespace Foreign
