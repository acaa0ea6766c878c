#include "workspace/ModulePageLoad.h"

#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"
#include "shell/PageFrame.h"
#include "workspace/Pages.h"

#include <QScopeGuard>

namespace vorn
{

void ModulePageLoad::LoadModulePage(const std::string &key)
{
    const Hourglass hourglass(main_);
    const NoYieldHold noYield(main_);
    const auto setLoading = [this](bool loading) {
        for (PageFrame *frame : pages_.Frames())
            frame->SetLoading(loading);
    };
    const auto end = qScopeGuard([&] { setLoading(false); });
    setLoading(true);
    PageReading reading(main_, NodeKey(key));
    for (PageFrame *frame : pages_.Frames())
        frame->LoadRangeTables(reading.model);
    for (PageFrame *frame : pages_.Frames())
        frame->Load(reading);
}

} // namespace vorn
