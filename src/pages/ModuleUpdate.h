#pragma once

#include "protocol/NodeKey.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vorn
{

/// The general settings of a module or base unit as its page holds them. List positions count from 0; -1 is a
/// list with nothing selected.
struct ModuleSettings {
    NodeKey node;           ///< of the page: model, INIT state and current address
    std::string newAddress; ///< two hexadecimal digits; a base unit's is always "00", whatever stands here
    int range = -1;         ///< `CmbRange`
    int baudrate = -1;      ///< `CmbBaudrate`
    int dataFormat = -1;    ///< `CmbDataFormat`: data format, integration time or gate, by model
    int slewRate = -1;      ///< `CmbSlowRate`, 7231 only
    bool checksum = false;  ///< `CheckChecksum` reads other than "Disable"
};

/// The format byte as eight binary characters, bit 7 first.
std::string FormatBits(const ModuleSettings &settings);

/// The write of the configuration record: "%AANNTTCCFF", on a base unit "%AANNCCFF". A list position without
/// a code leaves its field out.
std::string ModuleUpdateCommand(const ModuleSettings &settings);

/// The address that the module answers to behind the write: the new one, "00" in INIT state.
std::string AddressAfterUpdate(const ModuleSettings &settings);

/// "$NNAn", the gate of a counter module in counting mode, for the address behind the write. Nothing for
/// other models, in frequency mode, and without a gate selected.
std::optional<std::string> GateCommand(const ModuleSettings &settings);

/// The new address as the record takes it: the first two characters of `LabAddr`, "00" for a base unit.
std::string NewAddress(const NodeKey &node, std::string_view labAddr);

/// Text of `LabAddr` for a decimal entry: "0A (Hex)". Nothing for an empty entry, which leaves the label
/// alone.
std::optional<std::string> AddressLabel(std::string_view decimal);

/// Whether one of the sibling keys other than the page's own has the new address. Never on a base unit.
bool IsDuplicateAddress(const ModuleSettings &settings, std::span<const std::string> siblingKeys);

/// Whether the write changes the address that the module is reached at now, so that its node is made again.
bool ChangesAddress(const ModuleSettings &settings);

/// Key of the node behind the write: state and port stay, checksum digit and address are the written ones.
std::string KeyAfterUpdate(const ModuleSettings &settings);

/// Where a node goes whose key changes. Siblings are sorted by their keys from the address on; `keys` is
/// their list as it stands, the node's own old key at `index` included. Nothing when the node may stay where
/// it stands; otherwise the index of the sibling in front of which it belongs, the number of siblings for the
/// end.
std::optional<std::size_t> MovedPlace(std::span<const std::string> keys, std::size_t index,
                                      std::string_view newKey);

/// Mask of enabled channels, two hexadecimal digits, from the mask as read and one channel's new state.
/// Channel 0 to 7 is bit 0 to 7.
std::string ChangedMask(std::string_view oldMask, int channel, bool enabled);

/// "$AA41" or "$AA40": the input filter of the counter modules.
std::string FilterCommand(const NodeKey &node, bool enabled);

} // namespace vorn
