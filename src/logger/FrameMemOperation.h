#pragma once

#include "logger/RecordSheet.h"
#include "shell/PageFrame.h"

#include <array>
#include <functional>

class QPushButton;
class QRadioButton;
class QTableView;

namespace vorn
{

class RecordModel;
class RecordPlot;

/// Recording and record transfer of the logging model, with the grid of the records read out.
class FrameMemOperation final : public PageFrame
{
public:
    explicit FrameMemOperation(FormMain &main);

    void Leave() override;
    /// Begins with the frame as its tab is chosen: nothing shown of a workbook.
    void Enter();
    /// Shows whether the module records.
    void ReadState(const NodeKey &node);
    /// List position of the module's storage mode; set from outside.
    std::function<int()> StorageMode;

    std::array<QRadioButton *, 2> OptionMOmode;   ///< 1 start, 0 stop
    std::array<QRadioButton *, 2> OptionDataMode; ///< 0 standard, 1 event records
    QPushButton *CmdTransferData, *CmdMemoryDataRead;
    QLabel *MemoryData; ///< number of the record that is transferred
    QTableView *DBGridReadMemory;
    RecordPlot *PlotReadMemory; ///< the sheet of the grid, as lines
    QPushButton *CmdWholePlot, *CmdSavePlot, *CmdExportSheet;

private:
    void BuildControls();
    void BuildView();
    void LayOut();
    void ShowView(bool show);
    void AllowReading();
    void OptionMOmode_Click(const NodeKey &node, int element);
    void CmdTransferData_Click(const NodeKey &node);
    void CmdMemoryDataRead_Click();
    void CmdSavePlot_Click();
    void CmdExportSheet_Click();

    RecordModel *records_;
};

} // namespace vorn
