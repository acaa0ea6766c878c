#include "Module.h"

#include "BusText.h"
#include "ChannelAlarms.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>

namespace vornsim
{

namespace
{

constexpr std::string_view Leads = "$%#@";
constexpr std::string_view LoaderLead = "&";
constexpr int InitSpeed = 9600;

const ModelRow &ModuleModel(const ModuleDescription &description)
{
    if (const ModelRow *model = FindModule(description.model))
        return *model;
    throw RackError(description.line, "unknown model \"" + description.model + "\"");
}

/// Applies the settings in the order of the model's table, since one may depend on another.
void Apply(Unit &unit, std::vector<Setting> settings)
{
    std::stable_sort(settings.begin(), settings.end(), [&](const Setting &a, const Setting &b) {
        int channel = NoChannel;
        const SettingRow *rowA = unit.FindWithChannel(a.name, channel);
        const SettingRow *rowB = unit.FindWithChannel(b.name, channel);
        return (rowA ? unit.Order(rowA->name) : 0) < (rowB ? unit.Order(rowB->name) : 0);
    });
    const std::string model(unit.Model().name);
    for (const Setting &setting : settings) {
        int channel = NoChannel;
        const SettingRow *row = unit.FindWithChannel(setting.name, channel);
        if (!row || !row->take)
            throw RackError(setting.line, "a " + model + " has no setting \"" + setting.name + "\"");
        if (!unit.Write(row->name, channel, setting.value))
            throw RackError(setting.line,
                            "a " + model + " can't take \"" + setting.value + "\" as " + setting.name);
    }
    unit.Settle();
}

} // namespace

Module::Module(const ModuleDescription &description, unsigned seed) : unit_(ModuleModel(description), seed)
{
    const int slots = unit_.Model().slots;
    std::string codes(static_cast<std::size_t>(slots) * 2, 'F');
    for (const auto &[slot, card] : description.cards) {
        const ModelRow *model = FindCard(card.model);
        if (!model)
            throw RackError(card.line, "unknown card \"" + card.model + "\"");
        if (slot < 0 || slot >= slots)
            throw RackError(card.line, "a " + Model() + " has no slot " + std::to_string(slot));
        Unit unit(*model, seed + static_cast<unsigned>(slot) * 3);
        Apply(unit, card.settings);
        codes.replace(static_cast<std::size_t>(slot) * 2, 2, model->slotCode);
        cards_.emplace(slot, std::move(unit));
    }
    unit_.Keep("slots", NoChannel, codes);
    Apply(unit_, description.settings);
    for (const Fault &fault : description.faults)
        faults_.Set(fault);
    Refresh();
}

void Module::Refresh()
{
    const bool init = unit_.On("init");
    address_ = init ? "00" : unit_.Kept("address");
    speed_ = init ? InitSpeed : std::stoi(unit_.Kept("baud"));
    checksum_ = !init && unit_.Read("checksum") == "yes";
    if (unit_.Has("download") && unit_.On("download") != loader_.IsActive()) {
        if (loader_.IsActive())
            loader_.Leave();
        else
            loader_.Enter(speed_);
    }
}

std::string Module::Describe() const
{
    std::string text = Address() + "  " + Model() + "  " + std::to_string(Speed());
    if (HasChecksum())
        text += "  checksum";
    if (unit_.On("init"))
        text += "  INIT, stored address " + unit_.Kept("address");
    for (const auto &[slot, card] : cards_)
        text += (slot == cards_.begin()->first ? "  slots " : " ") + std::to_string(slot) + ":" +
                std::string(card.Model().name);
    return text;
}

/// The line without its checksum; nothing when the checksum is missing or wrong.
std::optional<std::string_view> Module::Understood(std::string_view line) const
{
    return HasChecksum() ? WithoutChecksum(line) : line;
}

/// In INIT state no checksum is needed. A module whose checksum was switched on in INIT state also takes
/// lines that carry one, so that the host can find out that the change was made.
Answer Module::ExecuteLine(std::string_view line, double time)
{
    const auto body = [](std::string_view text) { return text.front() + std::string(text.substr(3)); };
    Answer answer = Execute(body(line), time);
    if (answer.lead != '?' || !unit_.On("init") || unit_.Read("checksum") != "yes")
        return answer;
    const auto bare = WithoutChecksum(line);
    return bare && bare->size() > 3 ? Execute(body(*bare), time) : answer;
}

std::optional<Module::Heard> Module::Hear(std::string_view line, int speed, double time, TimePoint now,
                                          Faults &shared)
{
    if (loader_.IsActive())
        return HearLoader(line, speed, now, shared);
    const std::string address = address_; // the reply carries the address before a write that changes it
    const bool checksum = checksum_;
    if (line.size() < 3 || line.substr(1, 2) != address || Leads.find(line.front()) == std::string_view::npos)
        return std::nullopt;
    const auto command = Understood(line);
    if (!command || command->size() < 3 || speed != speed_ || now < silentUntil_)
        return std::nullopt;

    const auto fault = MeetFault(*command, shared);
    if (fault && fault->kind == Fault::Kind::Silent)
        return std::nullopt;

    const bool refuse = fault && fault->kind == Fault::Kind::Refuse;
    const Answer answer = refuse ? Refused() : ExecuteLine(*command, time);
    Refresh();
    if (answer.stores)
        silentUntil_ = now + std::chrono::milliseconds(std::stoi(unit_.Kept("restart")));
    const std::string text = answer.lead + (answer.addressed ? address : "") + answer.data;
    return Heard{{text, answer.addressed || answer.dataBeginsWithAddress, checksum}, fault};
}

std::optional<Fault> Module::MeetFault(std::string_view command, Faults &shared)
{
    const auto own = faults_.Meet(command);
    return own ? own : shared.Meet(command);
}

/// In download mode. The answer to what starts an image still comes, then the unit is silent for a while.
std::optional<Module::Heard> Module::HearLoader(std::string_view line, int speed, TimePoint now,
                                                Faults &shared)
{
    if (!line.starts_with(LoaderLead) || line.substr(1, 2) != address_ || speed != loader_.Speed() ||
        now < silentUntil_)
        return std::nullopt;
    const auto fault = MeetFault(line, shared);
    if (fault && fault->kind == Fault::Kind::Silent)
        return std::nullopt;
    const bool refuse = fault && fault->kind == Fault::Kind::Refuse;
    const Answer answer =
        refuse ? Refused() : loader_.Execute(std::string(LoaderLead) + std::string(line.substr(3)));
    if (!refuse)
        StartLoaded(now);
    return Heard{{answer.lead + address_ + answer.data, true, false}, fault};
}

void Module::StartLoaded(TimePoint now)
{
    if (loader_.HasStartedLoader())
        silentUntil_ = now + std::chrono::milliseconds(std::stoi(unit_.Kept("loaderstart")));
    if (!loader_.HasStartedMain())
        return;
    silentUntil_ = now + std::chrono::milliseconds(std::stoi(unit_.Kept("restart")));
    SaveImages();
    unit_.Keep("download", NoChannel, "no");
    Refresh();
}

/// Into the folder of the setting `images`, for the user to compare with the files that he sent.
void Module::SaveImages() const
{
    const std::filesystem::path folder = unit_.Kept("images");
    if (folder.empty())
        return;
    std::ofstream(folder / "loader.img", std::ios::binary) << Image(ImageKind::Loader);
    std::ofstream(folder / "main.img", std::ios::binary) << Image(ImageKind::Main);
}

bool Module::BeginsFrame(char first, int speed) const
{
    return loader_.IsActive() && speed == loader_.Speed() && loader_.BeginsFrame(first);
}

std::optional<Module::Heard> Module::HearFrame(std::string_view frame, Faults &shared)
{
    const auto fault = MeetFault(NameOfFrame(frame), shared);
    if (fault && fault->kind == Fault::Kind::Silent)
        return std::nullopt;
    const bool refuse = fault && fault->kind == Fault::Kind::Refuse;
    const Answer answer = refuse ? Refused() : loader_.TakeFrame(frame, std::stoul(unit_.Kept("echo")));
    return Heard{{answer.lead + (answer.addressed ? address_ : "") + answer.data, false, false}, fault};
}

Answer Module::Execute(std::string_view command, double time)
{
    unit_.Advance(time);
    const bool forCard =
        unit_.Model().slots > 0 && command.size() >= 3 && command[1] == 'S' && IsDecimal(command[2]);
    if (!forCard)
        return unit_.Execute(command);
    const auto card = cards_.find(command[2] - '0');
    if (card == cards_.end())
        return Refused();
    card->second.Advance(time);
    DriveConnectedOutputs(time);
    return card->second.Execute(command.front() + std::string(command.substr(3)));
}

/// Only cards that drive another card's output need their time to pass here; the others catch up when they
/// are asked.
void Module::DriveConnectedOutputs(double time)
{
    if (std::none_of(cards_.begin(), cards_.end(), [](const auto &card) { return card.second.Connects(); }))
        return;
    std::map<int, unsigned> driven;
    for (auto &[slot, card] : cards_) {
        if (!card.Connects())
            continue;
        card.Advance(time);
        ForEachActiveConnection(card, [&](const Connection &to) { driven[to.slot] |= 1U << to.point; });
    }
    for (auto &[slot, card] : cards_)
        card.SetConnected(driven[slot] & LowBits(card.Model().outputs));
}

/// The module itself, or the card whose slot the name begins with; "slot2." is then cut off the name.
Unit &Module::UnitOf(std::string_view &name)
{
    if (!name.starts_with("slot") || name.size() < 6 || name[5] != '.')
        return unit_;
    const auto card = cards_.find(name[4] - '0');
    if (card == cards_.end())
        throw std::invalid_argument("no card in \"" + std::string(name.substr(0, 5)) + "\"");
    name.remove_prefix(6);
    return card->second;
}

void Module::Set(std::string_view name, std::string_view value, double time)
{
    std::string_view own = name;
    Unit &unit = UnitOf(own);
    unit.Advance(time);
    DriveConnectedOutputs(time);
    int channel = NoChannel;
    const SettingRow *row = unit.FindWithChannel(own, channel);
    if (!row || !row->take)
        throw std::invalid_argument("a " + Model() + " has no setting \"" + std::string(name) + "\"");
    if (!unit.Write(row->name, channel, value))
        throw std::invalid_argument("a " + Model() + " can't take \"" + std::string(value) + "\" as " +
                                    std::string(name));
    Refresh();
}

std::string Module::Get(std::string_view name, double time)
{
    std::string_view own = name;
    Unit &unit = UnitOf(own);
    unit.Advance(time);
    DriveConnectedOutputs(time);
    int channel = NoChannel;
    const SettingRow *row = unit.FindWithChannel(own, channel);
    if (!row)
        throw std::invalid_argument("a " + Model() + " has no setting \"" + std::string(name) + "\"");
    return unit.Read(row->name, channel);
}

void CheckModule(const ModuleDescription &description)
{
    const Module module(description, 0);
}

} // namespace vornsim
