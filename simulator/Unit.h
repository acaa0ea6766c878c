#pragma once

#include "Features.h"
#include "Models.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vornsim
{

/// The state of a channel, which time changes.
struct ChannelState {
    double count = 0;
    bool overflow = false;
    double target = 0; ///< analog output as commanded
    double output = 0; ///< analog output as driven, on its way to the target at the slew rate
    double startup = 0;
    bool high = false; ///< high alarm
    bool low = false;  ///< low alarm
};

/// A module or a slot card: its model, its settings, and what it measures, counts and drives. Times are
/// milliseconds of the simulator's clock.
class Unit
{
public:
    /// @param seed  gives the moving values of each unit a phase of their own
    Unit(const ModelRow &model, unsigned seed);

    const ModelRow &Model() const { return *model_; }
    unsigned Seed() const { return seed_; }
    double Now() const { return now_; }

    /// Brings the state up to a time. An earlier time than the last one changes nothing.
    void Advance(double now);
    /// Lets outputs that move at their slew rate arrive.
    void Settle();

    /// Executes a command: the lead character, then what follows the address.
    Answer Execute(std::string_view command);

    /// @name Settings
    /// `name` without channel digit; the channel of a setting that isn't per channel is ignored.
    /// @{
    std::string Read(std::string_view name, int channel = NoChannel) const;
    /// False when the model has no such setting or refuses the text.
    bool Write(std::string_view name, int channel, std::string_view text);
    /// The text as it is kept, without the row's `read`.
    std::string Kept(std::string_view name, int channel = NoChannel) const;
    void Keep(std::string_view name, int channel, std::string text);
    bool Has(std::string_view name) const { return FindSetting(name) != nullptr; }
    bool On(std::string_view name, int channel = NoChannel) const; ///< "1" or "yes"
    /// @}

    /// The row of a name as rack files write it, and its channel: "value3" is "value" of channel 3, "value"
    /// stands for all channels. Null when the model has no such setting.
    const SettingRow *FindWithChannel(std::string_view name, int &channel) const;

    /// Position of the setting among those of the model. A setting may depend on those before it.
    int Order(std::string_view name) const;

    const RangeRow &Range(int channel) const;
    DataFormat Format() const;

    ChannelState &Channel(int channel) { return channels_.at(static_cast<std::size_t>(channel)); }
    const ChannelState &Channel(int channel) const { return channels_.at(static_cast<std::size_t>(channel)); }

    /// The state of the digital outputs, by the operator's writes, the unit's own alarms, and other cards'
    /// alarms.
    unsigned Outputs() const;
    DrivenOutputs Driven() const;
    void WriteOutputs(unsigned outputs); ///< those that an alarm drives stay as they are
    void SetConnected(unsigned outputs) { connected_ = outputs; }

    /// Whether an alarm of the unit was ever connected to another card's output.
    bool Connects() const { return connects_; }
    void SetConnects() { connects_ = true; }

private:
    const SettingRow *FindSetting(std::string_view name) const;

    const ModelRow *model_;
    unsigned seed_;
    double now_ = 0;
    std::map<std::string, std::string, std::less<>> kept_; // only settings that were written
    std::vector<ChannelState> channels_;
    unsigned outputs_ = 0;
    unsigned connected_ = 0;
    bool connects_ = false;
};

/// A mask of the lowest `count` bits.
constexpr unsigned LowBits(int count)
{
    return count >= 32 ? ~0U : (1U << count) - 1;
}

} // namespace vornsim
