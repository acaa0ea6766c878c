#pragma once

#include <string>
#include <string_view>

namespace vorn
{

/// Steps of the progress bar, which is the same for every download.
namespace DownloadBar
{
inline constexpr int SpeedSet = 10;
inline constexpr int LoaderBegins = 20;
inline constexpr int LoaderSent = 186;
inline constexpr int LoaderStarted = 221;
inline constexpr int MainBegins = 241;
inline constexpr int MainSent = 1265;
inline constexpr int End = 1300;

/// At a block of an image of so many blocks.
int AtBlock(int blocks, int block);
} // namespace DownloadBar

/// How far a download has come.
enum class DownloadStage {
    Preparing, ///< nothing of an image was sent
    Loader,    ///< the loader image is being sent
    Switching, ///< the loader was sent and starts
    Main,      ///< the main image is being sent
    Starting,  ///< the main image was sent and starts
};

/// What a unit is left in when the download is broken off at a stage, in whole sentences.
std::string_view StateLeftAt(DownloadStage stage);

/// Seconds that one block with its permission and its reply take on the line.
double SecondsOfBlock(int bitsPerSecond);

/// The time that a download still needs: the told waits, and the blocks by the time that the last ones took.
class DownloadTimeLeft final
{
public:
    DownloadTimeLeft(int blocks, int bitsPerSecond);

    void Waited(double seconds) { waits_ -= seconds; }
    void BlockSent(double seconds);

    double Seconds() const;
    /// "About 2 min 5 s left"
    std::string Text() const;

private:
    int blocks_;
    double secondsOfBlock_;
    double waits_;
};

} // namespace vorn
