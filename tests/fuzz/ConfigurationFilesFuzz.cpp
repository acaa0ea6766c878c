// Configuration files that are replayed to a module.

#include "Fuzz.h"

#include "configuration/ConfigurationFile.h"
#include "protocol/Registers.h"

#include <algorithm>

using namespace vorn;

namespace
{

/// Whatever stands in a line, each command goes to the node's address, is that of its record, and ends no
/// line.
void Replay(const RecordStep &record, const NodeKey &node, const std::string &line)
{
    const auto commands = LoadCommands(record, node, line);
    PROMISE(commands.size() <= 2);
    for (const std::string &command : commands) {
        PROMISE(command.size() >= 3);
        PROMISE(command.substr(1, 2) == node.busAddress());
        PROMISE(command.find('\r') == std::string::npos && command.find('\n') == std::string::npos);
    }
    const RegisterRow &row = RowOf(record.reg);
    const std::string value = RecordValue(line, row.recordWidth);
    PROMISE(value.size() <= row.recordWidth);
    if (row.form == RecordForm::Plain)
        PROMISE(commands.size() == 1 && commands.front().ends_with(value));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const std::string text = fuzz::Text(data, size);
    for (const char *key : {"_0003!!0A7206", "_1003!!0A7282", "*0003!!0A7282D", "_0003!!0A7224M",
                            "_0003!!0A3900", "_00032!0A3923H", "_00030!0A3931"}) {
        const NodeKey node(key);
        ConfigurationLines lines(text);
        for (const RecordStep &record : RecordsOf(node)) {
            const std::string line = lines.Next();
            PROMISE(line.find_first_of("\r\n") == std::string::npos);
            Replay(record, node, line);
        }
    }
    const std::string types = RecordValue(text, 8);
    for (int slot = 0; slot < LoadedSlots; ++slot) {
        const NodeKey card = CardOfSlot(NodeKey("_0003!!0A3900"), types, slot);
        PROMISE(card.text().empty() || card.kind() == NodeKind::Slot);
    }
    PROMISE(SavedSlots(text) >= -1);
    PROMISE(RecordLine(text, text).size() == 52);
    return 0;
}
