#include "consoles/Form7262.h"

namespace vorn
{

Form7262::Form7262(FormMain &main)
    : TwoRowConsole(main, {.name = "Form7262", .caption = "VORN-7262", .interval = 500},
                    {"DIOL", "DI &%1", 0, "LabDL", "Data(In)", "LabDLv"},
                    {"DIOH", "DO &%1", 0, "LabDH", "Data(Out)", "LabDHv"})
{
    constexpr int YieldsBeforeASwitch = 2;
    // The next poll shows the digits of what was switched.
    OnSwitch(DIOH, YieldsBeforeASwitch, [](const std::string &) {});
}

} // namespace vorn
