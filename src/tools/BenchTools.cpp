#include "tools/BenchTools.h"

#include "shell/FormMain.h"
#include "tools/FormFull_Screen.h"
#include "tools/FormScope.h"

#include <QAction>

namespace vorn
{

BenchTools::BenchTools(FormMain &main, const SerialPorts &ports) : main_(main), ports_(ports)
{
    main.OnAction({main.Terminal, main.CTerminal, main.ToolButton(FormMain::TerminalButton)},
                  [this] { Terminal_Click(); });
    main.OnAction({main.Data_Scope, main.CData_Scope, main.ToolButton(FormMain::ScopeButton)},
                  [this] { Data_Scope_Click(); });
}

BenchTools::~BenchTools()
{
    delete main_.FormFull_Screen;
    for (const QPointer<QWidget> &scope : main_.ScopeForm)
        delete scope;
}

/// The terminal is opened afresh, on the port that is selected now.
void BenchTools::Terminal_Click()
{
    if (main_.FormFull_Screen)
        main_.FormFull_Screen->close();
    main_.FormFull_Screen = new class FormFull_Screen(main_);
    main_.FormFull_Screen->show();
    main_.FormFull_Screen->activateWindow();
}

/// Search and terminal are off for the port while its scope is open.
void BenchTools::Data_Scope_Click()
{
    const auto port = static_cast<std::size_t>(main_.SelectedPort);
    if (main_.ScopeOnPort[port])
        return;
    main_.ScopeForm[port] = new FormScope(main_, ports_);
    main_.ScopeForm[port]->show();
    main_.ScopeForm[port]->activateWindow();
    main_.ScopeOnPort[port] = true;
    Q_EMIT main_.ScopesChanged();
}

} // namespace vorn
