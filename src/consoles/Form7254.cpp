#include "consoles/Form7254.h"

namespace vorn
{

Form7254::Form7254(FormMain &main)
    : TwoRowConsole(main, {.name = "Form7254", .caption = "VORN-7254", .interval = 300},
                    {"DIOL", "DI &%1", 0, "LabDL", "Data", "LabDLv"},
                    {"DIOH", "DI &%1", 8, "LabDH", "Data", "LabDHv"})
{
}

} // namespace vorn
