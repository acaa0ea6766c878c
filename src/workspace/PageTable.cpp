#include "workspace/PageTable.h"

#include "protocol/ModelTable.h"

#include <algorithm>
#include <initializer_list>
#include <map>

namespace vorn
{

namespace
{

/// Controls of a page table: one control, or the elements `first` to `last` of an array.
struct Controls {
    constexpr Controls(const char *control) : name(control) {}
    constexpr Controls(const char *array, int from, int to) : name(array), first(from), last(to) {}
    const char *name;
    int first = -1;
    int last = -1;
};

/// Captions of the elements `first` to `last`: a text, and the number of the element less `first` plus
/// `from`.
struct Numbered {
    const char *array;
    int first, last;
    const char *text;
    int from;
};

using Names = std::vector<std::string>;

std::string Element(const char *array, int index)
{
    return std::string(array) + "_" + std::to_string(index);
}

Names Expand(std::initializer_list<Controls> controls)
{
    Names names;
    for (const Controls &entry : controls) {
        if (entry.first < 0)
            names.emplace_back(entry.name);
        for (int i = entry.first; i >= 0 && i <= entry.last; ++i)
            names.push_back(Element(entry.name, i));
    }
    return names;
}

/// Puts one page together, a call for each column of the table.
class Page final
{
public:
    Page &&Show(std::initializer_list<Controls> controls) &&
    {
        return std::move(Append(page_.shown, controls));
    }
    Page &&Hide(std::initializer_list<Controls> controls) &&
    {
        return std::move(Append(page_.hidden, controls));
    }
    Page &&Enable(std::initializer_list<Controls> controls) &&
    {
        return std::move(Append(page_.enabled, controls));
    }
    Page &&Caption(const char *control, const char *text) &&
    {
        page_.captions.emplace_back(control, text);
        return std::move(*this);
    }
    Page &&CaptionEach(std::initializer_list<Controls> controls, const char *text) &&
    {
        for (const std::string &name : Expand(controls))
            page_.captions.emplace_back(name, text);
        return std::move(*this);
    }
    Page &&Number(std::initializer_list<Numbered> rows) &&
    {
        for (const Numbered &row : rows) {
            for (int i = row.first; i <= row.last; ++i)
                page_.captions.emplace_back(Element(row.array, i),
                                            row.text + std::to_string(i - row.first + row.from));
        }
        return std::move(*this);
    }
    operator PageDescription() && { return std::move(page_); }

private:
    Page &Append(Names &to, std::initializer_list<Controls> controls)
    {
        const Names names = Expand(controls);
        to.insert(to.end(), names.begin(), names.end());
        return *this;
    }

