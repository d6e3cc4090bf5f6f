// SPDX-License-Identifier: Apache-2.0
// main() of test programs that drive widgets, without a display unless one is asked for.

#include "DefaultLeakSuppressions.h"

#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("LANGUAGE", "en"); // whatever language the tester speaks
    QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
