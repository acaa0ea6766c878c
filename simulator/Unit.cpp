#include "Unit.h"

#include "BusText.h"

#include <algorithm>
#include <stdexcept>

namespace vornsim
{

namespace
{

std::string Key(const SettingRow &row, int channel)
{
    std::string key(row.name);
    if (row.perChannel)
        key += std::to_string(std::max(channel, 0));
    return key;
}

} // namespace

Answer Refused()
{
    return {};
}

Answer Done(std::string data)
{
    return {'!', true, std::move(data), false};
}

Answer Data(std::string data)
{
    return {'>', false, std::move(data), false};
}

Answer ReadSetting(Unit &unit, const Command &command)
{
    return Done(unit.Read(command.subject, command.match.channel));
}

Answer ReadProcess(Unit &unit, const Command &command)
{
    return Data(unit.Read(command.subject, command.match.channel));
}

Answer WriteSetting(Unit &unit, const Command &command)
{
    if (!unit.Write(command.subject, command.match.channel, command.match.data))
        return Refused();
    return {'!', true, {}, command.stores};
}

Unit::Unit(const ModelRow &model, unsigned seed)
    : model_(&model), seed_(seed), channels_(static_cast<std::size_t>(std::max(model.channels, 1)))
{
    for (int channel = 0; !model.ranges.empty() && channel < model.channels; ++channel) {
        ChannelState &state = Channel(channel);
        state.target = state.output = state.startup = Range(channel).low;
    }
}

void Unit::Advance(double now)
{
    const double from = now_;
    now_ = std::max(now, from);
    for (const Feature *feature : model_->features) {
        if (feature && feature->advance)
            feature->advance(*this, from, now_);
    }
}

void Unit::Settle()
{
    for (ChannelState &state : channels_)
        state.output = state.target;
}

Answer Unit::Execute(std::string_view command)
{
    for (const Feature *feature : model_->features) {
        if (!feature)
            break;
        for (const CommandRow &row : feature->commands) {
            if (auto match = MatchCommand(row.pattern, command, model_->channels))
                return row.run(*this, {std::move(*match), row.subject, row.stores});
        }
    }
    return Refused();
}

const SettingRow *Unit::FindSetting(std::string_view name) const
{
    for (const Feature *feature : model_->features) {
        if (!feature)
            break;
        for (const SettingRow &row : feature->settings) {
            if (row.name == name)
                return &row;
        }
    }
    return nullptr;
}

const SettingRow *Unit::FindWithChannel(std::string_view name, int &channel) const
{
    channel = NoChannel;
    if (const SettingRow *row = FindSetting(name))
        return row;
    if (name.empty() || !IsDecimal(name.back()))
        return nullptr;
    const SettingRow *row = FindSetting(name.substr(0, name.size() - 1));
    channel = name.back() - '0';
    return row && row->perChannel && channel < model_->channels ? row : nullptr;
}

int Unit::Order(std::string_view name) const
{
    int order = 0;
    for (const Feature *feature : model_->features) {
        if (!feature)
            break;
        for (const SettingRow &row : feature->settings) {
            if (row.name == name)
                return order;
            ++order;
        }
    }
    return order;
}

std::string Unit::Kept(std::string_view name, int channel) const
{
    const SettingRow *row = FindSetting(name);
    if (!row)
        return {};
    const auto found = kept_.find(Key(*row, channel));
    return found == kept_.end() ? std::string(row->start) : found->second;
}

void Unit::Keep(std::string_view name, int channel, std::string text)
{
    if (const SettingRow *row = FindSetting(name))
        kept_.insert_or_assign(Key(*row, channel), std::move(text));
}

std::string Unit::Read(std::string_view name, int channel) const
{
    const SettingRow *row = FindSetting(name);
    return row && row->read ? row->read(*this, std::max(channel, 0)) : Kept(name, channel);
}

bool Unit::Write(std::string_view name, int channel, std::string_view text)
{
    const SettingRow *row = FindSetting(name);
    if (!row || !row->take)
        return false;
    const bool all = row->perChannel && channel == NoChannel;
    const int first = all ? 0 : channel;
    const int last = all ? model_->channels - 1 : channel;
    for (int i = first; i <= last; ++i) {
        auto taken = row->take(*this, i, text);
        if (!taken)
            return false;
        Keep(name, i, std::move(*taken));
        if (row->written)
            row->written(*this, i);
    }
    return true;
}

bool Unit::On(std::string_view name, int channel) const
{
    const std::string text = Kept(name, channel);
    return text == "1" || text == "yes";
}

const RangeRow &Unit::Range(int channel) const
{
    const RangeRow *range = FindRange(model_->ranges, Read("range", channel));
    if (!range)
        throw std::logic_error("the model has no ranges");
    return *range;
}

DataFormat Unit::Format() const
{
    return static_cast<DataFormat>(ReadHex(Kept("format")).value_or(0) & 3);
}

DrivenOutputs Unit::Driven() const
{
    DrivenOutputs driven{connected_, connected_};
    for (const Feature *feature : model_->features) {
        if (!feature || !feature->drive)
            continue;
        const DrivenOutputs own = feature->drive(*this);
        driven.owned |= own.owned;
        driven.set |= own.set;
    }
    return driven;
}

unsigned Unit::Outputs() const
{
    const DrivenOutputs driven = Driven();
    return (outputs_ & ~driven.owned) | driven.set;
}

void Unit::WriteOutputs(unsigned outputs)
{
    const unsigned owned = Driven().owned;
    outputs_ = (outputs_ & owned) | (outputs & ~owned);
}

} // namespace vornsim
