#include "Program.h"

#include "platform/Dialogs.h"
#include "platform/SerialPorts.h"
#include "platform/WidgetText.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/frmAbout.h"

#include <QAction>
#include <QGroupBox>

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
    if (key.empty() || key == KeyPC)
        return QStringLiteral("main-window");
    if (main.Nodes.ParentKey(key) == KeyPC)
        return main.Nodes.IsExpanded(key) ? QStringLiteral("module-list") : QStringLiteral("port-page");
    const NodeKey node(key);
    if (node.hasSlot())
        return QStringLiteral("slots");
    return ToQString(ModelHelpPage(node.model()));
}

} // namespace

void InitResources()
{
    RegisterResources();
}

Program::Program(const Host &host)
    : Main(host), DeviceTree(Main), BusSearch(Main, DeviceTree), Pages(Main), ModulePageLoad(Main, Pages),
      LiveData(Main, Pages, ModulePageLoad), Consoles(Main),
      PageSelection(Main, Pages, ModulePageLoad, LiveData, Consoles), SettingsUpdate(Main, Pages),
      DirectOutputs(Main, Pages, ModulePageLoad), AnalogAlarm(Main, Pages),
      CounterPage(Main, Pages, ModulePageLoad), LinearMappingUpdate(Main, Pages), BenchTools(Main, host.ports)
{
    AttachMenus();
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
    Main.OnAction({Main.VORNabout}, [this] { frmAbout(&Main).exec(); });
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
    Main.NodeLeftClick = true;
    Main.TreeView1_NodeClick(firstPort);
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
