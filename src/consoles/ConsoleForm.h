#pragma once

#include "consoles/ConsoleWindow.h"
#include "shell/Controls.h"

#include <optional>
#include <string>
#include <string_view>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLineEdit;
class QPushButton;

namespace vorn
{

/// What a console's frame is built from.
struct ConsoleDesign {
    const char *name;    ///< "Form7254"
    const char *caption; ///< of the window
    int interval;        ///< of `tmrTimer`, milliseconds
    const char *updateButton = "cmdGeneralUpdate";
    const char *addressLabel = "Address     :";
    const char *addressUnit = "Dec";
    const char *checksumCaption = "CheckSum"; ///< of the check box
    const char *checksumLabel = nullptr;      ///< in front of a check box whose caption is its state
};

/// What a console says when an update fails.
struct UpdateTexts {
    std::string_view refused = "Configuration Baud Rate and Checksum is invalid!";
    std::string_view unread = "Read Configuration is invalid!";
};

/// The frame that all consoles are built on: general page, load, poll, general update. A console adds rows
/// to the page and its own steps.
class ConsoleForm : public ConsoleWindow
{
    Q_OBJECT

public:
    ConsoleForm(FormMain &main, const ConsoleDesign &design);

    // What the operator has touched. What a load or a read-back shows is no change.
    bool Changed = false;
    bool ChecksumChanged = false;
    bool Updating = false; ///< an update runs; polls stand still

    QTimer tmrTimer;
    QGroupBox *General;
    QLineEdit *txtOldAddress;
    QLineEdit *txtNewAddress;
    QComboBox *cboBaudRate;
    QCheckBox *chkChecksum;
    QLineEdit *txtFirmware;
    QPushButton *cmdGeneralUpdate; ///< `Command1` on 7276

protected:
    void Form_Load() final;
    void Form_Unload() override;

    /// Rows of the general page; what is added goes above the button.
    FrameGrid &GeneralRows() { return *generalRows_; }
    /// Ends the general page with its button; once, behind the last row.
    void EndGeneral();

    void InitialGeneral();
    /// Reads what the data area shows at first; each tick runs `Poll`.
    virtual void InitialData() = 0;
    virtual void Poll() = 0;

    // The console's own part in reading the general page.
    virtual int ReadAttempts() const { return Attempts; }
    virtual void BeforeRecord() {}
    virtual void ShowRecord() {} ///< `Reply` is the record
    virtual void RecordUnread() {}
    virtual void BeforeFirmware() {}
    virtual void FirmwareUnread() {}
    virtual void AfterFirmware() {}

    // The console's own part in the general update.
    enum class Step {
        Done,
        Failed,    ///< told; no success box
        Cancelled, ///< by the operator: everything stops, the timer too
    };
    virtual bool WritesRecord() const { return true; }
    virtual std::string TypeCode() const = 0;
    virtual std::string FormatByte() const; ///< two hexadecimal digits
    virtual UpdateTexts Texts() const { return {}; }
    virtual void ShowReadBack() {} ///< `Reply` is the record
    virtual Step UpdateMore() { return Step::Done; }
    virtual void ClearFlags();

    /// The box of a step that the module refused.
    void TellInvalid(std::string_view text = "Configuration is invalid!");

    static constexpr int Attempts = 4;

    /// Disables a part of the window for as long as it lives, so that nothing is typed that the action which
    /// runs would overwrite. The focus comes back, unless the operator has taken it elsewhere meanwhile.
    class Frozen final
    {
    public:
        Frozen(ConsoleForm &console, QWidget *part);
        ~Frozen();
        Frozen(const Frozen &) = delete;
        Frozen &operator=(const Frozen &) = delete;

    private:
        ConsoleForm &console_;
        QWidget *part_;
        QPointer<QWidget> focus_;
        QPointer<QWidget> moved_; ///< where disabling has put the focus
    };

private:
    struct Record {
        std::string source; ///< address before, two hexadecimal digits
        std::string address;
        bool checksum = false;
        std::string command;
    };

    void BuildGeneral(const ConsoleDesign &design);
    void ShowAddress();
    bool Repeat(int attempts, Register reg);
    void ShowBaud();
    void cmdGeneralUpdate_Click();
    Record RecordToWrite() const;
    bool UpdateRecord();
    void TakeOver(const Record &record);
    void ShowCheckRead(const Record &record);
    void TellRefused(const Record &record);

    std::optional<FrameGrid> generalRows_; ///< until the page is complete
    std::string source_;                   ///< address that the last update kept
};

} // namespace vorn
