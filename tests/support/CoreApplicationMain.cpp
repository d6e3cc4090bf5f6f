// SPDX-License-Identifier: Apache-2.0
// main() of test programs that need an event loop but no window.

#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("LANGUAGE", "en"); // of the programs that it starts, whatever language the tester speaks
    QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
