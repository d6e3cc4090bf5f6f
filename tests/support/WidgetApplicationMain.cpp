// SPDX-License-Identifier: Apache-2.0
// main() of test programs that drive widgets, without a display unless one is asked for.

#include <gtest/gtest.h>

#include <QApplication>

// What Qt's offscreen platform itself never frees: an application without a line of ours leaks as much.
// NOLINTBEGIN(bugprone-reserved-identifier): the name is the sanitizer's
extern "C" Q_DECL_EXPORT const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions()
{
    return "leak:libqoffscreen\nleak:QScreen::QScreen\nleak:QWindowSystemInterface\n";
}
// NOLINTEND(bugprone-reserved-identifier)

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
