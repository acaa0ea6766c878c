#include "tools/FormScope.h"

#include "platform/Dialogs.h"
#include "platform/RuntimeError.h"
#include "platform/TopmostWindow.h"
#include "platform/WidgetText.h"
#include "protocol/Number.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"
#include "tools/LogFile.h"
#include "tools/LogView.h"

#include <QAction>
#include <QCheckBox>
#include <QGroupBox>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include <utility>

namespace vorn
{

namespace
{

constexpr int Addresses = 256;
constexpr const char *LineSettings = "9600,N,8,1"; ///< whatever the port page says

} // namespace

FormScope::FormScope(FormMain &main, const SerialPorts &ports)
    : QWidget(nullptr, Qt::Window), main_(main), port_(main.SelectedPort), MSComm1(ports, this)
{
    setObjectName(QStringLiteral("FormScope"));
    setWindowTitle(ToQString("COM" + std::to_string(port_) + " Data Scope"));
    Text1 = Named(new LogView(LogView::WhenFull::DropOldest, false, this), "Text1",
                  QStringLiteral("Lines on the bus"));
    auto *panes = new QHBoxLayout;
    panes->setSpacing(Rhythm::Margin);
    panes->addWidget(Text1, 1);
    panes->addWidget(BuildFilter());
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(Rhythm::Margin, Rhythm::Margin, Rhythm::Margin, Rhythm::Margin);
    layout->setSpacing(Rhythm::Margin);
    layout->addLayout(panes, 1);
    layout->addLayout(BuildButtons());
    resize(560, 440);

    auto *help = new QShortcut(QKeySequence::HelpContents, this);
    connect(help, &QShortcut::activated, this, [this] { main_.ShowHelp(QStringLiteral("data-scope")); });

    MSComm1.setObjectName(QStringLiteral("MSComm1"));
    MSComm1.SetCommPort(port_);
    MSComm1.SetSettings(LineSettings);
    MSComm1.SetInputLen(0);
    MSComm1.SetRThreshold(1);
    connect(&MSComm1, &MSComm::OnComm, this, &FormScope::MSComm1_OnComm);
    connect(&main, &FormMain::Unload, this, [this] { MSComm1.SetPortOpen(false); });
    SetTopmost(*this, true);
}

QWidget *FormScope::BuildFilter()
{
    auto *frame = Named(new QGroupBox(QStringLiteral("Addresses"), this), "FrameFilter");
    CheckFilter = Named(new QCheckBox(QStringLiteral("&Filter"), frame), "CheckFilter");
    ListFilter = Named(new QListWidget(frame), "ListFilter", QStringLiteral("Addresses to show"));
    ListFilter->setSelectionMode(QAbstractItemView::MultiSelection);
    for (int address = 0; address < Addresses; ++address)
        ListFilter->addItem(ToQString(HexByte(address)));
    CmdUpdate = Named(new QPushButton(QStringLiteral("&UpDate"), frame), "CmdUpdate");
    CmdUpdate->setEnabled(false);
    ListFilter->setFixedWidth(CmdUpdate->sizeHint().width());
    connect(ListFilter, &QListWidget::itemSelectionChanged, this, [this] { CmdUpdate->setEnabled(true); });
    OnWindowClick(main_.Gate, CmdUpdate, this, [this] { CmdUpdate_Click(); });

    auto *layout = new QVBoxLayout(frame);
    layout->setContentsMargins(Rhythm::Margin, Rhythm::Margin / 2, Rhythm::Margin, Rhythm::Margin);
    layout->setSpacing(Rhythm::BetweenRows);
    layout->addWidget(CheckFilter);
    layout->addWidget(ListFilter, 1);
    layout->addWidget(CmdUpdate);
    return frame;
}

QLayout *FormScope::BuildButtons()
{
    const auto button = [this](const char *name, const char *caption) {
        return MakeButton(this, QString::fromLatin1(name), caption);
    };
    CmdStart = button("CmdStart", "S&tart");
    CmdStop = button("CmdStop", "Sto&p");
    CmdClear = button("CmdClear", "&Clear Text");
    CmdSave = button("CmdSave", "&Save to File");
    connect(CmdStart, &QPushButton::clicked, this, &FormScope::CmdStart_Click);
    connect(CmdStop, &QPushButton::clicked, this, &FormScope::CmdStop_Click);
    connect(CmdClear, &QPushButton::clicked, this, [this] { Text1->Clear(); });
    OnWindowClick(main_.Gate, CmdSave, this, [this] { CmdSave_Click(); });
    auto *row = SideBySide({CmdStart, CmdStop, CmdClear});
    row->addStretch();
    row->addWidget(CmdSave);
    return row;
}

void FormScope::CmdStart_Click()
{
    const auto portDigit = [](const QWidget &form) { return Mid(FromQString(form.windowTitle()), 4, 1); };
    if (main_.FormFull_Screen && portDigit(*main_.FormFull_Screen) == portDigit(*this))
        main_.FormFull_Screen->close();
    // Behind the transaction that runs, which may be the terminal's last one.
    starting_ = true;
    main_.Gate.Take({.context = this, .action = [this] { OpenPort(); }, .source = CmdStart});
}

void FormScope::OpenPort()
{
    if (!std::exchange(starting_, false))
        return; // stopped or closed meanwhile
    try {
        MSComm1.SetPortOpen(true);
        CmdStart->setEnabled(false);
    } catch (const RuntimeError &error) {
        if (error.number() == RuntimeErrorNumber::InvalidPort)
            MsgBox("Invalid Port Number !", MsgBoxStyle::Critical, "Invalid Port Number");
        else if (error.number() == RuntimeErrorNumber::PortAlreadyOpen)
            MsgBox("Port already open !", MsgBoxStyle::Critical, "Port already open");
    }
}

void FormScope::CmdStop_Click()
{
    starting_ = false;
    if (MSComm1.PortOpen())
        MSComm1.SetPortOpen(false);
    CmdStart->setEnabled(true);
}

int FormScope::SelCount() const
{
    return static_cast<int>(ListFilter->selectionModel()->selectedIndexes().size());
}

void FormScope::CmdUpdate_Click()
{
    std::vector<std::string> chosen;
    for (int i = 0; i < ListFilter->count(); ++i) {
        if (ListFilter->item(i)->isSelected())
            chosen.push_back(FromQString(ListFilter->item(i)->text()));
    }
    try {
        filter_.Update(chosen);
        CmdUpdate->setEnabled(false);
    } catch (const RuntimeError &) {
        MsgBox("Up to " + std::to_string(ScopeFilter::Capacity) + " addresses can be shown !",
               MsgBoxStyle::Critical, "Too many addresses");
    }
}

/// Receive event: what has come goes into the log as far as it is to be shown.
void FormScope::MSComm1_OnComm()
{
    const bool filter = CheckFilter->isChecked();
    const auto selected = static_cast<std::size_t>(filter ? SelCount() : 0);
    const std::string shown = filter_.Receive(MSComm1.Input(), filter, selected);
    MSComm1.SetInputLen(0);
    if (!shown.empty())
        Text1->Append(shown);
}

void FormScope::CmdSave_Click()
{
    SaveLog(*this, *Text1, QStringLiteral("Data scope File(*.txt)"), QStringLiteral("DataScope.txt"),
            saveFolder_);
}

void FormScope::closeEvent(QCloseEvent *)
{
    starting_ = false;
    main_.ScopeOnPort[static_cast<std::size_t>(port_)] = false;
    if (MSComm1.PortOpen())
        MSComm1.SetPortOpen(false);
    Q_EMIT main_.ScopesChanged();
    main_.Gate.Retire(this);
}

} // namespace vorn
