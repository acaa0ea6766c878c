#pragma once

#include "protocol/Features.h"
#include "protocol/NodeKey.h"
#include "protocol/PollList.h"
#include "protocol/Registers.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vorn
{

struct RangeTable;

/// Kinds of models, which tell what a row must have.
enum class ModelKind : std::uint8_t {
    AnalogInput,  ///< one analog input
    ChannelInput, ///< eight analog inputs
    AnalogOutput,
    Digital,
    Counter,
    BaseUnit,
    Console, ///< has a window of its own instead of a page
    InputCard,
    OutputCard,
    CounterCard,
    DigitalCard,
};

/// Pages of the main window, by what they show.
enum class PageName : std::uint8_t {
    None,
    // Of modules and base units.
    ThermocoupleInput,
    AnalogInput,
    SensorInput,
    MappedInput,
    StrainGauge,
    ChannelInput,
    ChannelThermocouple,
    Logger,
    AnalogOutput,
    InputsAndOutputs,
    EightInputs,
    SixteenInputs,
    FourRelays,
    PresetCounter,
    DisplayCounter,
    BaseUnit,
    // Of slots.
    SensorSlot,
    VoltageSlot,
    FastVoltageSlot,
    OutputSlot,
    CounterSlot,
    UniversalPointSlot,
    SixteenInputSlot,
    EightInputSlot,
    OutputAndInputSlot,
    SixteenOutputSlot,
    RelaySlot,
    // Of channels.
    SensorChannel,
    VoltageChannel,
    FastVoltageChannel,
    OutputChannel,
    CounterChannel,
};

/// The two rows of indicators of the digital page.
enum class PointRow : std::uint8_t { Low, High }; // DIOL, DIOH

/// Elements of a row of indicators that switch outputs.
struct PointOutputs {
    PointRow row;
    int first;           ///< element
    int last;            ///< element
    int firstOutput = 0; ///< the output that the first of them is
};

/// Registers that follow each other in a configuration file: for each index from 0 to `count` - 1 the first,
/// and the second where there is one.
struct RecordGroup {
    Register first;
    Register second = Register::None;
    int count = 1; ///< `PerChannel`: as many as the model has channels
};

/// All that tells a model from another. A new model is a new row of the table; what is missing in it, tests
/// tell.
struct ModelRow {
    std::string_view model; ///< as it names itself and as keys hold it
    ModelKind kind;
    PageName page = PageName::None;        ///< of its node
    PageName channelPage = PageName::None; ///< of its channels' nodes
    std::string_view description; ///< in the list of modules, of a card in the list of a base unit's slots
    Features has = {};            ///< beside what its kind brings along

    std::string_view nodeName = {}; ///< on its node; empty for the model
    std::string_view title = {};    ///< on its page and in the list of slots; empty for the model

    const RangeTable *ranges = nullptr;             ///< its range list; null for a model without one
    std::string_view rangeCode = {};                ///< type code of a model without a range list
    std::span<const std::string_view> formats = {}; ///< format list of a card, by list position

    std::string_view slotCode = {};              ///< of a card
    int channels = 0;                            ///< analog or counter channels
    int outputs = 0;                             ///< outputs in the output byte
    std::span<const PointOutputs> switches = {}; ///< digital points that are outputs
    PairPlaces points = {};                      ///< places of its digital values
    PairPlaces faults = {};                      ///< places of its fault marks

    std::span<const PollStep> poll = {};        ///< of its node: a module's or a slot's
    std::span<const PollStep> channelPoll = {}; ///< of its channels' nodes

    std::string_view help = {};    ///< name of the help page; of cards there is one for all
    std::string_view console = {}; ///< name of its own window

    std::span<const RecordGroup> records = {}; ///< of a configuration file, in order; empty: its name alone

    constexpr bool IsCard() const { return !slotCode.empty(); }
    Features All() const; ///< those of its kind included
    constexpr std::string_view NodeName() const { return nodeName.empty() ? model : nodeName; }
    constexpr std::string_view Title() const { return title.empty() ? model : title; }
};

std::span<const ModelRow> AllModels();

/// Row of a model; null for a text that is none.
const ModelRow *FindModel(std::string_view model);
/// Row of a slot code; null for a code that no card has.
const ModelRow *FindCard(std::string_view slotCode);
/// Row of the model of a module's, slot's or channel's node. Null for other nodes, for unknown models, and
/// for a card's model where a module stands, or the other way round.
const ModelRow *RowOf(const NodeKey &node);

/// Whether a model has a feature; false for unknown models.
bool Has(std::string_view model, Feature feature);

/// A record of a configuration file.
struct RecordStep {
    Register reg;
    int index = 0;
};
/// Records of a module, a base unit or the card in a slot, behind the model's name and in their order.
std::vector<RecordStep> RecordsOf(const NodeKey &node);

} // namespace vorn
