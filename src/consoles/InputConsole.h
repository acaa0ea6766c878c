#pragma once

#include "consoles/ColdJunctionEntry.h"
#include "consoles/ConsoleForm.h"
#include "consoles/ConsoleTables.h"
#include "consoles/Watchdog.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

class QLabel;

namespace vorn
{

class Lamp;

/// Names of the three lamps of a channel.
struct LampNames {
    const char *normal;
    const char *fault;
    const char *off;
};

/// What an input console is built from, beside its frame.
struct InputDesign {
    InputTypes types;
    int channels;
    const char *channelEntry; ///< of `cboChannel`
    const char *typeList;     ///< name of the list of types
    const char *zeroButton;   ///< name and caption of the button that calibrates zero
    const char *zeroCaption;
    const char *spanCaption;
    const char *spanButton;
    const char *calibrationTitle; ///< of its boxes, up to what is calibrated
    std::optional<LampNames> lamps = std::nullopt;
};

/// What the consoles of the analog input models share: the page of a channel, the data area, calibration.
class InputConsole : public ConsoleForm
{
    Q_OBJECT

public:
    std::string EnableBits; ///< eight "0" and "1", character 8 - i for channel i
    std::string WireBits;   ///< the same, "1" for an open wire
    bool TypeChanged = false;
    bool EnableChanged = false;

    QGroupBox *Channel;
    QComboBox *cboChannel;
    QComboBox *cboType; ///< `cboRange` on all but 7216
    QPushButton *cmdChannelUpdate;
    QPushButton *cmdZero; ///< `cmdZeroCalE` on 7216
    QPushButton *cmdSpan; ///< `cmdSpanCal` on 7216

    QGroupBox *AI;
    std::vector<QLabel *> lblChannel;
    std::vector<QLabel *> txtvalue;
    std::vector<QLabel *> txtRange;
    QLabel *txtCJCValue = nullptr; ///< of models with a cold junction

    std::optional<class Watchdog> Watchdog;
    std::optional<ColdJunctionEntry> ColdJunction;

protected:
    InputConsole(FormMain &main, const ConsoleDesign &console, const InputDesign &design);

    int Channels() const { return design_.channels; }
    InputTypes Types() const { return design_.types; }
    bool IsEnabled(int channel) const;

    /// Adds the field of a cold-junction temperature below the channels.
    void AddColdJunctionValue();
    void ReadColdJunctionValue();
    /// Ends the page with the rows that the channels' frame gets.
    void Arrange(std::initializer_list<QWidget *> below = {});

    /// Shows the one lamp of each channel that says how it is.
    void ShowLamps();

    /// Reads the bits of all channels; false, and `bits` as they were, if the module tells none.
    bool ReadBits(Register reg, std::string &bits);

    /// Reads a channel's type; its list position, -1 if the module doesn't answer or the code isn't known.
    int ReadType(int channel);
    /// Reads a channel's type into its row of the data area; false if the module doesn't answer.
    bool ShowRange(int channel);
    /// Shows a type that was read, unless the operator has chosen another one meanwhile.
    void ShowType(int position);

    /// What the operator has set for a channel when he presses its update.
    struct ChannelEntry {
        int channel;
        int type;
        bool enabled;
        bool enableChanged;
        bool typeChanged;
    };
    /// Takes it, and clears its flags: what is changed from now on is for the next update.
    ChannelEntry TakeEntry(bool enabled);
    bool WriteMask(int channel, bool enabled);
    bool WriteType(int channel, int position);
    void TellChannelSet();

    /// A calibration that a box announces. What the module said last decides the box at its end, also when
    /// the operator has cancelled.
    struct Calibration {
        Register step;
        const char *kind;  ///< "Zero", as in the results
        const char *title; ///< the same, as in the prompt
        std::string_view InputType::*value;
    };
    static const Calibration Zero;
    static const Calibration Span;
    void Calibrate(const Calibration &calibration, int channel, int position);
    std::string CalibrationTitle(const Calibration &calibration) const;
    virtual void CalibrateClick(const Calibration &calibration, int channel, int position)
    {
        Calibrate(calibration, channel, position);
    }
    void OnCalibration(QAbstractButton *button, const Calibration &calibration);

    /// Sends the offset that was typed; told when it is none, or the module refuses it.
    bool WriteColdJunction(std::string_view refused);

    void ClearFlags() override;

    FrameGrid &ChannelRows() { return *channelRows_; }

private:
    void BuildChannelPage();
    void BuildDataArea();

    InputDesign design_;
    std::optional<FrameGrid> channelRows_; ///< until the page is complete
    std::optional<FrameGrid> dataRows_;
    std::vector<std::array<Lamp *, 3>> lamps_; ///< normal, fault, off
};

/// Seven characters of a channel in a reply that begins with ">" and holds channels side by side.
std::string ReadingAt(std::string_view reply, int channel);

} // namespace vorn
