#pragma once

#include "consoles/InputConsole.h"

#include <array>

class QRadioButton;

namespace vorn
{

/// An input console whose module is asked channel by channel.
class ChannelConsole : public InputConsole
{
    Q_OBJECT

public:
    bool Ready = false;                      ///< loaded: what the operator chooses counts from now on
    std::array<QRadioButton *, 2> chkEnable; ///< "Enable", "Disable"

protected:
    ChannelConsole(FormMain &main, const ConsoleDesign &console, const InputDesign &design);

    void InitialData() override;
    void Poll() override;

    /// What a poll reads behind the channels.
    virtual void ReadMore() {}

    /// Writes what was changed; true if nothing failed. What failed is told.
    virtual bool WriteChannel(const ChannelEntry &entry);
    bool WriteChangedType(const ChannelEntry &entry);
    bool WriteChangedMask(const ChannelEntry &entry, std::string_view refused);

    void CalibrateClick(const Calibration &calibration, int channel, int position) override;

private:
    void InitialRange();
    void ReadValue(int channel);
    void ReadEnabled(int channel);
    void InitialChannel();
    void ReadChannel(int channel);
    void ShowEnabled(bool enabled);
    void AllowUpdate();
    void cmdChannelUpdate_Click(const ChannelEntry &entry);
};

} // namespace vorn
