#pragma once

#include "consoles/ChannelConsole.h"

namespace vorn
{

/// Console of the eight thermocouple and current inputs of 7224P.
class Form7224P final : public ChannelConsole
{
    Q_OBJECT

public:
    explicit Form7224P(FormMain &main);

    QComboBox *cboIntetime;
    QComboBox *CmbDataFormat;
    QComboBox *cboAllChannelRange; ///< "Not use", then the types
    QGroupBox *Frame1;             ///< what the lamps mean

protected:
    void BeforeRecord() override;
    void ShowRecord() override;
    void BeforeFirmware() override;
    void ReadMore() override;
    bool WriteChannel(const ChannelEntry &entry) override;

    std::string TypeCode() const override;
    std::string FormatByte() const override;
    UpdateTexts Texts() const override;
    void ShowReadBack() override;
    Step UpdateMore() override;

private:
    void BuildHint();
    void ShowFormat();

    std::string formatBits_ = "00000000"; ///< of the last record that was read
};

} // namespace vorn
