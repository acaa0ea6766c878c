#include "protocol/ModelCatalogue.h"

#include "protocol/CommandFrame.h"

#include <algorithm>
#include <array>
#include <span>

namespace vorn
{

namespace
{

enum class Page { None, AnalogInput, AnalogOutput, Digital, Counter, BaseUnit, Console };

struct ModelRow {
    std::string_view model;
    std::string_view description;
    Page page;
};

constexpr ModelRow Models[] = {
    {"7203", "Thermocuple Input Module", Page::AnalogInput},
    {"7203D", "Thermocuple Input Module with LED Display", Page::AnalogInput},
    {"7206", "Analog Input Module", Page::AnalogInput},
    {"7209", "RTD Input Module", Page::AnalogInput},
    {"7212D", "Analog Input Module with LED Display", Page::AnalogInput},
    {"7216", "6-channel RTD Input Module", Page::Console},
    {"7218", "Strain Gauge Input Module", Page::AnalogInput},
    {"7221", "8-channel Analog Input Module", Page::AnalogInput},
    {"7221P", "8-channel Analog Input Module", Page::Console},
    {"7224", "8-channel Analog Input Module", Page::AnalogInput},
    {"7224M", "8-channel Analog Input Data Logger", Page::AnalogInput},
    {"7224P", "8-channel Analog Input Module", Page::Console},
    {"7227", "8-channel Universal Analog Input Module", Page::Console},
    {"7231", "Analog Output Module", Page::AnalogOutput},
    {"7234", "4-CH Analog Output Module", Page::Console},
    {"7252", "Digital I/O Module", Page::Digital},
    {"7254", "16-channel Digital Input Module", Page::Console},
    {"7256", "Isolated Digital Input Module", Page::Digital},
    {"7258", "16-channel Digital Input Module", Page::Digital},
    {"7262", "8-channel Digital Input Module & 8-channel Digital Output Module", Page::Console},
    {"7272", "Relay Output Module", Page::Digital},
    {"7276", "8-channel Relay Output Module", Page::Console},
    {"7282", "Counter/Frequency Input Module", Page::Counter},
    {"7282D", "Counter/Frequency Input Module with LED Display", Page::Counter},
    {"7282N", "Counter/Frequency Input Module with LED Display", Page::Counter},
    {"3900", "", Page::BaseUnit},
    {"3921", "", Page::None},
    {"3923", "", Page::None},
    {"3923H", "", Page::None},
    {"3925", "", Page::None},
    {"3931", "", Page::None},
    {"3942", "", Page::None},
    {"3944", "", Page::None},
    {"3946", "", Page::None},
    {"3948", "", Page::None},
    {"3951", "", Page::None},
    {"3953", "", Page::None},
    {"3957", "", Page::None},
    {"3962", "", Page::None},
};

struct SlotRow {
    std::string_view code;
    std::string_view model;
    std::string_view nodeText;
    int channels;
    SlotListRow list;
};

constexpr SlotRow Slots[] = {
    {"21", "3921", "3921", 3, {"VORN-3921", "3-channel RTD input module"}},
    {"23", "3923", "3923", 8, {"VORN-3923", "8-channel Analog input module"}},
    {"3H", "3923H", "3923H", 8, {"VORN-3923H", "8-channel High Speed Analog input module"}},
    {"25", "3925", "3925", 7, {"VORN-3925", "7-channel Thermocouple input module"}},
    {"31", "3931", "3931", 4, {"VORN-3931", "4-channel Analog output module"}},
    {"42", "3942", "3942", 0, {"VORN-3942", "16-channel universal digital I/O module"}},
    {"44", "3944", "3944/D", 0, {"VORN-3944/D", "16-channel digital input module"}},
    {"46", "3946", "3946", 0, {"VORN-3946", "8-channel isolated digital input module"}},
    {"48",
     "3948",
     "3948",
     0,
     {"VORN-3948S", "8-channel isolated digital input&8-channel isolated output  module"}},
    {"51", "3951", "3951/D", 0, {"VORN-3951/D", "16-channel digital output module"}},
    {"53", "3953", "3953", 0, {"VORN-3953", "Relay output module"}},
    {"57", "3957", "3957", 0, {"VORN-3957", "Relay output module"}},
    {"62", "3962", "3962", 4, {"VORN-3962", "Counter/Frequency input module"}},
};

const ModelRow *FindModel(std::string_view model)
{
    const auto *found = std::ranges::find(Models, model, &ModelRow::model);
    return found == std::end(Models) ? nullptr : found;
}

const SlotRow *FindSlot(std::string_view code)
{
    const auto *found = std::ranges::find(Slots, code, &SlotRow::code);
    return found == std::end(Slots) ? nullptr : found;
}

/// Appends model names, as evenly spread over lines of three and four as they go.
template <class Rows>
void AppendModelLines(std::vector<std::string> &lines, const Rows &names)
{
    constexpr std::size_t NamesPerLine = 4;
    const std::size_t count = (names.size() + NamesPerLine - 1) / NamesPerLine;
    for (std::size_t line = 0, name = 0; line < count; ++line) {
        std::string text = "      ";
        for (const std::size_t end = names.size() * (line + 1) / count; name < end; ++name)
            text += std::string(names[name]) + (name + 1 < end ? ", " : "");
        lines.push_back(text);
    }
}

} // namespace

bool AcceptModel(std::string &model)
{
    if (!FindModel(model))
        return false;
    if (model == "7221P")
        model = "7221+";
    else if (model == "7224P")
        model = "7224+";
    return true;
}

std::string_view ModelDescription(std::string_view model)
{
    const ModelRow *row = FindModel(model);
    return row ? row->description : std::string_view{};
}

bool IsConsoleModel(std::string_view model)
{
    const ModelRow *row = FindModel(model);
    return row && row->page == Page::Console;
}

std::string_view ModelHelpPage(std::string_view model)
{
    const ModelRow *row = FindModel(model);
    switch (row ? row->page : Page::None) {
    case Page::AnalogInput:
        return "analog-input";
    case Page::AnalogOutput:
        return "analog-output";
    case Page::Digital:
        return "digital";
    case Page::Counter:
        return "counter";
    case Page::BaseUnit:
        return "base-unit";
    default:
        return "module-setting";
    }
}

std::vector<std::string> SlotCodes(std::string_view reply, bool checksum)
{
    constexpr std::size_t Width = 2;
    const std::string payload = Payload(reply, checksum);
    std::vector<std::string> codes;
    for (std::size_t at = 0; at + Width <= payload.size() && codes.size() < MostSlots; at += Width)
        codes.push_back(payload.substr(at, Width));
    return codes;
}

std::string SlotModel(std::string_view code)
{
    const SlotRow *row = FindSlot(code);
    return row ? std::string(row->model) : "39" + std::string(code);
}

std::string SlotNodeText(std::string_view code)
{
    const SlotRow *row = FindSlot(code);
    return row ? std::string(row->nodeText) : SlotModel(code);
}

int SlotChannelCount(std::string_view code)
{
    const SlotRow *row = FindSlot(code);
    return row ? row->channels : 0;
}

SlotListRow SlotListRowOf(std::string_view model)
{
    const auto *found = std::ranges::find(Slots, model, &SlotRow::model);
    return found == std::end(Slots) ? SlotListRow{} : found->list;
}

std::vector<std::string> LabPCLines()
{
    std::vector<std::string> modules;
    for (const ModelRow &row : Models) {
        std::string model(row.model);
        if (row.page != Page::None && row.page != Page::BaseUnit && AcceptModel(model))
            modules.push_back("VORN-" + model);
    }
    std::vector<std::string_view> slots;
    for (const SlotRow &row : Slots)
        slots.push_back(row.list.name);

    std::vector<std::string> lines{
        "Version 1.50",       "", "   for Windows 95/98/NT4.0/2000/XP", "", "   Support VORN Module", "",
        "   VORN-7000 Series"};
    AppendModelLines(lines, modules);
    lines.insert(lines.end(), {"", "   VORN-3900/485 Series"});
    AppendModelLines(lines, slots);
    lines.emplace_back();
    return lines;
}

} // namespace vorn
