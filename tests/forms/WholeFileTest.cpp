#include "platform/WholeFile.h"

#include "support/PortsFolder.h"

#include <gtest/gtest.h>

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
