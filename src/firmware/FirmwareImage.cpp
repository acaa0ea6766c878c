#include "firmware/FirmwareImage.h"

#include "firmware/FirmwareFrame.h"
#include "protocol/CommandFrame.h"
#include "protocol/Text.h"

#include <algorithm>
#include <fstream>

namespace vorn
{

namespace
{

constexpr LoaderImage LoaderOfExtended{"Hk8200e.img", 32};
constexpr LoaderImage LoaderOfLater{"Hk8200h.img", 32};
constexpr LoaderImage LoaderOfEarlier{"Download.img", 166};

/// The last version, as its reply, of the earlier kind of plain unit.
constexpr std::string_view LastEarlierVersion = "!00A2.00";

/// Blocks are taken from further behind when the loader had to be asked again; of a longer file so much more
/// is read as no download lives to need.
constexpr std::size_t ReadBehind = 0x10000;

std::string UpperCase(std::string_view text)
{
    std::string upper(text);
    std::ranges::transform(upper, upper.begin(), [](char c) {
        return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    });
    return upper;
}

} // namespace

bool IsExtendedBaseUnit(std::string_view reply)
{
    constexpr std::string_view Extended = "3900E";
    const std::string name = IsAccepted(reply) ? Mid(reply, 4) : std::string{};
    return name == Extended || name == "VORN" + std::string(Extended);
}

LoaderImage LoaderImageFor(bool extended, std::string_view versionReply)
{
    if (extended)
        return LoaderOfExtended;
    return versionReply > LastEarlierVersion ? LoaderOfLater : LoaderOfEarlier;
}

MainImageOffer MainImageFor(bool extended)
{
    if (extended)
        return {"QTLODE.img", "Qtlode.img", "Download File (Qtlode.img)(*.img)"};
    return {"QTLOD.img", "Qtlod.img", "Download File (Qtlod.img)(*.img)"};
}

bool IsMainImagePath(std::string_view path)
{
    std::string upper = UpperCase(path);
    std::ranges::replace(upper, '/', '\\');
    return upper.find("\\QTLOD") != std::string::npos && upper.find(".IMG") != std::string::npos;
}

FirmwareImage::Fault FirmwareImage::Read(const std::filesystem::path &path, int blocks)
{
    bytes_.clear();
    size_ = 0;
    blocks_ = blocks;
    std::error_code error;
    const auto type = std::filesystem::status(path, error).type();
    if (type == std::filesystem::file_type::not_found)
        return Fault::Missing;
    if (type != std::filesystem::file_type::regular)
        return type == std::filesystem::file_type::none ? Fault::Unreadable : Fault::NoFile;

    std::ifstream file(path, std::ios::binary);
    bytes_.resize(Needed() + ReadBehind);
    if (file.is_open())
        file.read(bytes_.data(), static_cast<std::streamsize>(bytes_.size()));
    bytes_.resize(static_cast<std::size_t>(file.gcount()));
    if (!file.is_open() || file.bad())
        return Fault::Unreadable;
    size_ = std::max<std::uintmax_t>(bytes_.size(), std::filesystem::file_size(path, error));
    if (error)
        size_ = bytes_.size();
    return bytes_.size() < Needed() ? Fault::Short : Fault::None;
}

std::size_t FirmwareImage::Needed() const
{
    return static_cast<std::size_t>(blocks_) * BlockSize;
}

std::string FirmwareImage::Block(std::size_t position) const
{
    std::string block = position < bytes_.size() ? bytes_.substr(position, BlockSize) : std::string{};
    block.resize(BlockSize, '\0');
    return block;
}

} // namespace vorn
