#include "protocol/ModelCatalogue.h"

#include "protocol/CommandFrame.h"
#include "protocol/ModelTable.h"

namespace vorn
{

namespace
{

/// Appends model names, as evenly spread over lines of three and four as they go.
void AppendModelLines(std::vector<std::string> &lines, const std::vector<std::string> &names)
{
    constexpr std::size_t NamesPerLine = 4;
    const std::size_t count = (names.size() + NamesPerLine - 1) / NamesPerLine;
    for (std::size_t line = 0, name = 0; line < count; ++line) {
        std::string text = "      ";
        for (const std::size_t end = names.size() * (line + 1) / count; name < end; ++name)
            text += names[name] + (name + 1 < end ? ", " : "");
        lines.push_back(text);
    }
}

} // namespace

bool AcceptModel(std::string &model)
{
    const ModelRow *row = FindModel(model);
    if (row && !row->IsCard())
        model = row->NodeName();
    return row != nullptr;
}

std::string_view ModelDescription(std::string_view model)
{
    const ModelRow *row = FindModel(model);
    return row && !row->IsCard() ? row->description : std::string_view{};
}

bool IsConsoleModel(std::string_view model)
{
    const ModelRow *row = FindModel(model);
    return row && row->kind == ModelKind::Console;
}

std::string_view ModelHelpPage(std::string_view model)
{
    const ModelRow *row = FindModel(model);
    return row && !row->IsCard() ? row->help : "module-setting";
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
    const ModelRow *row = FindCard(code);
    return row ? std::string(row->model) : "39" + std::string(code);
}

std::string SlotNodeText(std::string_view code)
{
    const ModelRow *row = FindCard(code);
    return row ? std::string(row->NodeName()) : SlotModel(code);
}

int SlotChannelCount(std::string_view code)
{
    const ModelRow *row = FindCard(code);
    return row ? row->channels : 0;
}

SlotListRow SlotListRowOf(std::string_view model)
{
    const ModelRow *row = FindModel(model);
    if (!row || !row->IsCard())
        return {};
    return {.name = "VORN-" + std::string(row->Title()), .description = row->description};
}

std::vector<std::string> LabPCLines()
{
    std::vector<std::string> modules;
    std::vector<std::string> slots;
    for (const ModelRow &row : AllModels()) {
        if (row.IsCard())
            slots.push_back("VORN-" + std::string(row.Title()));
        else if (row.kind != ModelKind::BaseUnit)
            modules.push_back("VORN-" + std::string(row.NodeName()));
    }

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
