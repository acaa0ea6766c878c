#include "logger/FrameMemOperation.h"

#include "logger/MemoryFiles.h"
#include "logger/RecordModel.h"
#include "logger/RecordPlot.h"
#include "logger/RecordSeries.h"
#include "logger/RecordTransfer.h"
#include "platform/Dialogs.h"
#include "platform/WholeFile.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"

#include <QButtonGroup>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>

#include <utility>

namespace vorn
{

namespace
{

std::string FileNameOf(const QString &path)
{
    return QFileInfo(path).fileName().toStdString();
}

} // namespace

FrameMemOperation::FrameMemOperation(FormMain &main)
    : PageFrame(main, "FrameMemOperation", "Memory Operation")
{
    BuildControls();
    BuildView();
    LayOut();
    Enter();
    for (int element = 0; element < 2; ++element) {
        OnTick(main, OptionMOmode[static_cast<std::size_t>(element)], this,
               [this, element](const NodeKey &node, bool) { OptionMOmode_Click(node, element); });
    }
    OnClick(main, CmdTransferData, this, [this](const NodeKey &node) { CmdTransferData_Click(node); });
    OnClick(main, CmdMemoryDataRead, this, [this](const NodeKey &) { CmdMemoryDataRead_Click(); });
    OnClick(main, CmdSavePlot, this, [this](const NodeKey &) { CmdSavePlot_Click(); });
    OnClick(main, CmdExportSheet, this, [this](const NodeKey &) { CmdExportSheet_Click(); });
}

void FrameMemOperation::BuildControls()
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
    OptionDataMode[0]->setChecked(true);
    CmdTransferData = MakeButton(this, QStringLiteral("CmdTransferData"), "&Transfer data to host ");
    CmdMemoryDataRead = MakeButton(this, QStringLiteral("CmdMemoryDataRead"), "Show re&cords");
    MemoryData = MakeValue(this, QStringLiteral("MemoryData"), QStringLiteral("Record"));
    MemoryData->setMinimumWidth(MemoryData->fontMetrics().horizontalAdvance(QStringLiteral("00000")));
}

void FrameMemOperation::BuildView()
{
    records_ = new RecordModel(this);
    DBGridReadMemory = Named(new QTableView(this), "DBGridReadMemory", QStringLiteral("Records"));
    DBGridReadMemory->setModel(records_);
    DBGridReadMemory->setAlternatingRowColors(true);
    DBGridReadMemory->verticalHeader()->hide();
    const int row = fontMetrics().height() + Rhythm::BetweenRows;
    DBGridReadMemory->verticalHeader()->setDefaultSectionSize(row);
    constexpr int RowsInSight = 8;
    DBGridReadMemory->setMinimumHeight(RowsInSight * row);

    PlotReadMemory = Named(new RecordPlot(this), "PlotReadMemory", QStringLiteral("Plot of the records"));
    CmdWholePlot = MakeButton(this, QStringLiteral("CmdWholePlot"), "&Whole plot");
    CmdSavePlot = MakeButton(this, QStringLiteral("CmdSavePlot"), "Save p&lot...");
    CmdExportSheet = MakeButton(this, QStringLiteral("CmdExportSheet"), "E&xport CSV...");
    connect(CmdWholePlot, &QPushButton::clicked, PlotReadMemory, &RecordPlot::ShowWhole);
}

void FrameMemOperation::LayOut()
{
    FrameGrid grid(this);
    grid.Row(MakeLabel(this, QStringLiteral("LabMOmode"), "Recording :"), {OptionMOmode[1], OptionMOmode[0]});
    grid.Row(MakeLabel(this, QStringLiteral("LabDataMode"), "Records shown :"),
             {OptionDataMode[0], OptionDataMode[1]});
    auto *transfer = SideBySide({MakeLabel(this, QStringLiteral("LabMemoryData"), "Record :"), MemoryData});
    transfer->addStretch();
    transfer->addWidget(CmdTransferData);
    transfer->addWidget(CmdMemoryDataRead);
    grid.WideRow(transfer);
    grid.WideRow(DBGridReadMemory);
    grid.Layout()->setRowStretch(grid.WideRow(PlotReadMemory), 1);
    grid.Buttons({CmdWholePlot, CmdSavePlot, CmdExportSheet});
}

