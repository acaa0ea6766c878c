#pragma once

#include "shell/PageFrame.h"

#include <array>

class QPushButton;
class QRadioButton;
class QTableView;

namespace vorn
{

/// Recording and record transfer of the logging model, with the grid of the records read out.
class FrameMemOperation final : public PageFrame
{
public:
    explicit FrameMemOperation(FormMain &main);

    std::array<QRadioButton *, 2> OptionMOmode;   ///< 1 start, 0 stop
    std::array<QRadioButton *, 2> OptionDataMode; ///< 0 standard, 1 event records
    QPushButton *CmdTransferData, *CmdMemoryDataRead;
    QTableView *DBGridReadMemory;
};

} // namespace vorn