    PageDescription page_;
};

PageDescription BuildReset()
{
    return Page()
        .Hide({"LabPC",       "FramePort",       "FrameMSet",    "FrameASet",      "FrameAOut",
               "FrameAIn",    "FrameGen",        "FrameLSet",    "FrameDIO",       "FrameFC",
               "FrameFCf",    "FrameSlot",       "FrameChannel", "FrameCount",     "FrameSlotIO",
               "FrameFCdata", "ListView3900",    "FrameMemory",  "FrameMAlarmset", "FrameMemOperation",
               "TabStrip1",   "DBGridReadMemory"})
        .Show({"CheckChEnable"})
        .Hide({{"Labch", 0, 7}, {"TextCH", 0, 7}, {"LabCHunit", 0, 7}, {"ChHA", 0, 7}, {"ChLA", 0, 7}})
        .Hide({"CmdSlotSendAO", "CmdLED", "LabAAO", "TextAAOv", "CmdAOsend"})
        .Show({"LabRd", "LabRdv", "LabRdu", "LabACt", "LabACtv"})
        .Show({{"ADIO", 0, 1}, {"ADIO", 3, 3}})
        .Hide({{"ADIO", 2, 2}})
        .Caption("ADIO_3", "DI")
        .Show({"CmdGZero", "CmdGSpan"})
        .Hide({"CmdGCJC", "CmdG0V", "CmdG10V", "CmdGStartup"})
        .Caption("CmdGZero", "    &Zero Calibration")
        .Hide({"CmdAICJC"})
        .Show({"CmdClearCount", "CmdClearLatch"})
        .Hide({"CmdDownLoadF"})
        .Enable({"CmdMUpdate"})
        .Show({"UpDownAddr", "CmbDataFormat", "LabDataformat", "LabRange", "CmbRange"})
        .Hide({"CmbSlowRate", "LabSlewRate"})
        .Caption("LabRange", "&Input range :")
        .Caption("LabDataformat", "&Data format :")
        .Hide({{"DIOL", 0, 7}, {"DIOH", 0, 7}})
        .Show({"LabDL"})
        .Hide({"LabDH", "LabDHv"})
        .Caption("LabSRange", "Input &Range :")
        .Caption("LabSTimeSlewrate", "Integration &Time :")
        .Show({"LabSRange", "LabSTimeSlewrate"})
        .Hide({"CmbSRange", "CmbSFormat", "CmbSTimeSlewRate", "LabSRangeLab", "LabSDataFormatLab",
               "LabS_time_slewrate"})
        .Show({"CmdSUpdate", "CmdSZero", "CmdSSpan"})
        .Hide({"CmdSCJC", "LabLED", {"OptionLED", 0, 2}});
}

constexpr std::initializer_list<Controls> FormatAndRangeRows{"CmbDataFormat", "LabDataformat", "LabRange",
                                                             "CmbRange"};
constexpr std::initializer_list<Controls> HighGroup{{"DIOH", 0, 7}, "LabDH", "LabDHv"};

Page ChannelInputPage()
{
    return Page().Show({"FrameMSet", "FrameAIn"}).Caption("LabDataformat", "In&tegration time :");
}

Page AlarmInputPage()
{
    return Page().Show({"FrameMSet", "FrameGen", "FrameASet"});
}

Page DigitalModulePage()
{
    return Page().Show({"FrameMSet"}).Hide(FormatAndRangeRows);
}

Page CounterPage()
{
    return Page()
        .Show({"FrameMSet", "CmbRange"})
        .Caption("LabRange", "&Input mode")
        .Caption("LabDataformat", "&Enable Gate")
        .Hide({"LabRd", "LabRdv", "LabRdu", "LabACt", "LabACtv", "CmdGZero", "CmdGSpan"});
}

/// Eight inputs in the low row.
Page LowRowInputs(Page page)
{
    return std::move(page)
        .Show({"FrameDIO", {"DIOL", 0, 7}})
        .Number({{"DIOL", 0, 7, "DI  ", 0}})
        .Caption("LabDL", "Digital Input");
}

/// Eight inputs in either row, those of the high row behind the others.
Page BothRowsInputs(Page page)
{
    return LowRowInputs(std::move(page))
        .Show(HighGroup)
        .Number({{"DIOH", 0, 7, "DI  ", 8}})
        .Caption("LabDH", "Digital Input");
}

/// Rows of all channels of an input slot: number, value, unit and alarms.
Page InputSlot(const ModelRow &model)
{
    const int last = model.channels - 1;
    return Page().Show({"FrameSlot",
                        "FrameSlotIO",
                        {"Labch", 0, last},
                        {"TextCH", 0, last},
                        {"LabCHunit", 0, last},
                        {"ChHA", 0, last},
                        {"ChLA", 0, last}});
}

Page InputChannel()
{
    return Page()
        .Show({"FrameSlot", "FrameChannel", "LabSRangeLab", "LabSDataFormatLab"})
        .Hide({"CmdSUpdate", "CmdSZero", "CmdSSpan", "CmdSCJC", "LabSTimeSlewrate"});
}

/// A page as it is for the channels of a model.
struct PageRow {
    PageName name;
    PageDescription (*build)(const ModelRow &model);
};

constexpr PageRow Pages[] = {
    // Of modules and base units.
    {PageName::ThermocoupleInput,
     [](const ModelRow &) -> PageDescription { return AlarmInputPage().Show({"CmdGCJC"}); }},
    {PageName::AnalogInput, [](const ModelRow &) -> PageDescription { return AlarmInputPage(); }},
    {PageName::SensorInput,
     [](const ModelRow &) -> PageDescription {
         return Page()
             .Show({"FrameMSet", "FrameGen"})
             .Hide({{"ADIO", 0, 1}, {"ADIO", 3, 3}})
             .Caption("CmdGZero", "  &Offset Calibration")
             .Hide({"LabACt", "LabACtv", "CmdClearCount", "CmdClearLatch"});
     }},
    {PageName::MappedInput,
     [](const ModelRow &) -> PageDescription {
         return AlarmInputPage().Show({"CmdLED", "FrameLSet"});
     }},
    {PageName::StrainGauge,
     [](const ModelRow &) -> PageDescription {
         return AlarmInputPage()
             .Show({{"ADIO", 2, 2}, "LabAAO", "TextAAOv", "CmdAOsend", "CmdG0V", "CmdG10V", "CmdGStartup"})
             .Caption("ADIO_3", "DO &3")
             .Enable({{"ADIO", 3, 3}})
             .Hide({"LabACt", "LabACtv", "CmdClearCount"});
     }},
    {PageName::ChannelInput, [](const ModelRow &) -> PageDescription { return ChannelInputPage(); }},
    {PageName::ChannelThermocouple,
     [](const ModelRow &) -> PageDescription { return ChannelInputPage().Show({"CmdAICJC"}); }},
    {PageName::Logger,
     [](const ModelRow &) -> PageDescription {
         return ChannelInputPage().Show({"CmdAICJC", "TabStrip1"});
     }},
    {PageName::AnalogOutput,
     [](const ModelRow &) -> PageDescription {
         return Page().Show({"FrameMSet", "CmbSlowRate", "LabSlewRate"}).Caption("LabRange", "&Output range");
     }},
    {PageName::InputsAndOutputs,
     [](const ModelRow &) -> PageDescription {
         return DigitalModulePage()
             .Show({"FrameDIO", {"DIOL", 0, 6}})
             .Show(HighGroup)
             .Number({{"DIOL", 0, 6, "DI  ", 0}, {"DIOH", 0, 7, "DO  &", 0}})
             .Caption("LabDL", "Digital Input")
             .Caption("LabDH", "Digital Output");
     }},
    {PageName::EightInputs,
     [](const ModelRow &) -> PageDescription { return LowRowInputs(DigitalModulePage()); }},
    {PageName::SixteenInputs,
     [](const ModelRow &) -> PageDescription { return BothRowsInputs(DigitalModulePage()); }},
    {PageName::FourRelays,
     [](const ModelRow &) -> PageDescription {
         return DigitalModulePage()
             .Show({"FrameDIO", {"DIOL", 4, 7}})
             .Number({{"DIOL", 4, 7, "DO  &", 0}})
             .Caption("LabDL", "Relay Output");
     }},
    {PageName::PresetCounter,
     [](const ModelRow &) -> PageDescription {
         return CounterPage().Number({{"CounterDO", 0, 1, "DO &", 0}}).Hide({"CmdCClearLatch"});
     }},
    {PageName::DisplayCounter,
     [](const ModelRow &) -> PageDescription {
         return CounterPage().Show({"LabLED", {"OptionLED", 0, 2}});
     }},
    {PageName::BaseUnit,
     [](const ModelRow &) -> PageDescription {
         return Page()
             .Show({"CmdDownLoadF", "ListView3900", "FrameMSet", "LabMFV", "LabMFVv"})
             .Hide(FormatAndRangeRows);
     }},

    // Of slots.
    {PageName::SensorSlot,
     [](const ModelRow &model) -> PageDescription {
         return InputSlot(model).Show({"CmbSFormat", "CmbSRange", "CmbSTimeSlewRate"});
     }},
    {PageName::VoltageSlot,
     [](const ModelRow &model) -> PageDescription {
         return InputSlot(model)
             .Show({"CmbSRange", "CmbSTimeSlewRate", "LabSDataFormatLab"})
             .Caption("LabSDataFormatLab", "Engineering unit");
     }},
    {PageName::FastVoltageSlot,
     [](const ModelRow &model) -> PageDescription {
         return InputSlot(model).Show({"CmbSFormat"}).Hide({"LabSRange", "LabSTimeSlewrate"});
     }},
    {PageName::OutputSlot,
     [](const ModelRow &model) -> PageDescription {
         const int last = model.channels - 1;
         return Page().Show({"FrameSlotIO",
                             "CmdSlotSendAO",
                             {"Labch", 0, last},
                             {"TextCH", 0, last},
                             {"LabCHunit", 0, last}});
     }},
    {PageName::CounterSlot,
     [](const ModelRow &model) -> PageDescription {
         return InputSlot(model).Show({"CmbSFormat", "LabSRange", "CmbSRange"});
     }},
    {PageName::UniversalPointSlot,
     [](const ModelRow &) -> PageDescription {
         return Page()
             .Show({"FrameDIO", {"DIOL", 0, 7}, {"DIOH", 0, 7}, "LabDHv"})
             // Until its directions are read, each point keeps the caption that it was designed with.
             .CaptionEach({{"DIOL", 0, 7}, {"DIOH", 0, 7}}, "DO &0")
             .Hide({"LabDL", "LabDH"});
     }},
    {PageName::SixteenInputSlot, [](const ModelRow &) -> PageDescription { return BothRowsInputs(Page()); }},
    {PageName::EightInputSlot, [](const ModelRow &) -> PageDescription { return LowRowInputs(Page()); }},
    {PageName::OutputAndInputSlot,
     [](const ModelRow &) -> PageDescription {
         return Page()
             .Show({"FrameDIO", {"DIOL", 0, 7}})
             .Show(HighGroup)
             .Number({{"DIOL", 0, 7, "DO  ", 0}, {"DIOH", 0, 7, "DI  ", 0}})
             .Caption("LabDL", "Digital Output")
             .Caption("LabDH", "Digital Input");
     }},
    {PageName::SixteenOutputSlot,
     [](const ModelRow &) -> PageDescription {
         return Page()
             .Show({"FrameDIO", {"DIOL", 0, 7}})
             .Show(HighGroup)
             .Number({{"DIOL", 0, 7, "DO  &", 0}, {"DIOH", 0, 1, "DO  &", 8}, {"DIOH", 2, 7, "DO 1&", 0}})
             .Caption("LabDL", "Digital Output")
             .Caption("LabDH", "Digital Output");
     }},
    {PageName::RelaySlot,
     [](const ModelRow &model) -> PageDescription {
         const int last = model.switches.front().last;
         return Page()
             .Show({"FrameDIO", {"DIOL", 0, last}})
             .Number({{"DIOL", 0, last, "DO  &", 0}})
             .Caption("LabDL", "Relay Output");
     }},

    // Of channels.
    {PageName::SensorChannel, [](const ModelRow &) -> PageDescription { return InputChannel(); }},
    {PageName::VoltageChannel,
     [](const ModelRow &) -> PageDescription {
         return InputChannel().Caption("LabSDataFormatLab", "Engineering unit");
     }},
    {PageName::FastVoltageChannel,
     [](const ModelRow &) -> PageDescription {
         return Page()
             .Show({"FrameSlot", "FrameChannel", "CmbSRange", "LabSDataFormatLab"})
             .Hide({"CmdSZero", "CmdSSpan", "LabSTimeSlewrate"});
     }},
    {PageName::OutputChannel,
     [](const ModelRow &) -> PageDescription {
         return Page()
             .Show({"FrameSlot", "CmbSRange", "CmbSTimeSlewRate", "LabSRangeLab", "LabSDataFormatLab",
                    "LabS_time_slewrate"})
             .Caption("LabSDataFormatLab", "Engineering unit")
             .Hide({"CmdSZero", "CmdSSpan", "CmdSCJC"})
             .Caption("LabSRange", "&Output Range")
             .Caption("LabSTimeSlewrate", "&Slew Rate");
     }},
    {PageName::CounterChannel,
     [](const ModelRow &) -> PageDescription { return InputChannel().Hide({"CheckChEnable"}); }},
};

/// Pages by model: those that a column of the models' rows names.
using PageMap = std::map<std::string_view, PageDescription>;

PageMap BuildPages(PageName ModelRow::*column)
{
    PageMap map;
    for (const ModelRow &model : AllModels()) {
        if (auto page = BuildPage(model, model.*column))
            map.emplace(model.model, std::move(*page));
    }
    return map;
}

const PageDescription *Find(const PageMap &pages, std::string_view model, bool card)
{
    const ModelRow *row = FindModel(model);
    const auto found = pages.find(model);
    return row && row->IsCard() == card && found != pages.end() ? &found->second : nullptr;
}

const PageMap &OwnPages()
{
    static const PageMap pages = BuildPages(&ModelRow::page);
    return pages;
}

} // namespace

const PageDescription &ResetPage()
{
    static const PageDescription page = BuildReset();
    return page;
}

std::optional<PageDescription> BuildPage(const ModelRow &model, PageName name)
{
    const auto *page = std::ranges::find(Pages, name, &PageRow::name);
    return page == std::end(Pages) ? std::nullopt : std::optional(page->build(model));
}

const PageDescription *ModulePage(std::string_view model)
{
    return Find(OwnPages(), model, false);
}

const PageDescription *SlotPage(std::string_view model)
{
    return Find(OwnPages(), model, true);
}

const PageDescription *ChannelPage(std::string_view model)
{
    static const PageMap pages = BuildPages(&ModelRow::channelPage);
    return Find(pages, model, true);
}

bool AreChannelTextsWritable(std::string_view model)
{
    return Has(model, Feature::CardOutputs);
}

std::string PageCaption(const NodeKey &node)
{
    const std::string model = node.model();
    const ModelRow *row = FindModel(model);
    std::string caption = "VORN-" + (row ? std::string(row->Title()) : model);
    if (node.kind() == NodeKind::Channel)
        caption += std::string(" Channel ") + node.channel();
    return caption;
}

} // namespace vorn
