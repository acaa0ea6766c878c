// A firmware download against the time that its bytes take on the line.

#include "Figures.h"
#include "Measures.h"
#include "Probe.h"
#include "Stand.h"

#include "firmware/DownloadProgress.h"
#include "firmware/DownloadRun.h"
#include "firmware/FirmwareFrame.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace
{

constexpr int LoaderBlocks = 32;
constexpr double ToldWaits = 8; ///< seconds
constexpr double BitsOfByte = 10;

struct Speed {
    int selection;
    int bitsPerSecond;
};

/// The commands between the images: "$00D", "&00Sc", "&00A" and "&00E" with their replies, less than forty
/// bytes at 9600 and forty at the chosen speed.
double SecondsOfCommands(int bitsPerSecond)
{
    constexpr double Bytes = 40;
    return Bytes * BitsOfByte / 9600 + Bytes * BitsOfByte / bitsPerSecond;
}

void Download(Stand &stand, const Speed &speed, Figures &figures)
{
    constexpr int TimeOut = 200;
    stand.ChoosePort(Stand::FirmwarePort, Baud9600, TimeOut);
    const auto file = std::filesystem::temp_directory_path() / "vorn-bench.img";
    std::ofstream(file, std::ios::binary) << std::string(vorn::MainImageBlocks * vorn::BlockSize, 'v');
    vorn::FirmwareImage loader, image;
    if (loader.Read(file, LoaderBlocks) != vorn::FirmwareImage::Fault::None ||
        image.Read(file, vorn::MainImageBlocks) != vorn::FirmwareImage::Fault::None)
        throw std::runtime_error("no image to download");
    std::filesystem::remove(file);

    Probe probe;
    const auto start = Steady::now();
    const auto outcome = vorn::DownloadRun(stand.Main(), loader, image, speed.selection).Run();
    const double whole = Milliseconds(Steady::now() - start).count() / 1000;
    probe.End();
    if (outcome != vorn::DownloadRun::Outcome::Completed)
        throw std::runtime_error("the download fails");
    const double bare = ToldWaits + SecondsOfCommands(speed.bitsPerSecond) +
                        (LoaderBlocks + vorn::MainImageBlocks) * vorn::SecondsOfBlock(speed.bitsPerSecond);
    const std::string at = " at " + std::to_string(speed.bitsPerSecond) + " bit/s";
    figures.Add("firmware download" + at, whole / bare, 1.05, "x",
                Decimal(whole, 2) + " s against " + Decimal(bare, 2) + " s of line and told waits");
    figures.Add("longest time without serving events, in a download" + at, probe.Longest(), 50, "ms",
                std::to_string(probe.Count()) + " looks, half of them within " + Decimal(probe.Middle(), 2) +
                    " ms");
}

} // namespace

void MeasureFirmware(Stand &stand, Figures &figures)
{
    for (const Speed &speed : {Speed{3, 57600}, Speed{0, 9600}})
        Download(stand, speed, figures);
}
