#include "workspace/SettingsUpdate.h"

#include "pages/FrameAIn.h"
#include "pages/FrameFCf.h"
#include "pages/FrameMSet.h"
#include "pages/ModuleUpdate.h"
#include "platform/Dialogs.h"
#include "platform/Events.h"
#include "platform/WidgetText.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/FieldGuard.h"
#include "shell/FormMain.h"
#include "shell/Module1.h"
#include "shell/PageCommand.h"
#include "workspace/Pages.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

namespace vorn
{

namespace
{

constexpr const char *Invalid = "Configuration is invalid";
constexpr const char *Successful = "Configuration is successful";

} // namespace

SettingsUpdate::SettingsUpdate(FormMain &main, Pages &pages) : main_(main), pages_(pages)
{
    OnClick(pages.FrameMSet->CmdMUpdate, this, [this] { CmdMUpdate_Click(); });
    for (int i = 0; i < FrameAIn::Channels; ++i)
        OnClick(pages.FrameAIn->CheckAI[static_cast<std::size_t>(i)], this, [this, i] { CheckAI_Click(i); });
    OnClick(pages.FrameFCf->CheckFilter, this, [this] { CheckFilter_Click(); });
    GuardField(pages.FrameMSet->TextAddress, FieldRule::Address);
    connect(pages.FrameMSet->TextAddress, &QLineEdit::textChanged, this, &SettingsUpdate::TextAddress_Change);
}

ModuleSettings SettingsUpdate::PageSettings() const
{
    const auto *set = pages_.FrameMSet;
    const NodeKey node = main_.PageNode();
    return {.node = node,
            .newAddress = NewAddress(node, CaptionOf(set->LabAddr)),
            .range = set->CmbRange->currentIndex(),
            .baudrate = set->CmbBaudrate->currentIndex(),
            .dataFormat = set->CmbDataFormat->currentIndex(),
            .slewRate = set->CmbSlowRate->currentIndex(),
            .checksum = CaptionOf(set->CheckChecksum) != "Disable"};
}

void SettingsUpdate::CmdMUpdate_Click()
{
    main_.NowStatus("Now Configuration is processing , Please wait moment....");
    main_.HoldRefresh();
    DoEvents();
    const ModuleSettings settings = PageSettings();
    const auto siblings = main_.Nodes.Children(main_.Nodes.ParentKey(settings.node.text()));
    if (IsDuplicateAddress(settings, siblings))
        MsgBox("The new address ID is duplicated !", MsgBoxStyle::Critical, Invalid);
    else if (Update(settings))
        MsgBox("Configuration is successful !", MsgBoxStyle::Information, Successful);
    else
        MsgBox("Configuration is invalid !", MsgBoxStyle::Critical, Invalid);
    Reload(main_);
}

/// Writes the record and, when it was taken, waits for the module's restart and follows its new address in
/// the tree.
bool SettingsUpdate::Update(const ModuleSettings &settings)
{
    if (!Send(main_, settings.node, ModuleUpdateCommand(settings)))
        return false;
    const Hourglass hourglass(main_);
    WaitModuleReady(main_, AddressAfterUpdate(settings), settings.node.checksum());
    if (const auto gate = GateCommand(settings)) {
        main_.trans(std::string(*gate), settings.node.checksum());
        WaitTransIdle(main_);
    }
    if (ChangesAddress(settings))
        MoveNode(settings);
    return true;
}

void SettingsUpdate::MoveNode(const ModuleSettings &settings)
{
    const std::string oldKey = settings.node.text();
    const std::string newKey = KeyAfterUpdate(settings);
    const std::string parent = main_.Nodes.ParentKey(oldKey);
    const auto siblings = main_.Nodes.Children(parent);
    const std::string text = "(" + settings.newAddress + ") " + settings.node.model();
    SetTag(main_.Frame1, newKey);
    if (settings.node.isInit()) {
        main_.Nodes.Rename(oldKey, newKey);
        return;
    }
    const auto own = static_cast<std::size_t>(std::ranges::find(siblings, oldKey) - siblings.begin());
    const auto place = MovedPlace(siblings, own, newKey);
    if (!place) {
        main_.Nodes.Rename(oldKey, newKey);
        main_.Nodes.SetText(newKey, text);
        return;
    }
    const std::string before = *place < siblings.size() ? siblings[*place] : std::string{};
    main_.Nodes.Add(parent, newKey, text, ModuleImage.normal, ModuleImage.selected, before);
    main_.Nodes.Select(newKey);
    main_.Nodes.Remove(oldKey);
}

void SettingsUpdate::CheckAI_Click(int channel)
{
    main_.NowStatus("Enable/Diaable channels is processing , Please wait moment....");
    const NodeKey node = main_.PageNode();
    if (!Send(main_, node, "$" + node.busAddress() + "6"))
        return;
    const bool enabled = pages_.FrameAIn->CheckAI[static_cast<std::size_t>(channel)]->isChecked();
    if (!Send(main_, node, ChannelMaskCommand(node, Mid(main_.ReplyText, 4, 2), channel, enabled)))
        return;
    const DisabledWindow disabled(main_);
    WaitStored(main_, node);
}

void SettingsUpdate::CheckFilter_Click()
{
    const NodeKey node = main_.PageNode();
    const auto *box = pages_.FrameFCf->CheckFilter;
    Store(main_, node, FilterCommand(node, box->isChecked()));
    SetCaption(pages_.FrameFCf->CheckFilter, box->isChecked() ? "Enable" : "Disable");
}

void SettingsUpdate::TextAddress_Change()
{
    if (const auto label = AddressLabel(FromQString(pages_.FrameMSet->TextAddress->text())))
        SetCaption(pages_.FrameMSet->LabAddr, *label);
}

} // namespace vorn
