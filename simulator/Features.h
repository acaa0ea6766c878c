#pragma once

#include "Pattern.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vornsim
{

class Unit;
struct ModelRow;

/// What a module answers to a command that it understood: data behind "!" and address, data behind ">", or a
/// refusal.
struct Answer {
    char lead = '?';
    bool addressed = true; ///< the address follows the lead character
    std::string data;
    bool stores = false;                ///< the module stores, and is silent while it restarts
    bool dataBeginsWithAddress = false; ///< as in a record, which tells the stored address
};

Answer Refused();
Answer Done(std::string data = {});
Answer Data(std::string data); ///< process data behind ">"

/// A command on its way to a handler: what the pattern's places took, and the row's own text and flag.
struct Command {
    Match match;
    std::string_view subject; ///< the setting, or what else the handler needs to know
    bool stores = false;
};

/// One line of a model's command set.
struct CommandRow {
    std::string_view pattern;
    Answer (*run)(Unit &, const Command &);
    std::string_view subject = {};
    bool stores = false;
};

inline constexpr bool Stores = true;

/// Something that a module keeps or shows, under the name that rack files and tests give it.
struct SettingRow {
    std::string_view name;
    std::string_view start; ///< the text of a fresh module
    /// The text as it is kept, nothing when the module can't take it. Null: it can only be read.
    std::optional<std::string> (*take)(const Unit &, int channel, std::string_view text);
    bool perChannel = false; ///< the name is followed by the channel digit
    /// The present text where it isn't the kept one.
    std::string (*read)(const Unit &, int channel) = nullptr;
    /// What follows from a new text.
    void (*written)(Unit &, int channel) = nullptr;
};

inline constexpr bool PerChannel = true;

/// Digital outputs that something drives by itself: an alarm, a counter.
struct DrivenOutputs {
    unsigned owned = 0; ///< not for the operator
    unsigned set = 0;
};

/// A faculty that models share: its settings, its commands and what goes on in it as time passes.
struct Feature {
    std::span<const SettingRow> settings;
    std::span<const CommandRow> commands;
    void (*advance)(Unit &, double from, double to) = nullptr;
    DrivenOutputs (*drive)(const Unit &) = nullptr;
};

/// @name Faculties of stand-alone modules
/// @{
extern const Feature Identity;       ///< record, model and firmware of every module
extern const Feature BaseUnit;       ///< slots of a base unit
extern const Feature SingleInput;    ///< one analog input: 7203 and its like
extern const Feature MultiInput;     ///< eight analog inputs behind a channel mask: 7221 family
extern const Feature InputAlarm;     ///< alarm and outputs of a single analog input
extern const Feature EventInput;     ///< digital input with event counter
extern const Feature LinearMapping;  ///< 7212D
extern const Feature MappingDisplay; ///< LED display of 7212D
extern const Feature CounterDisplay; ///< LED display of 7282D and 7282N
extern const Feature Excitation;     ///< excitation output of 7218
extern const Feature SingleOutput;   ///< analog output of 7231
extern const Feature Counters;       ///< 7282 family
extern const Feature PresetCounters; ///< what 7282 has of its own
extern const Feature AlarmCounters;  ///< what 7282D and 7282N have of their own
extern const Feature Logger;         ///< memory of 7224M
extern const Feature ZeroSpan;       ///< zero and span calibration, stand-alone and slot
extern const Feature ColdJunction;   ///< cold-junction calibration, stand-alone and slot
extern const Feature DigitalPoints;  ///< the settings behind all digital models
extern const Feature Points7252;
extern const Feature Points7256;
extern const Feature Points7258;
extern const Feature Points7272;
/// @}

/// @name Faculties of slot cards
/// @{
extern const Feature CardRecord;      ///< range and format of 3921, 3923, 3925
extern const Feature FastCardRecord;  ///< 3923H: format by slot, range by channel
extern const Feature OutputCard;      ///< 3931
extern const Feature CounterCard;     ///< 3962
extern const Feature CardInputs;      ///< values of the analog input cards
extern const Feature ChannelMask;     ///< channel enable mask of a card
extern const Feature ChannelModes;    ///< momentary or latching alarm
extern const Feature ChannelAlarms;   ///< limits and connections of a card's channels
extern const Feature ChannelZeroSpan; ///< calibration of one channel
extern const Feature Points3942;
extern const Feature Points3944;
extern const Feature Points3946;
extern const Feature Points3948;
extern const Feature Points3951;
extern const Feature PointsRelay; ///< 3953, 3957
/// @}

/// @name Handlers that most commands are content with
/// @{
Answer ReadSetting(Unit &, const Command &);  ///< "!" and the setting `subject`
Answer ReadProcess(Unit &, const Command &);  ///< ">" and the setting `subject`
Answer WriteSetting(Unit &, const Command &); ///< takes the data into the setting `subject`
/// @}

} // namespace vornsim
