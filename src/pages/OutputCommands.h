#pragma once

#include "protocol/ModelTable.h"
#include "protocol/NodeKey.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vorn
{

/// Whether a digital indicator is an output that a click switches: its caption begins "DO".
bool IsOutputCaption(std::string_view caption);

/// Caption of point 0 to 15 of a card whose points are inputs or outputs: "DI  3", "DO  &3", "DO  1&3".
std::string DirectionCaption(int point, bool input);

/// Number of `ADIO` elements, from 0 on, that make up the output byte of a model; 0 for models without
/// outputs there.
int AnalogModuleOutputs(std::string_view model);

/// "@AADO" and the byte of all outputs of an analog input or counter module: element i is bit i.
std::string OutputByteCommand(const NodeKey &node, std::span<const bool> outputs);

/// Command of a click on element 0 to 7 of a digital page: "#AA1ev" of a module, "#AASs1ev" of a slot, with e
/// the output as one hexadecimal digit and v "01" for set, "00" for clear. Nothing for points that are no
/// outputs.
std::optional<std::string> PointCommand(const NodeKey &node, PointRow row, int element, bool set);

/// Whether the reply of a `PointCommand` is judged; it is accepted with ">".
bool JudgesPointReply(std::string_view model);

/// "$AA8e": what the front display of the counter modules shows, e the element of `OptionLED`, 0 to 2.
std::string DisplaySourceCommand(const NodeKey &node, int element);

/// "$AA7" and the excitation voltage of 7218, in the wire form of engineering units.
std::string ExcitationCommand(const NodeKey &node, std::string text);

/// An output value as it stands: "#AA" and the value on 7231, "#AASsCc" and the value on a channel page of
/// 3931.
std::string AnalogOutputCommand(const NodeKey &node, std::string_view value);

/// "#AASsCi" and the value of output i of a 3931 slot page: the first five characters of the text, in wire
/// form.
std::string SlotOutputCommand(const NodeKey &node, int channel, std::string_view text);

} // namespace vorn
