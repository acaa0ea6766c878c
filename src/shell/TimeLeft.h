#pragma once

#include <string>

namespace vorn
{

/// What the progress window says of the time that a work still needs: "About 2 min 5 s left". Seconds are
/// rounded up.
std::string TimeLeftText(double seconds);

} // namespace vorn
