// SPDX-License-Identifier: Apache-2.0
// Everything that docs/first-app.md shows stands in the example, word for word.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Block
{
    int line = 0;
    std::string language;
    std::string file; ///< in the example's folder
    std::string text;
};

std::string contentsOf(const std::string& path)
{
    std::ifstream file(path);
    EXPECT_TRUE(file) << path;
    std::ostringstream contents;
    contents << file.rdbuf();
    return contents.str();
}

/// The fenced blocks of the page: "```cpp EdgeNode.cpp" to "```".
std::vector<Block> blocksOf(const std::string& page)
{
    std::istringstream lines(page);
    std::vector<Block> blocks;
    bool inside = false;
    std::string text;
    for (int number = 1; std::getline(lines, text); ++number) {
        const bool isFence = text.rfind("```", 0) == 0;
        if (isFence && !inside) {
            Block block;
            block.line = number;
            std::istringstream(text.substr(3)) >> block.language >> block.file;
            blocks.push_back(block);
        } else if (!isFence && inside) {
            blocks.back().text += text + '\n';
        }
        inside = inside != isFence;
    }
    EXPECT_FALSE(inside) << "a block without an end";
    return blocks;
}

TEST(FirstAppPage, EveryBlockOfCodeStandsInTheExample)
{
    const std::vector<Block> blocks = blocksOf(contentsOf(PAGE));
    int code = 0;
    for (const Block& block : blocks) {
        if (block.language == "console") // what is typed
            continue;
        SCOPED_TRACE("block at line " + std::to_string(block.line));
        EXPECT_TRUE(block.language == "cpp" || block.language == "cmake") << block.language;
        ASSERT_FALSE(block.file.empty()) << "a block must name its file";
        const std::string source = '\n' + contentsOf(std::string(EXAMPLE_FOLDER "/") + block.file);
        EXPECT_NE(source.find('\n' + block.text), std::string::npos) << block.text << "is not in " << block.file;
        ++code;
    }
    EXPECT_GE(code, 10) << "the page is the one that builds the example";
}

} // namespace
