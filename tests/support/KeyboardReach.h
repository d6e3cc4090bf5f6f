// SPDX-License-Identifier: Apache-2.0
// What somebody finds who has a keyboard only, or hears the screen read out.

#pragma once

#include <QAccessible>
#include <QApplication>
#include <QTest>
#include <QWidget>

#include <string>
#include <vector>

/// The widgets of a window that Tab goes to, or Backtab, once round from the one that it goes to first. Ends after a
/// hundred steps, when one is never left or the first never comes again.
inline std::vector<QWidget*> focusRound(QWidget& window, Qt::Key key = Qt::Key_Tab)
{
    std::vector<QWidget*> round;
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window))
        return round;
    for (int step = 0; step < 100; ++step) {
        QWidget* const here = QApplication::focusWidget();
        QTest::keyClick(here != nullptr ? here : &window, key);
        QWidget* const reached = QApplication::focusWidget();
        if (reached == nullptr || (!round.empty() && reached == round.front()))
            break;
        round.push_back(reached);
    }
    return round;
}

/// What is read out when the widget gets the focus.
inline std::string spokenName(QWidget& widget)
{
    const QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(&widget);
    return spoken != nullptr ? spoken->text(QAccessible::Name).toStdString() : std::string();
}
