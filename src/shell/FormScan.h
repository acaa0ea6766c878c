#pragma once

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

namespace vorn
{

class Animation;
class FormMain;

/// Works that the progress window is for. Its tag is "Scan", "Memory" or "Download".
enum class ProgressOf {
    Scan,
    Memory,   ///< the transfer of a logger's records
    Download, ///< of firmware, which has no stop button; to close its window asks to break it off
};

/// Progress window of the long handlers.
class FormScan final : public QWidget
{
    Q_OBJECT

public:
    /// The window stays above the others and goes with its closing.
    FormScan(FormMain &main, ProgressOf work);

    /// Shows the address that is asked now.
    void ShowAddress(const std::string &hexAddress, int address);

    Animation *Animation1;
    QProgressBar *ProgressBar1;
    QLabel *LabScnMsg;
    QLabel *LabScaningH; ///< address, hexadecimal
    QLabel *LabScaningD; ///< address, decimal
    QLabel *Label1;      ///< subject of a transfer
    QLabel *LabTimeLeft; ///< time that a transfer still needs
    QPushButton *Command1;

Q_SIGNALS:
    /// The operator wants to close the window of a download.
    void CloseAsked();

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void BuildScanRow(QLayout *layout);
    void Command1_Click();

    FormMain &main_;
};

} // namespace vorn
