#include "platform/WholeFile.h"

#include "support/PortsFolder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <fstream>
#include <sstream>

using vorn::WriteWholeFile;

namespace
{

std::string ReadFile(const std::filesystem::path &path)
{
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

QString Name(const std::filesystem::path &path)
{
    return QString::fromStdString(path.string());
}

} // namespace

TEST(WholeFile, HoldsEveryByteAndNothingOfBefore)
{
    const PortsFolder folder;
    const std::filesystem::path path = folder.Root() / "file.txt";
    std::ofstream(path) << std::string(1000, 'o');
    const std::string bytes("a\r\n\0\xFF", 5);
    EXPECT_EQ(WriteWholeFile(Name(path), bytes), std::nullopt);
    EXPECT_EQ(ReadFile(path), bytes);
}

TEST(WholeFile, AFullDiskIsToldAndADeviceStaysOne)
{
    if (!std::filesystem::is_character_file("/dev/full"))
        GTEST_SKIP() << "this machine has no device that is always full";
    EXPECT_EQ(WriteWholeFile(QStringLiteral("/dev/full"), std::string(100'000, 'x')),
              QStringLiteral("No space left on device"));
    EXPECT_EQ(WriteWholeFile(QStringLiteral("/dev/full"), "x"), QStringLiteral("No space left on device"));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST(WholeFile, APlaceThatDoesNotExistIsTold)
{
    const PortsFolder folder;
    EXPECT_EQ(WriteWholeFile(Name(folder.Root() / "no" / "file.txt"), "x"),
              QStringLiteral("No such file or directory"));
    EXPECT_EQ(WriteWholeFile(Name(folder.Root()), "x"), QStringLiteral("Filename refers to a directory"));
}

TEST(WholeFile, AskingWhyItCantBeWrittenMakesNoFile)
{
    const PortsFolder folder;
    const std::filesystem::path path = folder.Root() / "file.txt", link = folder.Root() / "link.txt";
    std::filesystem::create_symlink(path, link);
    EXPECT_EQ(vorn::WhyNotWritable(Name(link)), std::nullopt);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_FALSE(std::filesystem::exists(path));
    std::ofstream(path) << "old";
    EXPECT_EQ(vorn::WhyNotWritable(Name(path)), std::nullopt);
    EXPECT_EQ(ReadFile(path), "old");
    EXPECT_EQ(vorn::WhyNotWritable(Name(folder.Root() / "no" / "file.txt")),
              QStringLiteral("No such file or directory"));
    EXPECT_EQ(vorn::WhyNotWritable(Name(folder.Root())), QStringLiteral("Filename refers to a directory"));
}

/// Opening a pipe that nobody reads would wait for good.
TEST(WholeFile, APipeIsNone)
{
    const PortsFolder folder;
    const std::filesystem::path path = folder.Root() / "pipe";
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(WriteWholeFile(Name(path), "x"), QStringLiteral("It is no file."));
    EXPECT_EQ(vorn::WhyNotWritable(Name(path)), QStringLiteral("It is no file."));
}

/// A disk that takes a part of the bytes says why it takes no more.
TEST(WholeFile, WhatFitsInPartIsToldWithItsReason)
{
    const PortsFolder folder;
    const std::filesystem::path path = folder.Root() / "file.txt";
    std::ofstream(path) << "old";
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
    rlimit full = before;
    full.rlim_cur = 100;
    setrlimit(RLIMIT_FSIZE, &full);
    const auto reason = WriteWholeFile(Name(path), std::string(1000, 'x'));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, ignored);
    EXPECT_EQ(reason, QStringLiteral("File too large"));
    EXPECT_EQ(ReadFile(path), "old");
}
