// SPDX-License-Identifier: Apache-2.0
// A user of the program: looks at its windows and works it with mouse and keyboard.

#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QVector>

#include <functional>

/// Does a task step by step inside the running program. Each step waits until what it needs is on the screen,
/// is noted in the log as "user NAME", and sends events to the windows, where the window system's own arrive.
/// What the user sees is noted as "sees WHAT". A step whose time does not come within a minute ends the
/// process with status 3.
///
/// Tasks: "change" sets another capture mode and another app in one dialog; "check" looks what a later start
/// makes of it and goes back to Stereo View; "look" waits for the frame rate and leaves.
/// Thread: GUI thread.
class User : public QObject
{
    Q_OBJECT

public:
    explicit User(const QString& task, QObject* parent = nullptr);

private:
    enum class Acting {
        Returns,
        OpensDialog ///< and returns when that is closed
    };

    struct Step
    {
        QString name;
        std::function<bool()> ready;
        std::function<void()> act;
        Acting acting;
    };

    void planChange();
    void planCheck();
    void planLook();
    void planCaptureMode();
    void planMenu(const QString& menu, const QString& entry);
    void plan(const QString& name, std::function<bool()> ready, std::function<void()> act,
              Acting acting = Acting::Returns);

    void lookLater();
    void look();
    void giveUp() const;

    QVector<Step> _steps;
    int _next = 0;
    bool _acting = false;   ///< a step that returns has not returned yet
    QElapsedTimer _waiting; ///< since the last step
};
