#pragma once

#include "consoles/InputConsole.h"

class QCheckBox;

namespace vorn
{

/// An input console whose module gives all channels in one reply.
class ScanConsole : public InputConsole
{
    Q_OBJECT

public:
    QCheckBox *chkChannel;
    QPushButton *cmdExit;

protected:
    ScanConsole(FormMain &main, const ConsoleDesign &console, const InputDesign &design,
                const char *enableCaption);

    int ReadAttempts() const override { return 1; }
    void BeforeRecord() override;
    void InitialData() override;
    void Poll() override { UpdateData(); }

    /// What a poll reads behind the channels.
    virtual void ReadMore() {}
    /// Shows the wiring of the channels.
    virtual void ShowWiring() { ShowLamps(); }

    bool WritesRecord() const override { return Changed; }
    std::string TypeCode() const override { return "00"; }
    Step UpdateMore() override;

private:
    void UpdateData();
    bool ReadChannels();
    void InitialRange();
    void InitialChannel();
    void ReadChannel(int channel);

    void cmdChannelUpdate_Click(const ChannelEntry &entry);
    bool WriteWatchdog();
};

} // namespace vorn
