#pragma once

#include "consoles/ConsoleForm.h"

#include <array>
#include <vector>

class QLabel;
class QScrollBar;

namespace vorn
{

class Lamp;

/// Console of the four analog outputs of 7234.
class Form7234 final : public ConsoleForm
{
    Q_OBJECT

public:
    static constexpr int Channels = 4;
    template <class Control>
    using PerChannel = std::array<Control, Channels>;

    explicit Form7234(FormMain &main);

    bool SlewChanged = false;          ///< by the operator
    PerChannel<std::string> TypeCode_; ///< of each channel, as the module holds it
    PerChannel<bool> EMSFlag{};        ///< the emergency input of a channel is enabled

    QComboBox *CmbSlewRate;

    QGroupBox *AoSetting;
    PerChannel<Lamp *> red, blue, gray;

    QGroupBox *Frame4;
    QComboBox *ChannelOut;
    PerChannel<QLabel *> ValueText;
    QLineEdit *Directdata;
    QScrollBar *HScroll1; ///< thousandths
    QPushButton *Command2;

    QGroupBox *Frame6;
    PerChannel<QComboBox *> cboRange;
    PerChannel<QLineEdit *> StartupValue, StopValue;
    PerChannel<QCheckBox *> Check1;
    QPushButton *Command6;
    QPushButton *Command7;

    QGroupBox *Frame1;
    QComboBox *ChannelCal;
    QPushButton *Command1; ///< calibrates 4 mA
    QPushButton *Command3; ///< calibrates 20 mA
    QPushButton *Command4; ///< clears 4 mA
    QPushButton *Command5; ///< clears 20 mA

protected:
    void ShowRecord() override;
    void RecordUnread() override;
    void FirmwareUnread() override;
    void InitialData() override { initsetting(); }
    void Poll() override { realtime(); }

    std::string TypeCode() const override { return "00"; }
    std::string FormatByte() const override;
    void ShowReadBack() override { ShowSlewRate(); }
    void ClearFlags() override;

private:
    void BuildEmergency();
    void BuildOutput();
    void BuildFunctions();
    void BuildCalibration();
    void Arrange();
    void ShowSlewRate();

    void initsetting();
    void realtime();
    void ReadEmergency();
    bool ReadOutput(int channel);
    void ChannelOut_Click();
    void Command2_Click(int channel, const std::string &value);

    /// What the operator has set for a channel.
    struct Function {
        int type;
        std::string startup;
        std::string stop;
        bool emergency;
    };
    void Command7_Click(const PerChannel<Function> &functions);
    bool SetFunction(int channel, const Function &function);
    bool IsWithin(const Function &function, int channel);

    /// The two points of an output that are calibrated.
    struct Point;
    static const Point FourMilliamperes;
    static const Point TwentyMilliamperes;
    bool IsCurrentOutput(int channel);
    void Calibrate(const Point &point, int channel);
    void Trim(const Point &point, int channel);
    void Clear(const Point &point, int channel);
};

} // namespace vorn
