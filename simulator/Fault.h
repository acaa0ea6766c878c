#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vornsim
{

/// Something that a module, or a whole port, does wrong.
struct Fault {
    enum class Kind {
        None,         ///< takes an earlier fault away
        Silent,       ///< the command isn't heard
        Refuse,       ///< the command is refused
        Garbage,      ///< `length` random bytes in place of the reply, no carriage return added
        Split,        ///< the reply in two pieces, cut behind `at` bytes, `delay` apart
        Late,         ///< the whole reply after `delay`
        NoReturn,     ///< the reply without its carriage return
        InnerReturn,  ///< `text` behind the carriage return
        Lone,         ///< the reply's first character alone
        WrongAddress, ///< the reply of the next address
        Long,         ///< a reply of `length` bytes, the carriage return included
        AllBytes      ///< the bytes 0 to 255 and a carriage return
    };

    Kind kind = Kind::None;
    std::string begins = {}; ///< only for commands that begin so, lead character and address included
    int times = 0;           ///< how often; 0 is for ever
    std::chrono::milliseconds delay{50};
    std::size_t at = 1;
    std::size_t length = 0; ///< 0: 64 for garbage, 10240 for a long reply
    unsigned seed = 1;      ///< of the random bytes
    std::string text = "X";
};

std::optional<Fault::Kind> FaultKind(std::string_view name);
std::string_view FaultName(Fault::Kind kind);

/// Bytes to be sent in one piece, and the time that goes by before them.
struct Piece {
    std::string bytes;
    std::chrono::milliseconds delay{0};
};

/// A reply on its way to the line.
struct Reply {
    std::string text;       ///< without checksum and carriage return
    bool addressed = false; ///< characters 2 and 3 are the address
    bool checksum = false;

    std::string Line() const; ///< as it goes out, carriage return included
};

/// The faults of a module or port.
class Faults
{
public:
    /// A fault takes the place of an earlier one with the same `begins`; of those that fit a command, the
    /// latest acts.
    void Set(Fault fault);
    void Clear() { faults_.clear(); }

    /// The fault that a command meets, if any; counts it as one of its times.
    std::optional<Fault> Meet(std::string_view command);

private:
    struct Active {
        Fault fault;
        int left;
        unsigned met = 0;
    };
    std::vector<Active> faults_;
};

/// What goes out in place of a reply, for every kind but Silent and Refuse.
std::vector<Piece> Spoil(Reply reply, const Fault &fault);

} // namespace vornsim
