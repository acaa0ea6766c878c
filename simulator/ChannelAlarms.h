#pragma once

#include "Unit.h"

#include <optional>

namespace vornsim
{

/// A digital output of another card that an alarm drives.
struct Connection {
    int slot;
    int point;
};

/// Calls `use(connection)` for every connection of the unit's alarms that are on now.
template <typename Use>
void ForEachActiveConnection(const Unit &unit, Use use);

/// The output that an alarm of a channel is connected to, by the setting "highout" or "lowout"; nothing when
/// it isn't connected.
std::optional<Connection> AlarmConnection(const Unit &unit, std::string_view name, int channel);

template <typename Use>
void ForEachActiveConnection(const Unit &unit, Use use)
{
    for (int channel = 0; channel < unit.Model().channels; ++channel) {
        const ChannelState &state = unit.Channel(channel);
        if (const auto high = state.high ? AlarmConnection(unit, "highout", channel) : std::nullopt)
            use(*high);
        if (const auto low = state.low ? AlarmConnection(unit, "lowout", channel) : std::nullopt)
            use(*low);
    }
}

} // namespace vornsim
