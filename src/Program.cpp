#include "Program.h"

#include "discovery/FramePort.h"
#include "pages/FrameMSet.h"
#include "platform/Dialogs.h"
#include "platform/SerialPorts.h"
#include "platform/WidgetText.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/RowList.h"
#include "shell/frmAbout.h"
#include "tools/FormLED.h"

#include <QAction>
#include <QGroupBox>

#include <memory>

/// The resource system wants its own call outside any namespace.
static void RegisterResources()
{
    Q_INIT_RESOURCE(vorn);
}

namespace vorn
{

namespace
{

/// Help page of the page on show.
QString HelpPage(const FormMain &main)
{
    const std::string key = TagOf(main.Frame1);
    const NodeKey node(key);
    if (node.kind() == NodeKind::PC)
        return QStringLiteral("main-window");
    if (node.kind() == NodeKind::Port)
        return main.Nodes.IsExpanded(key) ? QStringLiteral("module-list") : QStringLiteral("port-page");
    if (node.kind() != NodeKind::Module)
        return QStringLiteral("slots");
    return ToQString(ModelHelpPage(node.model()));
}

} // namespace

void InitResources()
{
    RegisterResources();
}

Program::Program(const Host &host)
    : Main(host), DeviceTree(Main), BusSearch(Main, DeviceTree), Pages(Main, new FramePort(Main)),
      ModulePageLoad(Main, Pages), LiveData(Main, Pages), Consoles(Main), Calibration(Main),
      Configuration(Main), PageSelection(Main, Pages, ModulePageLoad, LiveData), BenchTools(Main, host.ports),
      FirmwareDownload(Main),
      LoggerTabs(Main, {.tabStrip = Pages.TabStrip1,
                        .module = {Pages.FrameMSet, Pages.Control("FrameAIn")},
                        .memory = Pages.FrameMemory,
                        .limits = Pages.FrameMAlarmset,
                        .operation = Pages.FrameMemOperation,
                        .pollLiveData = [this](const std::string &key) { LiveData.PollLiveData(key); }})
{
    AttachMenus();
    AttachWindows();
    Main.HelpPageOfPage = [this] { return HelpPage(Main); };
}

Program::~Program()
{
    // An entry that loses its focus asks for its rule, which the subsystems know: they go before the window.
    Main.hide();
}

void Program::AttachMenus()
{
    Main.OnAction({Main.Search, Main.CSearch, Main.ToolButton(FormMain::SearchButton)},
                  [this] { BusSearch.Search_Click(); });
    Main.OnAction({Main.VORNSaveSet, Main.AVORNSaveSet, Main.ToolButton(FormMain::SaveSetButton)},
                  [this] { Configuration.VORNSaveSet_Click(); });
    Main.OnAction({Main.VORNLoadSet, Main.AVORNLoadSet, Main.ToolButton(FormMain::LoadSetButton)},
                  [this] { Configuration.VORNLoadSet_Click(); });
    Main.OnAction({Main.Save, Main.ToolButton(FormMain::SaveFileButton)},
                  [this] { Configuration.Save_Click(); });
    Main.OnAction({Main.VORNabout}, [this] { std::make_unique<frmAbout>(&Main)->exec(); });
}

/// Windows that pages ask for.
void Program::AttachWindows()
{
    QObject::connect(Pages.FrameMSet, &FrameMSet::DisplayAsked, &Main,
                     [this](const NodeKey &node) { std::make_unique<FormLED>(Main, node)->Run(); });
    QObject::connect(&Main, &FormMain::CalibrationAsked, &Main,
                     [this](const NodeKey &node, CalibrationMode mode) { Calibration.Show(node, mode); });
    QObject::connect(Pages.FrameMSet, &FrameMSet::DownloadAsked, &FirmwareDownload,
                     &FirmwareDownload::CmdDownLoadF_Click);
    QObject::connect(&FirmwareDownload, &FirmwareDownload::UnitRebuilt, &PageSelection,
                     &PageSelection::FillSlotList);
    QObject::connect(
        &PageSelection, &PageSelection::ConsoleAsked, &Main,
        [this](const std::string &model, const std::string &baud) { Consoles.Show(model, baud); });
}

bool Program::Load()
{
    Main.Nodes.Add({}, std::string(KeyPC), "PC", PCImage.normal, PCImage.selected);
    ProbePorts();
    if (Main.Nodes.Count() == 1) {
        MsgBox("Host PC COMport is Disable!", MsgBoxStyle::Critical, "VORN Utility");
        return false;
    }
    Main.ArrangePage();
    Main.Frame1->show();
    Main.ListView1->hide();

    Main.Nodes.SetExpanded(std::string(KeyPC), true);
    const std::string firstPort = Main.Nodes.KeyAt(2);
    Main.Nodes.Select(firstPort);
    Main.ChooseNode(firstPort);
    return true;
}

void Program::ProbePorts()
{
    for (int port = SerialPorts::FirstPort; port <= SerialPorts::LastPort; ++port) {
        if (!Main.checkcomm(port))
            continue;
        Main.PortBaudList.push_back("3" + std::to_string(port));
        Main.Nodes.Add(std::string(KeyPC), PortKey(port), PortText(port), PortImage.normal,
                       PortImage.selected);
    }
}

} // namespace vorn
