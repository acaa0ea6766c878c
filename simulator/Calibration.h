#pragma once

#include "Features.h"

namespace vornsim
{

/// @name Handlers of calibration steps
/// What was calibrated last stands in the setting "calibration", the sum of all trim steps in "trim".
/// @{
Answer StoreCalibration(Unit &, const Command &); ///< `subject` names the step
Answer Trim(Unit &, const Command &);             ///< two hexadecimal digits, a signed step other than 0
/// @}

} // namespace vornsim
