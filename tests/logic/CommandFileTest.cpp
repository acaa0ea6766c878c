#include "tools/CommandFile.h"

#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace
{

using namespace vorn;

class CommandFileTest : public ::testing::Test
{
protected:
    CommandFileTest()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "vorn-file.XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
    }
    ~CommandFileTest() override { std::filesystem::remove_all(folder_); }

    std::filesystem::path Write(const std::string &bytes) const
    {
        const std::filesystem::path path = folder_ / "commands.txt";
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }

    std::vector<std::string> LinesOf(const std::string &bytes)
    {
        CommandFile file;
        file.Open(Write(bytes));
        std::vector<std::string> lines;
        while (!file.AtEnd())
            lines.push_back(file.ReadLine());
        return lines;
    }

    static int ErrorOfOpening(const std::filesystem::path &path)
    {
        CommandFile file;
        try {
            file.Open(path);
        } catch (const RuntimeError &error) {
            EXPECT_FALSE(file.IsOpen());
            return error.number();
        }
        return 0;
    }

    std::filesystem::path folder_;
};

using Lines = std::vector<std::string>;

TEST_F(CommandFileTest, EveryKindOfLineEndEndsALine)
{
    EXPECT_EQ(LinesOf("$012\r\n$022\r\n"), (Lines{"$012", "$022"}));
    EXPECT_EQ(LinesOf("$012\n$022\n"), (Lines{"$012", "$022"}));
    EXPECT_EQ(LinesOf("$012\r$022\r"), (Lines{"$012", "$022"}));
    EXPECT_EQ(LinesOf("$012\n\r\n$022\n\n"), (Lines{"$012", "", "$022", ""}));
}

TEST_F(CommandFileTest, TheLastLineNeedsNoEnd)
{
    EXPECT_EQ(LinesOf("$012\n$022"), (Lines{"$012", "$022"}));
    EXPECT_EQ(LinesOf("$012"), Lines{"$012"});
}

TEST_F(CommandFileTest, AnEmptyFileHasNoLine)
{
    EXPECT_EQ(LinesOf(""), Lines{});
    CommandFile file;
    file.Open(Write(""));
    EXPECT_EQ(file.ReadLine(), "");
}

TEST_F(CommandFileTest, EveryByteStaysAsItIs)
{
    std::string bytes;
    for (int c = 0; c < 256; ++c) {
        if (c != '\r' && c != '\n')
            bytes += static_cast<char>(c);
    }
    EXPECT_EQ(LinesOf(bytes + "\n" + bytes), (Lines{bytes, bytes}));
}

TEST_F(CommandFileTest, ALineOfAMegabyteComesWhole)
{
    const std::string line(1'000'000, 'x');
    EXPECT_EQ(LinesOf(line + "\r\n$012\r\n"), (Lines{line, "$012"}));
}

TEST_F(CommandFileTest, WhatIsMissingAndWhatCanNotBeReadAreTwoErrors)
{
    EXPECT_EQ(ErrorOfOpening(folder_ / "nothing.txt"), RuntimeErrorNumber::FileNotFound);
    EXPECT_EQ(ErrorOfOpening(folder_ / "no" / "folder.txt"), RuntimeErrorNumber::FileNotFound);
    EXPECT_EQ(ErrorOfOpening({}), RuntimeErrorNumber::FileNotFound);
    EXPECT_EQ(ErrorOfOpening(folder_), RuntimeErrorNumber::PathFileAccess);
    EXPECT_EQ(ErrorOfOpening("/dev/zero"), RuntimeErrorNumber::PathFileAccess);
    const std::filesystem::path path = Write("$012\n");
    EXPECT_EQ(ErrorOfOpening(path / "below-a-file"), RuntimeErrorNumber::FileNotFound);
    std::filesystem::permissions(path, std::filesystem::perms::none);
    if (::geteuid() != 0) { // nothing is forbidden to root
        EXPECT_EQ(ErrorOfOpening(path), RuntimeErrorNumber::PathFileAccess);
    }
}

TEST_F(CommandFileTest, AFileThatIsCutShortWhileItPlaysEnds)
{
    const std::filesystem::path path = Write(std::string(100'000, '\n') + "$012\n");
    CommandFile file;
    file.Open(path);
    EXPECT_EQ(file.ReadLine(), "");
    std::filesystem::resize_file(path, 1);
    int lines = 1;
    for (; !file.AtEnd(); ++lines)
        EXPECT_EQ(file.ReadLine(), "");
    EXPECT_LT(lines, 100'000);
}

TEST_F(CommandFileTest, OpeningAgainBeginsAtTheTop)
{
    CommandFile file;
    const std::filesystem::path path = Write("$012\n$022\n");
    file.Open(path);
    EXPECT_EQ(file.ReadLine(), "$012");
    EXPECT_EQ(file.ReadLine(), "$022");
    EXPECT_TRUE(file.AtEnd());
    file.Close();
    EXPECT_FALSE(file.IsOpen());
    file.Open(path);
    EXPECT_EQ(file.ReadLine(), "$012");
}

} // namespace