void FrameMemOperation::Enter()
{
    ShowView(false);
    AllowReading();
}

/// Grid and plot, and what can be done with them.
void FrameMemOperation::ShowView(bool show)
{
    ShowAll({DBGridReadMemory, PlotReadMemory, CmdWholePlot, CmdSavePlot, CmdExportSheet}, show);
    constexpr int All = 1000; // the plot takes what the window has
    main().PageLayout()->setStretchFactor(this, show ? All : 0);
}

void FrameMemOperation::AllowReading()
{
    Allow(CmdMemoryDataRead, HasMemoryFile(), "There are no records yet: transfer them first.");
}

void FrameMemOperation::ReadState(const NodeKey &node)
{
    const std::string reply = main().trans(Query(Register::Recording, node), node.checksum());
    if (const auto state = ValueOf(Register::Recording, node, reply); state == "0" || state == "1")
        OptionMOmode[*state == "1" ? 1 : 0]->setChecked(true);
}

/// Whether one module records tells nothing of another, which may not answer.
void FrameMemOperation::Leave()
{
    PageFrame::Leave();
    ChooseNone(OptionMOmode);
    MemoryData->clear();
}

void FrameMemOperation::OptionMOmode_Click(const NodeKey &node, int element)
{
    RefreshHold hold(main());
    hold.Keep();
    Send(main(), node, Write(Register::Recording, node, std::to_string(element)));
    ReadState(node);
}

void FrameMemOperation::CmdTransferData_Click(const NodeKey &node)
{
    constexpr int MixedMode = 2;
    main().NowStatus("Now Read Record Counter is processing , Please wait moment....");
    RefreshHold hold(main());
    hold.Keep();
    main().setCursor(Qt::BusyCursor);
    {
        const DisabledWindow disabled(main());
        main().StopScan = false;
        ShowView(false);
        RecordTransfer transfer(main(), node, StorageMode() == MixedMode);
        connect(&transfer, &RecordTransfer::AtRecord, MemoryData, qOverload<int>(&QLabel::setNum));
        transfer.Run();
        AllowReading();
    }
    CmdTransferData->setFocus();
    main().unsetCursor();
    main().NowStatus(""); // nothing is being processed any more
}

void FrameMemOperation::CmdMemoryDataRead_Click()
{
    const auto kind = OptionDataMode[0]->isChecked() ? RecordKind::Standard : RecordKind::Event;
    try {
        const Hourglass reading(main());
        records_->Show(ReadSheetBeside(MemoryFilePath(), kind));
        PlotReadMemory->Show(records_->Sheet(), kind);
        DBGridReadMemory->resizeColumnsToContents();
        ShowView(true);
    } catch (const WorkbookError &error) {
        ShowView(false);
        TellFileFault(MemoryFileName, "can't be read", error.what());
    }
    AllowReading();
}

void FrameMemOperation::CmdSavePlot_Click()
{
    const auto path = ShowSave(&main(), {.title = QStringLiteral("Save plot"),
                                         .folder = QDir::homePath(),
                                         .fileName = QStringLiteral("Memory.png"),
                                         .extension = QStringLiteral("png"),
                                         .filter = QStringLiteral("Pictures(*.png *.svg)")});
    if (!path)
        return;
    if (const auto fault = PlotReadMemory->Save(*path))
        TellFileFault(FileNameOf(*path), "can't be written", fault->toStdString());
}

void FrameMemOperation::CmdExportSheet_Click()
{
    const auto path = ShowSave(&main(), {.title = QStringLiteral("Export records"),
                                         .folder = QDir::homePath(),
                                         .fileName = QStringLiteral("Memory.csv"),
                                         .extension = QStringLiteral("csv"),
                                         .filter = QStringLiteral("Comma separated values(*.csv)")});
    if (!path)
        return;
    if (const auto fault = WriteWholeFile(*path, CsvText(records_->Sheet())))
        TellFileFault(FileNameOf(*path), "can't be written", fault->toStdString());
}

} // namespace vorn
