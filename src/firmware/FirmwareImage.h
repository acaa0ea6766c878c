#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace vorn
{

/// The loader image that comes with the program for a kind of base unit.
struct LoaderImage {
    std::string_view name; ///< of the file in the program's folder
    int blocks;
};

/// Blocks of the main image.
inline constexpr int MainImageBlocks = 1024;

/// Whether a unit says that it is the extended base unit. `reply` is that to "$00M".
bool IsExtendedBaseUnit(std::string_view reply);

/// The loader image for a unit. `versionReply` is the reply to "$00F", which counts for a plain unit only.
LoaderImage LoaderImageFor(bool extended, std::string_view versionReply);

/// What the file dialog offers for the main image.
struct MainImageOffer {
    std::string_view fileName;
    std::string_view extension;
    std::string_view filter;
};
MainImageOffer MainImageFor(bool extended);

/// Whether a path names a main image, by its name alone and whatever its case. "/" and "\" are the same.
bool IsMainImagePath(std::string_view path);

/// An image file, in memory as a whole before anything of it is sent.
class FirmwareImage final
{
public:
    enum class Fault {
        None,
        Missing,
        NoFile,     ///< a folder or a device
        Unreadable, ///< no permission, or an error of the disk
        Short,      ///< less than its blocks need
    };

    /// Reads a file that is to fill so many blocks.
    Fault Read(const std::filesystem::path &path, int blocks);

    int Blocks() const { return blocks_; }
    /// Bytes that the blocks need.
    std::size_t Needed() const;
    /// Bytes of the file.
    std::uintmax_t Size() const { return size_; }
    /// The 128 bytes from a position of the file on. Behind the file's end they are 0.
    std::string Block(std::size_t position) const;

private:
    std::string bytes_;
    std::uintmax_t size_ = 0;
    int blocks_ = 0;
};

} // namespace vorn
