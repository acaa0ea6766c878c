// What the process that reads workbooks says of one, whatever becomes of it on the way.

#include "Fuzz.h"

#include "logger/SheetText.h"

namespace
{

using namespace vorn;

void Parse(const std::string &text)
{
    try {
        const RecordSheet sheet = ParseSheetText(text);
        // What was understood is understood again, cell by cell.
        const std::string again = SheetText(sheet);
        PROMISE(SheetText(ParseSheetText(again)) == again);
        PROMISE(sheet.Rows() * sheet.Columns() <= text.size());
    } catch (const WorkbookError &error) {
        PROMISE(*error.what() != '\0');
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Parse(fuzz::Text(data, size));
    return 0;
}
