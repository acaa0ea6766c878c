#include "BusText.h"
#include "Module.h"
#include "Rack.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace vornsim
{

namespace
{

constexpr unsigned GreatestPort = 255;
constexpr unsigned GreatestNumber = 10'000'000; // of milliseconds, bytes, times

struct KeyValue {
    std::string key;
    std::string value;
};

std::string Quoted(std::string_view text)
{
    return "\"" + std::string(text) + "\"";
}

/// The words of a line up to a comment.
std::vector<std::string> Words(std::string_view line)
{
    std::vector<std::string> words;
    constexpr std::string_view Blanks = " \t\r";
    while (true) {
        const std::size_t start = line.find_first_not_of(Blanks);
        if (start == std::string_view::npos || line[start] == '#')
            return words;
        line.remove_prefix(start);
        const std::size_t end = std::min(line.find_first_of(Blanks), line.size());
        words.emplace_back(line.substr(0, end));
        line.remove_prefix(end);
    }
}

/// Reads one line after the other into the rack.
class RackReader
{
public:
    Rack Read(std::string_view text)
    {
        for (const std::string &line : Split(text, '\n')) {
            ++line_;
            words_ = Words(line);
            if (!words_.empty())
                ReadLine();
        }
        FinishModules();
        if (rack_.ports.empty())
            Fail("no port in the rack");
        return std::move(rack_);
    }

private:
    [[noreturn]] void Fail(const std::string &text) const { throw RackError(line_, text); }

    void ReadLine()
    {
        const std::string &kind = words_.front();
        if (kind == "slot")
            return ReadSlot();
        if (kind == "fault")
            return ReadFault();
        if (kind == "module" || kind == "modules")
            return ReadModules();
        FinishModules();
        if (kind == "port")
            return ReadPort();
        if (kind == "master")
            return ReadMaster();
        Fail("unknown word " + Quoted(kind));
    }

    PortDescription &CurrentPort()
    {
        if (rack_.ports.empty())
            Fail(Quoted(words_.front()) + " before any port");
        return rack_.ports.back();
    }

    std::string Word(std::size_t index, std::string_view what) const
    {
        if (index >= words_.size())
            Fail(Quoted(words_.front()) + " needs " + std::string(what));
        return words_[index];
    }

    std::vector<KeyValue> Keys(std::size_t from) const
    {
        std::vector<KeyValue> keys;
        for (std::size_t i = from; i < words_.size(); ++i) {
            const std::size_t equals = words_[i].find('=');
            if (equals == std::string::npos || equals == 0)
                Fail(Quoted(words_[i]) + " is no key=value");
            const KeyValue pair{words_[i].substr(0, equals), words_[i].substr(equals + 1)};
            if (std::any_of(keys.begin(), keys.end(), [&](const KeyValue &k) { return k.key == pair.key; }))
                Fail(Quoted(pair.key) + " is given twice");
            keys.push_back(pair);
        }
        return keys;
    }

    int Number(const KeyValue &pair, unsigned greatest = GreatestNumber) const
    {
        const auto number = ReadDecimal(pair.value);
        if (!number || *number > greatest)
            FailValue(pair);
        return static_cast<int>(*number);
    }

    bool YesNo(const KeyValue &pair) const
    {
        if (pair.value != "yes" && pair.value != "no")
            FailValue(pair);
        return pair.value == "yes";
    }

    std::string Bytes(const KeyValue &pair) const
    {
        const auto bytes = Unescape(pair.value);
        if (!bytes)
            FailValue(pair);
        return *bytes;
    }

    [[noreturn]] void FailValue(const KeyValue &pair) const
    {
        Fail(Quoted(pair.value) + " is no " + pair.key);
    }
    [[noreturn]] void FailKey(const KeyValue &pair) const
    {
        Fail(Quoted(words_.front()) + " has no key " + Quoted(pair.key));
    }

    void ReadPort()
    {
        PortDescription port;
        const std::string word = Word(1, "a number");
        const auto number = ReadDecimal(word);
        if (!number || *number < 1 || *number > GreatestPort)
            Fail(Quoted(word) + " is no port number from 1 to 255");
        port.number = static_cast<int>(*number);
        if (std::any_of(rack_.ports.begin(), rack_.ports.end(),
                        [&](const auto &p) { return p.number == port.number; }))
            Fail("port " + word + " is there already");
        for (const KeyValue &pair : Keys(2)) {
            if (pair.key == "speed")
                port.speed = Speed(pair);
            else if (pair.key == "pace")
                port.pace = YesNo(pair);
            else if (pair.key == "delay")
                port.delay = std::chrono::milliseconds(Number(pair));
            else
                FailKey(pair);
        }
        rack_.ports.push_back(port);
        taken_.clear();
    }

    int Speed(const KeyValue &pair) const
    {
        constexpr std::array Speeds{1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200};
        const int speed = Number(pair);
        if (std::find(Speeds.begin(), Speeds.end(), speed) == Speeds.end())
            FailValue(pair);
        return speed;
    }

    /// Lines with slots and faults of the module may follow, so it is checked later, by `FinishModules`.
    void ReadModules()
    {
        FinishModules();
        CurrentPort();
        pending_.emplace();
        pending_->line = line_;
        shared_ = false;
        pending_->model = Word(1, "a model");
        for (const KeyValue &pair : Keys(2)) {
            if (pair.key == "address")
                ReadAddresses(pair);
            else if (pair.key == "slots")
                ReadSlots(pair);
            else if (pair.key == "shared")
                shared_ = YesNo(pair);
            else
                pending_->settings.push_back({pair.key, pair.value, line_});
        }
        if (!FindModule(pending_->model))
            Fail("unknown model " + Quoted(pending_->model));
        if (addresses_.empty())
            Fail(Quoted(words_.front()) + " needs address=");
    }

    /// "05", "00..FF", "01,03,10..1F"
    void ReadAddresses(const KeyValue &pair)
    {
        for (const std::string &piece : Split(pair.value, ',')) {
            const std::size_t dots = piece.find("..");
            const std::string first = piece.substr(0, dots);
            const std::string last = dots == std::string::npos ? first : piece.substr(dots + 2);
            constexpr unsigned None = 0x100;
            const unsigned from = first.size() == 2 ? ReadHex(first).value_or(None) : None;
            const unsigned to = last.size() == 2 ? ReadHex(last).value_or(None) : None;
            if (from == None || to == None || from > to)
                FailValue({pair.key, piece});
            for (unsigned address = from; address <= to; ++address)
                addresses_.push_back(Hex(address, 2));
        }
    }

    /// "3923,-,3962": the cards from slot 0 on
    void ReadSlots(const KeyValue &pair)
    {
        int slot = 0;
        for (const std::string &card : Split(pair.value, ',')) {
            if (card != "-")
                pending_->cards[slot] = {card, {}, line_};
            ++slot;
        }
    }

    void ReadSlot()
    {
        if (!pending_)
            Fail("\"slot\" before any module");
        const std::string word = Word(1, "a number");
        if (word.size() != 1 || !IsDecimal(word.front()))
            Fail(Quoted(word) + " is no slot");
        const int slot = word.front() - '0';
        CardDescription card{Word(2, "a card"), {}, line_};
        if (pending_->cards.contains(slot))
            Fail("slot " + word + " has a card already");
        for (const KeyValue &pair : Keys(3))
            card.settings.push_back({pair.key, pair.value, line_});
        pending_->cards.emplace(slot, std::move(card));
    }

    void ReadFault()
    {
        Fault fault;
        const std::string word = Word(1, "a kind");
        const auto kind = FaultKind(word);
        if (!kind)
            Fail("unknown fault " + Quoted(word));
        fault.kind = *kind;
        for (const KeyValue &pair : Keys(2))
            ReadFaultKey(fault, pair);
        (pending_ ? pending_->faults : CurrentPort().faults).push_back(fault);
    }

    void ReadFaultKey(Fault &fault, const KeyValue &pair) const
    {
        if (pair.key == "begins")
            fault.begins = Bytes(pair);
        else if (pair.key == "times")
            fault.times = Number(pair);
        else if (pair.key == "delay")
            fault.delay = std::chrono::milliseconds(Number(pair));
        else if (pair.key == "at")
            fault.at = static_cast<std::size_t>(Number(pair));
        else if (pair.key == "length")
            fault.length = static_cast<std::size_t>(Number(pair));
        else if (pair.key == "seed")
            fault.seed = static_cast<unsigned>(Number(pair));
        else if (pair.key == "text")
            fault.text = Bytes(pair);
        else
            FailKey(pair);
    }

    void ReadMaster()
    {
        Master master;
        for (const KeyValue &pair : Keys(1)) {
            if (pair.key == "every")
                master.every = std::chrono::milliseconds(Number(pair));
            else if (pair.key == "send")
                master.send = Split(Bytes(pair), ',');
            else if (pair.key == "cut")
                master.cut = static_cast<std::size_t>(Number(pair));
            else if (pair.key == "gap")
                master.gap = std::chrono::milliseconds(Number(pair));
            else if (pair.key == "times")
                master.times = Number(pair);
            else if (pair.key == "checksum")
                master.checksum = YesNo(pair);
            else
                FailKey(pair);
        }
        if (master.send.empty())
            Fail("\"master\" needs send=");
        if (CurrentPort().master)
            Fail("the port has a master already");
        CurrentPort().master = master;
    }

    /// Checks the module that was begun, and puts it on the port, once for each of its addresses.
    void FinishModules()
    {
        if (!pending_)
            return;
        ModuleDescription module = std::move(*pending_);
        pending_.reset();
        std::vector<std::string> addresses = std::exchange(addresses_, {});
        CheckModule(module);
        const bool init =
            std::any_of(module.settings.begin(), module.settings.end(), [](const Setting &setting) {
                return setting.name == "init" && setting.value == "yes";
            });
        module.settings.push_back({});
        for (std::string &address : addresses) {
            const std::string answersAt = init ? "00" : address;
            if (!taken_.insert(answersAt).second && !shared_)
                throw RackError(module.line, "address " + answersAt + " is taken already");
            module.settings.back() = {"address", std::move(address), module.line};
            rack_.ports.back().modules.push_back(module);
        }
    }

    int line_ = 0;
    std::vector<std::string> words_;
    Rack rack_;
    std::optional<ModuleDescription> pending_;
    std::vector<std::string> addresses_;
    bool shared_ = false;         // of the module that was begun
    std::set<std::string> taken_; // addresses at which modules of the current port answer
};

} // namespace

RackError::RackError(int line, const std::string &text)
    : std::runtime_error(line > 0 ? "line " + std::to_string(line) + ": " + text : text), line_(line)
{
}

Rack ParseRack(std::string_view text)
{
    return RackReader().Read(text);
}

} // namespace vornsim
