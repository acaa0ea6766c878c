#include "workspace/PageTable.h"

#include "protocol/Text.h"

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

using PageMap = std::map<std::string, PageDescription, std::less<>>;

const PageDescription *Find(const PageMap &pages, std::string_view model)
{
    const auto found = pages.find(model);
    return found == pages.end() ? nullptr : &found->second;
}

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

PageDescription EightChannelInput(std::initializer_list<Controls> more)
{
    return Page().Show({"FrameMSet", "FrameAIn"}).Show(more).Caption("LabDataformat", "In&tegration time :");
}

PageDescription ThermocoupleInput()
{
    return Page().Show({"FrameMSet", "FrameGen", "FrameASet", "CmdGCJC"});
}

Page CounterPage()
{
    return Page()
        .Show({"FrameMSet", "CmbRange"})
        .Caption("LabRange", "&Input mode")
        .Caption("LabDataformat", "&Enable Gate")
        .Hide({"LabRd", "LabRdv", "LabRdu", "LabACt", "LabACtv", "CmdGZero", "CmdGSpan"});
}

PageDescription CounterWithDisplay()
{
    return CounterPage().Show({"LabLED", {"OptionLED", 0, 2}});
}

PageMap BuildModulePages()
{
    PageMap pages;
    pages["7203"] = pages["7203D"] = ThermocoupleInput();
    pages["7206"] = Page().Show({"FrameMSet", "FrameGen", "FrameASet"});
    pages["7209"] = Page()
                        .Show({"FrameMSet", "FrameGen"})
                        .Hide({{"ADIO", 0, 1}, {"ADIO", 3, 3}})
                        .Caption("CmdGZero", "  &Offset Calibration")
                        .Hide({"LabACt", "LabACtv", "CmdClearCount", "CmdClearLatch"});
    pages["7212D"] = Page().Show({"CmdLED", "FrameMSet", "FrameGen", "FrameASet", "FrameLSet"});
    pages["7218"] = Page()
                        .Show({"FrameMSet",
                               "FrameGen",
                               "FrameASet",
                               {"ADIO", 2, 2},
                               "LabAAO",
                               "TextAAOv",
                               "CmdAOsend",
                               "CmdG0V",
                               "CmdG10V",
                               "CmdGStartup"})
                        .Caption("ADIO_3", "DO &3")
                        .Enable({{"ADIO", 3, 3}})
                        .Hide({"LabACt", "LabACtv", "CmdClearCount"});
    pages["7221"] = EightChannelInput({});
    pages["7224"] = EightChannelInput({"CmdAICJC"});
    pages["7224M"] = EightChannelInput({"CmdAICJC", "TabStrip1"});
    pages["7231"] =
        Page().Show({"FrameMSet", "CmbSlowRate", "LabSlewRate"}).Caption("LabRange", "&Output range");
    pages["7252"] = Page()
                        .Show({"FrameMSet", "FrameDIO", {"DIOL", 0, 6}})
                        .Show(HighGroup)
                        .Number({{"DIOL", 0, 6, "DI  ", 0}, {"DIOH", 0, 7, "DO  &", 0}})
                        .Caption("LabDL", "Digital Input")
                        .Caption("LabDH", "Digital Output")
                        .Hide(FormatAndRangeRows);
    pages["7256"] = Page()
                        .Show({"FrameMSet", "FrameDIO", {"DIOL", 0, 7}})
                        .Number({{"DIOL", 0, 7, "DI  ", 0}})
                        .Caption("LabDL", "Digital Input")
                        .Hide(FormatAndRangeRows);
    pages["7258"] = Page()
                        .Show({"FrameMSet", "FrameDIO", {"DIOL", 0, 7}})
                        .Show(HighGroup)
                        .Number({{"DIOL", 0, 7, "DI  ", 0}, {"DIOH", 0, 7, "DI  ", 8}})
                        .Caption("LabDL", "Digital Input")
                        .Caption("LabDH", "Digital Input")
                        .Hide(FormatAndRangeRows);
    pages["7272"] = Page()
                        .Show({"FrameMSet", "FrameDIO", {"DIOL", 4, 7}})
                        .Number({{"DIOL", 4, 7, "DO  &", 0}})
                        .Caption("LabDL", "Relay Output")
                        .Hide(FormatAndRangeRows);
    pages["7282"] = CounterPage().Number({{"CounterDO", 0, 1, "DO &", 0}}).Hide({"CmdCClearLatch"});
    pages["7282D"] = pages["7282N"] = CounterWithDisplay();
    pages["3900"] = Page()
                        .Show({"CmdDownLoadF", "ListView3900", "FrameMSet", "LabMFV", "LabMFVv"})
                        .Hide(FormatAndRangeRows);
    return pages;
}

/// Rows of channels 0 to `last` of an input slot: number, value, unit and alarms.
Page InputSlot(int last)
{
    return Page().Show({"FrameSlot",
                        "FrameSlotIO",
                        {"Labch", 0, last},
                        {"TextCH", 0, last},
                        {"LabCHunit", 0, last},
                        {"ChHA", 0, last},
                        {"ChLA", 0, last}});
}

PageDescription VoltageSlot(int last)
{
    return InputSlot(last)
        .Show({"CmbSRange", "CmbSTimeSlewRate", "LabSDataFormatLab"})
        .Caption("LabSDataFormatLab", "Engineering unit");
}

