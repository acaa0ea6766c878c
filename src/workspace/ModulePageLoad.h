#pragma once

#include "protocol/NodeKey.h"

#include <string>

class QComboBox;

namespace vorn
{

class FormMain;
class Pages;

/// Fills the page of a node from the module itself. Nothing is cached: the controls of the page are the only
/// copy of the module's settings. A command that the module doesn't answer is skipped, and its controls keep
/// what they show.
class ModulePageLoad final
{
public:
    ModulePageLoad(FormMain &main, Pages &pages);

    void LoadModulePage(const std::string &key);

    /// Clears and fills the lists of a model; a list that the model doesn't use keeps its entries.
    void LoadRangeTables(const std::string &model);

    /// Choice of counter or frequency use of the counter modules.
    void CmbRange_Click();

    /// Shows the fields that belong to the TTL or to the photo input.
    void ShowInputStage(bool photo);

    /// Sets `Slider1` to an output value, by `OutputFormatCode`.
    void SetSlider(const std::string &value);

private:
    void LoadSlotPage(const NodeKey &node);
    void LoadModule(const NodeKey &node);
    void SetAccess(const NodeKey &node);
    void LoadRecord(const NodeKey &node);
    void ShowDataFormat(int position);
    void ShowRange(const NodeKey &node, const std::string &code);
    void LoadAnalogOutput(const std::string &bits);
    void LoadCounter(const NodeKey &node, const std::string &formatBits);
    void LoadCounterOutputs(const NodeKey &node);
    void LoadInputStage(const NodeKey &node);
    void LoadChannelMask(const NodeKey &node);
    void LoadAlarm(const NodeKey &node);
    void LoadLinearMapping(const NodeKey &node);
    void CmdAlarmsetting_Click();

    /// Sends a command to the node and tells whether it was accepted.
    bool Ask(const NodeKey &node, const std::string &command);
    /// Data of the accepted reply.
    std::string Data(const NodeKey &node) const;
    char DataChar(std::size_t position) const;

    FormMain &main_;
    Pages &pages_;
};

} // namespace vorn
