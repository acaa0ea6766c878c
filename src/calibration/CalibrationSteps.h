#pragma once

#include "protocol/CalibrationMode.h"
#include "protocol/NodeKey.h"

#include <optional>
#include <string>
#include <string_view>

namespace vorn
{

/// "Zero", "Span", "CJC", "0V", "10V", "4mA", "20mA", "Start": the tag of the dialogue.
std::string_view ModeTag(CalibrationMode mode);

/// Whether a mode trims an output by a meter.
bool TrimsOutput(CalibrationMode mode);

/// What the operator reads first: "Apply ... to  the input terminal of the module." with a gap for the
/// reference value. Empty for the cold junction.
std::string_view InstructionLine(CalibrationMode mode, std::string_view model);

/// What the mode's `Execute` does, in one line.
std::string_view PurposeLine(CalibrationMode mode);

/// The line that asks for the range whose reference value is to be applied: "$AA2", "$AASsB", or "$AASsC0B"
/// where each channel has a range. Nothing for a model that no zero or span is known for.
std::optional<std::string> InputTypeQuery(const NodeKey &node);

/// The reference value for the range of a reply to `InputTypeQuery`: " 10 V". Nothing for a range without
/// one.
std::optional<std::string> ReferenceValue(CalibrationMode mode, std::string_view model,
                                          std::string_view reply);

/// What drives the output to the point to be calibrated when the dialogue opens; nothing for other models.
/// `outputCode` is data format digit and range digit.
std::optional<std::string> OpeningCommand(CalibrationMode mode, const NodeKey &node,
                                          std::string_view outputCode);

/// A cold junction offset as it goes on the wire: sign and four hexadecimal digits, 0.009 degrees Celsius a
/// count. Nothing for a text that is no number, or for one beyond 16 bits with sign.
std::optional<std::string> OffsetCounts(std::string_view text);

/// The step that `Execute` carries out. `offset` is the wire form of the cold junction offset.
std::string ExecuteCommand(CalibrationMode mode, const NodeKey &node, std::string_view offset);

/// Temperature of the cold junction.
std::string ColdJunctionQuery(const NodeKey &node);
/// Reads the value that an analog output puts out behind each start; nothing for other models.
std::optional<std::string> StartupQuery(const NodeKey &node);

enum class TrimStep { Up, Down };
/// One trim step of an output; nothing for a model without one.
std::optional<std::string> TrimCommand(const NodeKey &node, TrimStep step);
/// The output one step from the startup value that is on show; nothing for a model without outputs.
std::optional<std::string> StartupTrimCommand(const NodeKey &node, TrimStep step, std::string_view shown,
                                              std::string_view outputCode);

} // namespace vorn
