#include "logger/FrameMemOperation.h"

#include "shell/Controls.h"

#include <QButtonGroup>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>

namespace vorn
{

FrameMemOperation::FrameMemOperation(FormMain &main)
    : PageFrame(main, "FrameMemOperation", "Memory Operation")
{
    const auto option = [this](const char *name, const char *caption) {
        return Named(new QRadioButton(QString::fromLatin1(caption), this), name);
    };
    OptionMOmode = {option("OptionMOmode_0", "STO&P"), option("OptionMOmode_1", "STA&RT")};
    OptionDataMode = {option("OptionDataMode_0", "&Standard"), option("OptionDataMode_1", "&Event")};
    for (const auto &pair : {OptionMOmode, OptionDataMode}) {
        auto *group = new QButtonGroup(this);
        for (QRadioButton *button : pair)
            group->addButton(button);
    }
    CmdTransferData = MakeButton(this, QStringLiteral("CmdTransferData"), "&Transfer data to host ");
    CmdMemoryDataRead = MakeButton(this, QStringLiteral("CmdMemoryDataRead"), "Sho&w records");
    DBGridReadMemory = Named(new QTableView(this), "DBGridReadMemory", QStringLiteral("Records"));

    FrameGrid grid(this);
    auto *mode = SideBySide({OptionMOmode[1], OptionMOmode[0]});
    mode->addStretch();
    mode->addWidget(CmdTransferData);
    grid.WideRow(mode);
    auto *records = SideBySide({OptionDataMode[0], OptionDataMode[1]});
    records->addStretch();
    records->addWidget(CmdMemoryDataRead);
    grid.WideRow(records);
    grid.WideRow(DBGridReadMemory);
}

} // namespace vorn
