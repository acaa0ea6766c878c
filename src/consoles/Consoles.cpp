#include "consoles/Consoles.h"

#include "consoles/Form7216.h"
#include "consoles/Form7221P.h"
#include "consoles/Form7224P.h"
#include "consoles/Form7227.h"
#include "consoles/Form7234.h"
#include "consoles/Form7254.h"
#include "consoles/Form7262.h"
#include "consoles/Form7276.h"
#include "protocol/ModelTable.h"
#include "protocol/NodeKey.h"
#include "shell/FormMain.h"

#include <algorithm>
#include <memory>

namespace vorn
{

namespace
{

template <class Form>
std::unique_ptr<ConsoleWindow> Make(FormMain &main)
{
    return std::make_unique<Form>(main);
}

struct ConsoleRow {
    std::string_view name; ///< as the model's row has it
    std::unique_ptr<ConsoleWindow> (*make)(FormMain &);
};

constexpr ConsoleRow Rows[] = {
    {"Form7216", Make<Form7216>}, {"Form7221P", Make<Form7221P>}, {"Form7224P", Make<Form7224P>},
    {"Form7227", Make<Form7227>}, {"Form7234", Make<Form7234>},   {"Form7254", Make<Form7254>},
    {"Form7262", Make<Form7262>}, {"Form7276", Make<Form7276>},
};

} // namespace

void Consoles::Show(const std::string &model, const std::string &consoleBaud)
{
    const ModelRow *of = FindModel(model);
    const auto *row = std::ranges::find(Rows, of ? of->console : std::string_view(), &ConsoleRow::name);
    if (row == std::end(Rows))
        return;
    const auto console = row->make(main_);
    console->ConsoleBaud = consoleBaud;
    console->NodeKey = NodeKey(main_.SelectedNodeKey);
    console->Run();
}

} // namespace vorn
