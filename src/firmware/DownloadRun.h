#pragma once

#include "firmware/DownloadProgress.h"
#include "firmware/FirmwareImage.h"

#include <QObject>

#include <cstddef>
#include <string>
#include <string_view>

namespace vorn
{

class FormMain;
class FormScan;

/// Title of all windows of a download.
inline constexpr std::string_view DownloadTitle = "VORN-3900 Download Firmware";

/// The part of a firmware download that speaks to the unit, from "$00D" to the start of the main image. The
/// main window is disabled and the progress window on show meanwhile; to close either asks first.
class DownloadRun final : public QObject
{
public:
    enum class Outcome {
        Completed,
        SetupFailed,    ///< a command between the images was never answered as it must be
        TransferFailed, ///< an image couldn't be sent, or the loader didn't start
        BrokenOff,      ///< by the operator
    };

    /// @param selection  list position of the line speed, 0 to 3 for 9600 to 57600
    DownloadRun(FormMain &main, const FirmwareImage &loader, const FirmwareImage &mainImage, int selection);
    ~DownloadRun() override;

    /// The whole of it. Behind it the port page has 9600 bit/s again.
    Outcome Run();

private:
    enum class Sent { Accepted, Again, Silence };

    Outcome Steps();
    Outcome LoadMain();
    void downlowfile(const FirmwareImage &image, bool &failed);

    bool Ask(std::string_view command, int tries, bool (*accepts)(std::string_view reply));
    bool SetSpeed();
    void SwitchSpeed();
    void Start();
    void SendDirect(std::string_view command);
    void Delay(float seconds);

    bool OpenPort();
    void ClosePort();
    bool AwaitPermission();
    bool PermissionComes();
    bool SendBlock(const std::string &frame, std::size_t &position);
    Sent SendFrame(const std::string &frame);
    bool AwaitLoader(std::size_t &position);
    bool AwaitInput(double elapsed);

    bool MayBreakOff(std::string_view question);
    FormScan *Window() const;
    void ShowBar(int value);
    void ShowWork(const std::string &text);

    FormMain &main_;
    const FirmwareImage &loader_;
    const FirmwareImage &mainImage_;
    int selection_;
    DownloadTimeLeft timeLeft_;
    DownloadStage stage_ = DownloadStage::Preparing;
    bool asking_ = false;
    bool broken_ = false;
};

} // namespace vorn
