#include "consoles/Form7221P.h"

namespace vorn
{

namespace
{

constexpr ConsoleDesign Frame{.name = "Form7221P", .caption = "VORN7221+", .interval = 100};

const InputDesign Design{.types = SignalTypes,
                         .channels = 8,
                         .channelEntry = "Ch  %1",
                         .typeList = "cboRange",
                         .zeroButton = "cmdZero",
                         .zeroCaption = "Zero Cal.",
                         .spanCaption = "Span Cal.",
                         .spanButton = "cmdSpan",
                         .calibrationTitle = "Vorn-7221+"};

} // namespace

Form7221P::Form7221P(FormMain &main) : ChannelConsole(main, Frame, Design)
{
    Arrange();
}

} // namespace vorn
