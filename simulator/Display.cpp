// The LED displays of 7212D, 7282D and 7282N.

#include "Takers.h"

#include <algorithm>

namespace vornsim
{

namespace
{

constexpr std::string_view HostSource = "2"; // the display shows what the host sends

std::size_t Points(std::string_view text)
{
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '.'));
}

bool OnlyDigitsAndPoints(std::string_view text)
{
    return text.find_first_not_of("0123456789.") == std::string_view::npos;
}

/// Sign and six digits, one of which may be a point.
Taken TakeSignedText(const Unit &, int, std::string_view text)
{
    const bool sign = text.size() == 7 && (text.front() == '+' || text.front() == '-');
    return sign && OnlyDigitsAndPoints(text.substr(1)) && Points(text) <= 1 ? Taken(text) : std::nullopt;
}

/// Six digits and a point.
Taken TakePlainText(const Unit &, int, std::string_view text)
{
    return text.size() == 7 && OnlyDigitsAndPoints(text) && Points(text) == 1 ? Taken(text) : std::nullopt;
}

/// A text is refused while the display shows a value of the module itself.
Answer WriteText(Unit &unit, const Command &command)
{
    return unit.Kept("led") == HostSource ? WriteSetting(unit, command) : Refused();
}

constexpr SettingRow MappingDisplaySettings[] = {
    {"led", "1", TakeOneOf<'1', '2'>},
    {"ledtext", "", TakeSignedText},
};

constexpr SettingRow CounterDisplaySettings[] = {
    {"led", "0", TakeOneOf<'0', '1', '2'>},
    {"ledtext", "", TakePlainText},
};

constexpr CommandRow DisplayCommands[] = {
    {"$8", ReadSetting, "led"},
    {"$8t", WriteSetting, "led"},
    {"$9~", WriteText, "ledtext"},
};

} // namespace

constinit const Feature MappingDisplay{MappingDisplaySettings, DisplayCommands};
constinit const Feature CounterDisplay{CounterDisplaySettings, DisplayCommands};

} // namespace vornsim
