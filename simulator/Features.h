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

/// The answer to a command: data behind "!" and address, data behind ">", or a refusal ("?" and address).
struct Answer {
    char lead = '?';
    bool addressed = true; ///< the address follows the lead character
    std::string data;
    bool stores = false; ///< the module stores the setting and restarts; it is silent meanwhile
    bool dataBeginsWithAddress = false; ///< as that of a record, with the stored address
};

Answer Refused();
Answer Done(std::string data = {});
Answer Data(std::string data); ///< process data behind ">"

/// What a handler gets of a command: the characters at the places of the pattern, and text and flag of the
/// row.
struct Command {
    Match match;
    std::string_view subject; ///< name of the setting, or another text that the handler defines
    bool stores = false;
};

/// A row of a model's command set.
struct CommandRow {
    std::string_view pattern;
    Answer (*run)(Unit &, const Command &);
    std::string_view subject = {};
    bool stores = false;
};

inline constexpr bool Stores = true;

/// A setting or state of a module, under its name in rack files and tests.
struct SettingRow {
    std::string_view name;
    std::string_view start; ///< the text of a fresh module
    /// The text to be kept for a new one; nothing when the module refuses it. Null when it can only be read.
    std::optional<std::string> (*take)(const Unit &, int channel, std::string_view text);
    bool perChannel = false; ///< the name is followed by the channel digit
    /// The present text; null when it is the kept one.
    std::string (*read)(const Unit &, int channel) = nullptr;
    /// Called behind a change.
    void (*written)(Unit &, int channel) = nullptr;
};

inline constexpr bool PerChannel = true;

/// Digital outputs that an alarm or a counter drives.
struct DrivenOutputs {
    unsigned owned = 0; ///< the operator's writes have no effect on them
    unsigned set = 0;
};

/// A feature that models share: its settings, its commands, and what time changes in it.
struct Feature {
    std::span<const SettingRow> settings;
    std::span<const CommandRow> commands;
    void (*advance)(Unit &, double from, double to) = nullptr;
    DrivenOutputs (*drive)(const Unit &) = nullptr;
};

/// @name Features of stand-alone modules
/// @{
extern const Feature Identity;       ///< record, model and firmware version of every module
extern const Feature BaseUnit;       ///< slots of a base unit
extern const Feature SingleInput;    ///< one analog input: 7203, 7206, 7209, ...
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

/// @name Features of the models that hosts have a console for
/// @{
extern const Feature QuickRestart; ///< goes on sooner behind a write that is stored
extern const Feature FreeRecord;   ///< record without type code
extern const Feature CommonRecord; ///< record whose type code, unless it is FF, goes to all channels
extern const Feature TypedInputs;  ///< analog inputs, each with a type of its own
extern const Feature OpenWiring;   ///< marks of open wires
extern const Feature NegativeSpan; ///< calibration of the negative end
extern const Feature Watchdog;     ///< of the communication
extern const Feature TypedOutputs; ///< analog outputs of 7234
extern const Feature Points7254;
extern const Feature Points7262;
extern const Feature Points7276;
/// @}

/// @name Features of slot cards
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

/// @name Handlers that most commands use
/// @{
Answer ReadSetting(Unit &, const Command &);  ///< "!" and the setting `subject`
Answer ReadProcess(Unit &, const Command &);  ///< ">" and the setting `subject`
Answer WriteSetting(Unit &, const Command &); ///< takes the data into the setting `subject`
/// @}

} // namespace vornsim
