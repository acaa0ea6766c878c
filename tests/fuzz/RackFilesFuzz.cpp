// Rack files, and lines of the bus to the modules of such a rack.

#include "Fuzz.h"

#include "simulator/BusText.h"
#include "simulator/Module.h"
#include "simulator/Rack.h"

namespace
{

using namespace vornsim;

void Talk(const ModuleDescription &description, fuzz::Input &input)
{
    Module module(description, 0);
    Faults none;
    for (int i = 0; i < 20 && !input.AtEnd(); ++i) {
        const std::string line = input.Line();
        const auto heard = module.Hear(line, module.Speed(), i * 50.0, TimePoint{}, none);
        if (!heard || heard->reply.text.empty())
            continue;
        PROMISE(heard->reply.text.find(Return) == std::string::npos);
        PROMISE(std::string_view("!>?").find(heard->reply.text.front()) != std::string_view::npos);
    }
    PROMISE(!module.Describe().empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // A rack file, an empty line, and what is said on the bus.
    const std::string text = fuzz::Text(data, size);
    const std::size_t end = text.find("\n\n");
    const std::string commands = end == std::string::npos ? std::string{} : text.substr(end + 2);
    try {
        for (const PortDescription &port : ParseRack(text.substr(0, end)).ports) {
            for (const ModuleDescription &module : port.modules) {
                fuzz::Input input(reinterpret_cast<const std::uint8_t *>(commands.data()), commands.size());
                Talk(module, input);
            }
        }
    } catch (const RackError &error) {
        PROMISE(error.line() > 0);
    }

    if (const auto bytes = Unescape(text))
        PROMISE(Unescape(Escape(*bytes)) == *bytes);
    PROMISE(Unescape(Escape(text)) == text);
    if (!text.empty())
        PROMISE(WithoutChecksum(text + Checksum(text)) == std::string_view(text));
    return 0;
}
