// SPDX-License-Identifier: Apache-2.0
// Settings files that once were, or might have been, trouble: each is read as the program reads its own.

#include "LibConfigLeaks.h"
#include "SettingsFileCheck.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <cctype>
#include <string>
#include <vector>

namespace {

std::vector<std::string> corpus()
{
    std::vector<std::string> names;
    for (const QString& name : QDir(CORPUS).entryList(QDir::Files, QDir::Name))
        names.push_back(name.toStdString());
    return names;
}

class SettingsCorpusTest : public testing::TestWithParam<std::string>
{
};

TEST_P(SettingsCorpusTest, IsReadOrReplaced)
{
    QFile file(QDir(CORPUS).filePath(QString::fromStdString(GetParam())));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    makeSettingsFolder();
    EXPECT_EQ(checkSettingsFile(file.readAll()), "");
}

std::string nameOf(const testing::TestParamInfo<std::string>& info)
{
    std::string name;
    for (const char letter : info.param)
        name += std::isalnum(static_cast<unsigned char>(letter)) != 0 ? letter : '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(Files, SettingsCorpusTest, testing::ValuesIn(corpus()), nameOf);

} // namespace
