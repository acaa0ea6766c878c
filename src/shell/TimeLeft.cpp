#include "shell/TimeLeft.h"

#include <cmath>

namespace vorn
{

std::string TimeLeftText(double seconds)
{
    constexpr long Minute = 60;
    constexpr long Hour = 60 * Minute;
    const long left = std::lround(std::ceil(seconds));
    const std::string hours = left >= Hour ? std::to_string(left / Hour) + " h " : "";
    const std::string minutes = left >= Minute ? std::to_string(left % Hour / Minute) + " min " : "";
    return "About " + hours + minutes + std::to_string(left % Minute) + " s left";
}

} // namespace vorn
