#include "pages/SlotUpdate.h"

#include "protocol/Conversions.h"
#include "protocol/FormatByte.h"
#include "protocol/ModelTable.h"
#include "protocol/RangeTables.h"
#include "protocol/Registers.h"
#include "protocol/SlotRecord.h"

namespace vorn
{

namespace
{

constexpr std::string_view AsItIs = "FF"; ///< in place of a code: the module keeps what it has

} // namespace

std::string SlotFormatBits(const SlotSettings &settings)
{
    const std::string model = settings.node.model();
    std::string bits = "00000000";
    SetNumber(bits, 0, SlotFormatNumber(model, settings.format));
    if (Has(model, Feature::SlewRate) && settings.timeSlewRate >= 0 && settings.timeSlewRate < SlewRateCount)
        SetNumber(bits, FormatBit::SlewRate, settings.timeSlewRate);
    if (Has(model, Feature::IntegrationTime))
        SetBit(bits, FormatBit::Integration, settings.timeSlewRate == 1);
    return bits;
}

std::string SlotUpdateCommand(const SlotSettings &settings)
{
    const std::string model = settings.node.model();
    const bool ofChannel = settings.node.kind() == NodeKind::Channel;
    const bool ownRanges = Has(model, Feature::ChannelRanges);
    std::string bits = SlotFormatBits(settings);
    std::string value(ownRanges && !ofChannel ? AsItIs : SlotRangeCode(model, settings.range));
    if (ownRanges && ofChannel && Has(model, Feature::CardInputs))
        value += AsItIs;
    else if (!Has(model, Feature::CardCounters) || settings.format >= 0)
        value += BinToHex(bits);
    return Write(ofChannel ? Register::ChannelConfiguration : Register::SlotConfiguration, settings.node,
                 value);
}

} // namespace vorn
