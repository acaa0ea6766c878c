#include "firmware/DownloadProgress.h"

#include "firmware/FirmwareImage.h"
#include "shell/TimeLeft.h"

#include <algorithm>

namespace vorn
{

namespace
{

constexpr double AllWaits = 1 + 3 + 1 + 3; // seconds
constexpr double BitsOfByte = 10;
constexpr double BytesOfBlock = 5 + 4 + 132 + 4; ///< "&00D", its reply, the frame, its reply
constexpr double Memory = 16;                    ///< blocks that the present speed is taken from

} // namespace

int DownloadBar::AtBlock(int blocks, int block)
{
    return block + (blocks == MainImageBlocks ? MainBegins : LoaderBegins);
}

std::string_view StateLeftAt(DownloadStage stage)
{
    switch (stage) {
    case DownloadStage::Preparing:
        return "No part of an image has been sent. The unit stays in download mode until it is reset.";
    case DownloadStage::Loader:
        return "The loader image has been sent in part, the main image not at all. The unit stays in "
               "download "
               "mode until it is reset.";
    case DownloadStage::Switching:
        return "The loader image has been sent, the main image not at all. The unit stays in its loader "
               "until "
               "it is reset.";
    case DownloadStage::Main:
        return "The main image has been sent in part only. The unit stays in its loader until it is reset; "
               "then the download must be repeated.";
    case DownloadStage::Starting:
        break;
    }
    return "The main image has been sent. Reset the unit and check its firmware version.";
}

double SecondsOfBlock(int bitsPerSecond)
{
    return BytesOfBlock * BitsOfByte / bitsPerSecond;
}

DownloadTimeLeft::DownloadTimeLeft(int blocks, int bitsPerSecond)
    : blocks_(blocks), secondsOfBlock_(SecondsOfBlock(bitsPerSecond)), waits_(AllWaits)
{
}

void DownloadTimeLeft::BlockSent(double seconds)
{
    --blocks_;
    secondsOfBlock_ += (seconds - secondsOfBlock_) / Memory;
}

double DownloadTimeLeft::Seconds() const
{
    return std::max(0.0, blocks_ * secondsOfBlock_ + waits_);
}

std::string DownloadTimeLeft::Text() const
{
    return TimeLeftText(Seconds());
}

} // namespace vorn
