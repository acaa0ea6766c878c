#pragma once

#include "protocol/CalibrationMode.h"
#include "protocol/NodeKey.h"

#include <QDialog>
#include <QTimer>

#include <array>
#include <string>

class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace vorn
{

class FormMain;
enum class TrimStep;

/// Guides the operator through one calibration of the node that was on show when it was opened. All its
/// commands go to that node, whatever happens to the page below.
class FormCalibration final : public QDialog
{
    Q_OBJECT

public:
    FormCalibration(FormMain &main, const NodeKey &node, CalibrationMode mode);
    /// Drives an output to the point that is calibrated, and shows the window until it is closed.
    void Run();

    QLabel *LabZS;            ///< what to apply where, with a gap for the reference value
    QLabel *LabZSv;           ///< the reference value, laid over the gap
    QLabel *LabCJC, *LabCJCv; ///< cold junction temperature
    QLabel *LabCJCi;          ///< caption of the entry, or of the startup value
    QLineEdit *TextCJC;       ///< cold junction offset, degrees Celsius
    QLabel *LabStartup, *LabUnit;
    QLabel *LabPurpose;                    ///< what Execute does
    QLabel *LabAnswer;                     ///< tells when the module doesn't answer
    std::array<QPushButton *, 2> ComCTrim; ///< 0 up, 1 down
    QPushButton *ComZero, *Command1, *Command2;
    QTimer Timer1; ///< live reading, every 100 ms

    /// Shows the reference value for the range that the module tells. Nothing is sent for a model that none
    /// is known for.
    void PrintSpanValue();
    void PrintZeroValue();

    void done(int result) override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void BuildReadings();
    QLayout *BuildTrims();
    void BuildButtons();
    void Arrange(QLabel *picture);
    void FocusFirst();
    void LayReference();
    void ShowParts();

    bool Ask(std::string command);
    void TakeOpeningStep();
    void OpeningStep();
    void PrintReference(CalibrationMode mode);
    void ComZero_Click(const std::string &offset);
    void ComCTrim_Click(TrimStep step);
    void Timer1_Tick();
    void ShowTemperature();
    void ShowStartup();
    bool IsClosed() const { return closed_; }

    FormMain &main_;
    const NodeKey node_;
    const CalibrationMode mode_;
    QGridLayout *readings_;
    bool opened_ = false; ///< the opening step has been done
    bool closed_ = false;
    QTimer resized_; ///< runs out when the size has stayed for a while
};

/// Opens the dialogue.
class Calibration final
{
public:
    explicit Calibration(FormMain &main) : main_(main) {}
    /// The status bar names the model of the opening before.
    void Show(const NodeKey &node, CalibrationMode mode);

private:
    FormMain &main_;
    std::string model_;
};

} // namespace vorn
