#include "workspace/LinearMappingUpdate.h"

#include "pages/AlarmLimits.h"
#include "pages/FrameLSet.h"
#include "pages/FrameMSet.h"
#include "pages/LinearMapping.h"
#include "platform/Dialogs.h"
#include "platform/Events.h"
#include "platform/WidgetText.h"
#include "shell/Controls.h"
#include "shell/FieldGuard.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"
#include "workspace/Pages.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace vorn
{

LinearMappingUpdate::LinearMappingUpdate(FormMain &main, Pages &pages) : main_(main), pages_(pages)
{
    OnClick(pages.FrameLSet->CmdLinearUpdata, this, [this] { CmdLinearUpdata_Click(); });
    for (QLineEdit *limit : {pages.FrameLSet->TextMLowLimit, pages.FrameLSet->TextMHighLimit,
                             pages.FrameLSet->TextSLowLimit, pages.FrameLSet->TextSHighLimit})
        GuardField(limit, FieldRule::MappingLimit);
}

void LinearMappingUpdate::CmdLinearUpdata_Click()
{
    main_.NowStatus("Now Linear Mapping Configuration is processing , Please wait moment....");
    main_.HoldRefresh();
    DoEvents();
    const Outcome outcome = Write(main_.PageNode());
    MsgBox(outcome.text, outcome.success ? MsgBoxStyle::Information : MsgBoxStyle::Critical, outcome.title);
    Reload(main_);
}

/// The first failure ends the sequence; what was written before stays in the module.
LinearMappingUpdate::Outcome LinearMappingUpdate::Write(const NodeKey &node)
{
    const auto *frame = pages_.FrameLSet;
    const auto limits = [](const QLineEdit *low, const QLineEdit *high) {
        return LimitPair{.low = FromQString(low->text()), .high = FromQString(high->text())};
    };
    if (!Store(main_, node, MappingSwitchCommand(node, CaptionOf(frame->CheckLinearScaling) != "Disable")))
        return {"Configuration is invalid !", "Configuration is invalid"};

    const LimitPair input = limits(frame->TextMLowLimit, frame->TextMHighLimit);
    if (!AreLimitsInOrder(input))
        return {"Low limit input value must be lower then high limit input value !", "Input Setting failure"};
    const int range = pages_.FrameMSet->CmbRange->currentIndex();
    if (!Store(main_, node, MappingInputCommand(node, WireInputLimits(node.model(), range, input))))
        return {"Input Setting failure !", "Input Setting failure"};

    const LimitPair output = limits(frame->TextSLowLimit, frame->TextSHighLimit);
    if (!Store(main_, node, MappingOutputCommand(node, WireOutputLimits(output))))
        return {"Output Setting failure !", "Output Setting failure"};
    return {"Configuration is successful !", "Configuration is successful", true};
}

} // namespace vorn
