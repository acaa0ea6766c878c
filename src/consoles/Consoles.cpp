#include "consoles/Consoles.h"

#include "consoles/Form7216.h"
#include "consoles/Form7221P.h"
#include "consoles/Form7224P.h"
#include "consoles/Form7227.h"
#include "consoles/Form7234.h"
#include "consoles/Form7254.h"
#include "consoles/Form7262.h"
#include "consoles/Form7276.h"
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
    std::string_view model;
    std::unique_ptr<ConsoleWindow> (*make)(FormMain &);
};

constexpr ConsoleRow Rows[] = {
    {"7216", Make<Form7216>}, {"7221P", Make<Form7221P>}, {"7224P", Make<Form7224P>},
    {"7227", Make<Form7227>}, {"7234", Make<Form7234>},   {"7254", Make<Form7254>},
    {"7262", Make<Form7262>}, {"7276", Make<Form7276>},
};

} // namespace

void Consoles::Show(const std::string &model, const std::string &consoleBaud)
{
    const auto *row = std::ranges::find(Rows, std::string_view(model), &ConsoleRow::model);
    if (row == std::end(Rows))
        return;
    const auto console = row->make(main_);
    console->ConsoleBaud = consoleBaud;
    console->NodeKey = NodeKey(main_.SelectedNodeKey);
    console->Run();
}

} // namespace vorn
