#pragma once

#include <cstdint>

namespace vorn
{

/// Something that a model has.
enum class Feature : std::uint8_t {
    // What the kind of a model brings along.
    OwnAddress,    ///< everything but a slot card: model text, firmware version
    ModuleRecord,  ///< range, baud and format codes; everything with an address but a base unit
    SingleInput,   ///< one analog input
    ChannelInputs, ///< analog inputs behind a mask of enabled channels
    AnalogOutput,  ///< one analog output
    Points,        ///< digital points
    Counters,      ///< two counters with their input filter and outputs
    Slots,         ///< slot cards behind its address
    CardInputs,    ///< analog inputs of a card, each with alarms
    CardOutputs,   ///< analog outputs of a card
    CardCounters,  ///< counters of a card, each with alarms
    CardPoints,    ///< digital points of a card

    // What a model's row tells.
    ModuleAlarm,      ///< alarm mode, high and low limit
    EventCounter,     ///< counts the events of its digital input
    ColdJunction,     ///< a module's temperature of the terminals, for thermocouples
    CardColdJunction, ///< a card's
    DataFormats,      ///< percent and hexadecimal beside engineering units
    Ohms,             ///< ohms as one more data format
    IntegrationTime,  ///< 50 or 60 ms
    SlewRate,         ///< of its outputs
    LinearMapping,    ///< an input range is shown as another range
    SignedDisplay,    ///< front display with a sign, which can be given back to the module
    CounterDisplay,   ///< front display without a sign, whose source can be chosen; one alarm for both limits
    Presets,          ///< counters with a preset and an initial value each
    Excitation,       ///< excitation output
    Logger,           ///< memory for logged values
    Calibration,      ///< zero and span of its inputs
    ChannelRanges,    ///< each channel of the card has a range of its own
    HexReadings,      ///< the card's readings may be hexadecimal
    Faults,           ///< the card tells which of its points are faulty
    Directions,       ///< each point of the card is input or output
    JudgedOutputs,    ///< the card tells whether it took an output command

    // Of models with a console.
    PointBytes,          ///< digital outputs that are written all at once
    Watchdog,            ///< watches the communication
    ConsoleInputs,       ///< analog inputs, each with a type of its own
    OpenWiring,          ///< tells which of its inputs have an open wire
    ConsoleColdJunction, ///< a cold junction whose temperature can be shifted
    NegativeSpan,        ///< calibrates the negative end of a range as well
    ConsoleOutputs,      ///< analog outputs with startup and stop values
};

/// A set of features.
class Features final
{
public:
    constexpr Features() = default;
    constexpr Features(Feature feature) : bits_(std::uint64_t{1} << static_cast<unsigned>(feature)) {}

    constexpr bool Has(Feature feature) const { return HasAny(feature); }
    constexpr bool HasAny(Features features) const { return (bits_ & features.bits_) != 0; }

    friend constexpr Features operator|(Features a, Features b)
    {
        Features both;
        both.bits_ = a.bits_ | b.bits_;
        return both;
    }
    friend constexpr bool operator==(Features, Features) = default;

private:
    std::uint64_t bits_ = 0;
};

constexpr Features operator|(Feature a, Feature b)
{
    return Features(a) | Features(b);
}

} // namespace vorn