PageMap BuildSlotPages()
{
    PageMap pages;
    pages["3921"] = InputSlot(2).Show({"CmbSFormat", "CmbSRange", "CmbSTimeSlewRate"});
    pages["3923"] = VoltageSlot(7);
    pages["3925"] = VoltageSlot(6);
    pages["3923H"] = InputSlot(7).Show({"CmbSFormat"}).Hide({"LabSRange", "LabSTimeSlewrate"});
    pages["3931"] =
        Page().Show({"FrameSlotIO", "CmdSlotSendAO", {"Labch", 0, 3}, {"TextCH", 0, 3}, {"LabCHunit", 0, 3}});
    pages["3962"] = InputSlot(3).Show({"CmbSFormat", "LabSRange", "CmbSRange"});

    pages["3942"] =
        Page()
            .Show({"FrameDIO", {"DIOL", 0, 7}, {"DIOH", 0, 7}, "LabDHv"})
            // Until its directions are read, each point keeps the caption that it was designed with.
            .CaptionEach({{"DIOL", 0, 7}, {"DIOH", 0, 7}}, "DO &0")
            .Hide({"LabDL", "LabDH"});
    pages["3944"] = Page()
                        .Show({"FrameDIO", {"DIOL", 0, 7}})
                        .Show(HighGroup)
                        .Number({{"DIOL", 0, 7, "DI  ", 0}, {"DIOH", 0, 7, "DI  ", 8}})
                        .Caption("LabDL", "Digital Input")
                        .Caption("LabDH", "Digital Input");
    pages["3946"] = Page()
                        .Show({"FrameDIO", {"DIOL", 0, 7}})
                        .Number({{"DIOL", 0, 7, "DI  ", 0}})
                        .Caption("LabDL", "Digital Input");
    pages["3948"] = Page()
                        .Show({"FrameDIO", {"DIOL", 0, 7}})
                        .Show(HighGroup)
                        .Number({{"DIOL", 0, 7, "DO  ", 0}, {"DIOH", 0, 7, "DI  ", 0}})
                        .Caption("LabDL", "Digital Output")
                        .Caption("LabDH", "Digital Input");
    pages["3951"] =
        Page()
            .Show({"FrameDIO", {"DIOL", 0, 7}})
            .Show(HighGroup)
            .Number({{"DIOL", 0, 7, "DO  &", 0}, {"DIOH", 0, 1, "DO  &", 8}, {"DIOH", 2, 7, "DO 1&", 0}})
            .Caption("LabDL", "Digital Output")
            .Caption("LabDH", "Digital Output");
    pages["3953"] = Page()
                        .Show({"FrameDIO", {"DIOL", 0, 5}})
                        .Number({{"DIOL", 0, 5, "DO  &", 0}})
                        .Caption("LabDL", "Relay Output");
    pages["3957"] = Page()
                        .Show({"FrameDIO", {"DIOL", 0, 7}})
                        .Number({{"DIOL", 0, 7, "DO  &", 0}})
                        .Caption("LabDL", "Relay Output");
    return pages;
}

Page InputChannel()
{
    return Page()
        .Show({"FrameSlot", "FrameChannel", "LabSRangeLab", "LabSDataFormatLab"})
        .Hide({"CmdSUpdate", "CmdSZero", "CmdSSpan", "CmdSCJC", "LabSTimeSlewrate"});
}

PageMap BuildChannelPages()
{
    PageMap pages;
    pages["3921"] = InputChannel();
    pages["3923"] = pages["3925"] = InputChannel().Caption("LabSDataFormatLab", "Engineering unit");
    pages["3923H"] = Page()
                         .Show({"FrameSlot", "FrameChannel", "CmbSRange", "LabSDataFormatLab"})
                         .Hide({"CmdSZero", "CmdSSpan", "LabSTimeSlewrate"});
    pages["3931"] = Page()
                        .Show({"FrameSlot", "CmbSRange", "CmbSTimeSlewRate", "LabSRangeLab",
                               "LabSDataFormatLab", "LabS_time_slewrate"})
                        .Caption("LabSDataFormatLab", "Engineering unit")
                        .Hide({"CmdSZero", "CmdSSpan", "CmdSCJC"})
                        .Caption("LabSRange", "&Output Range")
                        .Caption("LabSTimeSlewrate", "&Slew Rate");
    pages["3962"] = InputChannel().Hide({"CheckChEnable"});
    return pages;
}

} // namespace

const PageDescription &ResetPage()
{
    static const PageDescription page = BuildReset();
    return page;
}

const PageDescription *ModulePage(std::string_view model)
{
    static const PageMap pages = BuildModulePages();
    return Find(pages, model);
}

const PageDescription *SlotPage(std::string_view model)
{
    static const PageMap pages = BuildSlotPages();
    return Find(pages, model);
}

const PageDescription *ChannelPage(std::string_view model)
{
    static const PageMap pages = BuildChannelPages();
    return Find(pages, model);
}

bool AreChannelTextsWritable(std::string_view model)
{
    return model == "3931";
}

std::string PageCaption(const NodeKey &node)
{
    const std::string model = node.model();
    std::string caption = "VORN-" + model;
    if (model == "3944" || model == "3951")
        caption += "/D";
    else if (model == "3948")
        caption += "S";
    if (node.hasChannel())
        caption += std::string(" Channel ") + node.channel();
    return caption;
}

} // namespace vorn
