#include "firmware/FirmwareImage.h"

#include "firmware/FirmwareFrame.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

using namespace vorn;

namespace
{

class ImageFiles : public testing::Test
{
protected:
    ImageFiles()
    {
        std::string name = (std::filesystem::temp_directory_path() / "vorn-image-XXXXXX").string();
        folder_ = ::mkdtemp(name.data());
    }
    ~ImageFiles() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    std::filesystem::path File(const std::string &bytes)
    {
        const auto path = folder_ / "Qtlod.img";
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }
    /// Bytes that differ from block to block.
    static std::string Bytes(std::size_t count)
    {
        std::string bytes;
        for (std::size_t i = 0; i < count; ++i)
            bytes += static_cast<char>(i % 251);
        return bytes;
    }

    std::filesystem::path folder_;
    FirmwareImage image_;
};

using Fault = FirmwareImage::Fault;

} // namespace

TEST(LoaderImage, GoesByModelAndVersion)
{
    const struct {
        bool extended;
        std::string version;
        std::string_view name;
        int blocks;
    } cases[] = {
        {true, "", "Hk8200e.img", 32},
        {true, "!00A1.00", "Hk8200e.img", 32},
        {false, "!00A2.01", "Hk8200h.img", 32},
        {false, "!00A2.00x", "Hk8200h.img", 32},
        {false, "!00B1.00", "Hk8200h.img", 32},
        {false, "!00a1.00", "Hk8200h.img", 32}, // small letters sort behind
        {false, "!00A2.00", "Download.img", 166},
        {false, "!00A1.99", "Download.img", 166},
        {false, "!00A2.0", "Download.img", 166},
        {false, "?00", "Hk8200h.img", 32}, // "?" sorts above "!"
        {false, "", "Download.img", 166},
    };
    for (const auto &[extended, version, name, blocks] : cases) {
        const LoaderImage image = LoaderImageFor(extended, version);
        EXPECT_EQ(image.name, name) << version;
        EXPECT_EQ(image.blocks, blocks) << version;
    }
}

TEST(LoaderImage, TheExtendedUnitIsKnownWithAndWithoutItsFamily)
{
    EXPECT_TRUE(IsExtendedBaseUnit("!003900E"));
    EXPECT_TRUE(IsExtendedBaseUnit("!00VORN3900E"));
    EXPECT_FALSE(IsExtendedBaseUnit("!003900"));
    EXPECT_FALSE(IsExtendedBaseUnit("!003900EX"));
    EXPECT_FALSE(IsExtendedBaseUnit("?003900E"));
    EXPECT_FALSE(IsExtendedBaseUnit(""));
}

TEST(MainImage, IsOfferedByModel)
{
    EXPECT_EQ(MainImageFor(false).fileName, "QTLOD.img");
    EXPECT_EQ(MainImageFor(false).extension, "Qtlod.img");
    EXPECT_EQ(MainImageFor(false).filter, "Download File (Qtlod.img)(*.img)");
    EXPECT_EQ(MainImageFor(true).fileName, "QTLODE.img");
    EXPECT_EQ(MainImageFor(true).extension, "Qtlode.img");
    EXPECT_EQ(MainImageFor(true).filter, "Download File (Qtlode.img)(*.img)");
}

TEST(MainImage, IsKnownByItsPath)
{
    for (const char *path :
         {"C:\\fw\\Qtlod.img", "/home/me/Qtlod.img", "/qtlode.IMG", "/x/QTLOD-2.img.bak", "/Qtlod/else.img"})
        EXPECT_TRUE(IsMainImagePath(path)) << path;
    for (const char *path :
         {"/home/MYQTLOD.IMG", "/home/Qtlod.bin", "/home/Hk8200h.img", "Qtlod.img", "", "/Qtlodimg"})
        EXPECT_FALSE(IsMainImagePath(path)) << path;
}

TEST_F(ImageFiles, AFileThatFillsItsBlocksIsTaken)
{
    const std::string bytes = Bytes(32 * BlockSize);
    EXPECT_EQ(image_.Read(File(bytes), 32), Fault::None);
    EXPECT_EQ(image_.Size(), bytes.size());
    EXPECT_EQ(image_.Block(0), bytes.substr(0, 128));
    EXPECT_EQ(image_.Block(31 * BlockSize), bytes.substr(31 * BlockSize));
    EXPECT_EQ(image_.Block(31 * BlockSize + 1), bytes.substr(31 * BlockSize + 1) + '\0') << "behind its end";
    EXPECT_EQ(image_.Block(32 * BlockSize), std::string(BlockSize, '\0'));
}

TEST_F(ImageFiles, OfALongerFileTheFirstBlocksCount)
{
    const std::string bytes = Bytes(32 * BlockSize + 200000);
    EXPECT_EQ(image_.Read(File(bytes), 32), Fault::None);
    EXPECT_EQ(image_.Size(), bytes.size());
    EXPECT_EQ(image_.Block(31 * BlockSize + 5), bytes.substr(31 * BlockSize + 5, BlockSize));
}

TEST_F(ImageFiles, OneByteTooFewIsTooShort)
{
    EXPECT_EQ(image_.Read(File(Bytes(32 * BlockSize - 1)), 32), Fault::Short);
    EXPECT_EQ(image_.Size(), 32 * BlockSize - 1);
    EXPECT_EQ(image_.Read(File(""), 32), Fault::Short);
    EXPECT_EQ(image_.Size(), 0U);
}

TEST_F(ImageFiles, WhatIsNoFileIsTold)
{
    EXPECT_EQ(image_.Read(folder_ / "nowhere.img", 32), Fault::Missing);
    EXPECT_EQ(image_.Read(folder_, 32), Fault::NoFile);
    EXPECT_EQ(image_.Read("/dev/null", 32), Fault::NoFile);
    std::filesystem::create_symlink("loop.img", folder_ / "loop.img");
    EXPECT_EQ(image_.Read(folder_ / "loop.img", 32), Fault::Unreadable);
    EXPECT_EQ(image_.Read("/proc/self/mem", 32), Fault::Unreadable) << "it opens, and can't be read";
}

TEST_F(ImageFiles, WhatWasReadOutlivesItsFile)
{
    const std::string bytes = Bytes(32 * BlockSize);
    const auto path = File(bytes);
    ASSERT_EQ(image_.Read(path, 32), Fault::None);
    std::filesystem::remove(path);
    EXPECT_EQ(image_.Block(128), bytes.substr(128, 128));
    EXPECT_EQ(image_.Read(path, 32), Fault::Missing);
    EXPECT_EQ(image_.Size(), 0U);
}
