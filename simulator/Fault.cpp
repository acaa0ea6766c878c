#include "Fault.h"

#include "BusText.h"

#include <algorithm>
#include <array>
#include <random>
#include <utility>

namespace vornsim
{

namespace
{

constexpr std::size_t GarbageLength = 64;
constexpr std::size_t LongLength = 10240;

constexpr std::array<std::pair<std::string_view, Fault::Kind>, 12> Names{{
    {"none", Fault::Kind::None},
    {"silent", Fault::Kind::Silent},
    {"refuse", Fault::Kind::Refuse},
    {"garbage", Fault::Kind::Garbage},
    {"split", Fault::Kind::Split},
    {"late", Fault::Kind::Late},
    {"noreturn", Fault::Kind::NoReturn},
    {"innerreturn", Fault::Kind::InnerReturn},
    {"lone", Fault::Kind::Lone},
    {"wrongaddress", Fault::Kind::WrongAddress},
    {"long", Fault::Kind::Long},
    {"allbytes", Fault::Kind::AllBytes},
}};

std::string RandomBytes(std::size_t length, unsigned seed)
{
    std::mt19937 random(seed);
    std::string bytes(length, '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random() & 255); });
    return bytes;
}

std::string EveryByte()
{
    std::string bytes(256, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i);
    return bytes;
}

/// The reply followed by digits, up to a length that includes the carriage return.
std::string LongLine(std::string text, std::size_t length)
{
    while (text.size() + 1 < length)
        text += static_cast<char>('0' + text.size() % 10);
    return text + Return;
}

std::string NextAddress(std::string_view address)
{
    return Hex(ReadHex(address).value_or(0) + 1, 2);
}

} // namespace

std::optional<Fault::Kind> FaultKind(std::string_view name)
{
    const auto *found =
        std::find_if(Names.begin(), Names.end(), [&](const auto &row) { return row.first == name; });
    return found == Names.end() ? std::nullopt : std::optional(found->second);
}

std::string_view FaultName(Fault::Kind kind)
{
    const auto *found =
        std::find_if(Names.begin(), Names.end(), [&](const auto &row) { return row.second == kind; });
    return found == Names.end() ? std::string_view{} : found->first;
}

std::string Reply::Line() const
{
    return text + (checksum ? Checksum(text) : "") + Return;
}

void Faults::Set(Fault fault)
{
    std::erase_if(faults_, [&](const Active &active) { return active.fault.begins == fault.begins; });
    if (fault.kind != Fault::Kind::None)
        faults_.push_back({fault, fault.times});
}

std::optional<Fault> Faults::Meet(std::string_view command)
{
    for (auto active = faults_.rbegin(); active != faults_.rend(); ++active) {
        if (!command.starts_with(active->fault.begins))
            continue;
        Fault met = active->fault;
        met.seed += active->met++;
        if (active->left > 0 && --active->left == 0)
            faults_.erase(std::next(active).base());
        return met;
    }
    return std::nullopt;
}

std::vector<Piece> Spoil(Reply reply, const Fault &fault)
{
    const std::string line = reply.Line();
    switch (fault.kind) {
    case Fault::Kind::Garbage:
        return {{RandomBytes(fault.length ? fault.length : GarbageLength, fault.seed)}};
    case Fault::Kind::Split: {
        const std::size_t at = std::min(fault.at, line.size());
        return {{line.substr(0, at)}, {line.substr(at), fault.delay}};
    }
    case Fault::Kind::Late:
        return {{line, fault.delay}};
    case Fault::Kind::NoReturn:
        return {{line.substr(0, line.size() - 1)}};
    case Fault::Kind::InnerReturn:
        return {{line + fault.text}};
    case Fault::Kind::Lone:
        return {{line.substr(0, 1)}};
    case Fault::Kind::WrongAddress:
        if (reply.addressed)
            reply.text.replace(1, 2, NextAddress(reply.text.substr(1, 2)));
        return {{reply.Line()}};
    case Fault::Kind::Long:
        return {{LongLine(reply.text, fault.length ? fault.length : LongLength)}};
    case Fault::Kind::AllBytes:
        return {{EveryByte() + Return}};
    default:
        return {{line}};
    }
}

} // namespace vornsim
