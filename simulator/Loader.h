#pragma once

#include "Features.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace vornsim
{

/// The two images that a download puts into a base unit, one behind the other.
enum class ImageKind { Loader, Main };

/// A base unit in download mode. It knows the lines that begin with "&" only, and takes images in frames:
/// block number (high byte, low byte), 128 bytes, sum, carriage return.
///
/// The unit's own loader takes the loader image. Started, that one speaks 9600 bit/s again and takes the main
/// image; when this is started the download is at its end.
class Loader
{
public:
    static constexpr std::size_t FrameSize = 132;

    /// Download mode begins, at the speed that the unit has; what an earlier one received is gone.
    void Enter(int speed);
    void Leave() { active_ = false; }
    bool IsActive() const { return active_; }
    int Speed() const { return speed_; }

    /// Executes a line: the lead character, then what follows the address.
    Answer Execute(std::string_view command);
    /// What "&00E" has started: the loader image or, which ends the download, the main one.
    bool HasStartedLoader() const { return startedLoader_; }
    bool HasStartedMain() const { return startedMain_; }

    /// Whether a byte at the beginning of a line begins a frame: block numbers are far below the printing
    /// characters. The host must have asked for permission ("&00D") once.
    bool BeginsFrame(char first) const;
    /// Takes a whole frame, of the next block that was permitted, or once more of the one before.
    /// @param echo  bytes of the frame, behind the first, that the reply repeats
    Answer TakeFrame(std::string_view frame, std::size_t echo);
    /// The name of a frame for listings and faults: "loader0000", "main1023".
    std::string NameOf(std::string_view frame) const;

    const std::string &Image(ImageKind kind) const { return images_[static_cast<std::size_t>(kind)]; }

private:
    std::string &Present() { return images_[static_cast<std::size_t>(kind_)]; }
    Answer SetSpeed(char digit);
    Answer Start();

    bool active_ = false;
    int speed_ = 0;
    ImageKind kind_ = ImageKind::Loader;
    bool asked_ = false;     ///< for permission, for any block of the image
    bool permitted_ = false; ///< the next block
    bool startedLoader_ = false;
    bool startedMain_ = false;
    std::array<std::string, 2> images_;
};

} // namespace vornsim
