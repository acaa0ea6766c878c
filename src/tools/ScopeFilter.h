#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace vorn
{

/// What a data scope makes of the bytes that pass on the bus: lines, of which a filter lets through those of
/// chosen addresses.
///
/// A line ends where a piece ends with a carriage return; one that ends inside a piece stays part of the
/// entry.
class ScopeFilter final
{
public:
    /// Addresses that the filter holds at most.
    static constexpr std::size_t Capacity = 21;
    /// Bytes that the buffer holds at most; of more, the newest half of them stays.
    static constexpr std::size_t BufferCapacity = std::size_t{4} * 1024 * 1024;

    /// Writes the chosen addresses over the list, from its first entry on; entries behind them keep what they
    /// hold. Throws 9 (subscript out of range) at the 22nd, with 21 written.
    void Update(std::span<const std::string> addresses);

    /// Takes a piece in and returns what goes to the end of the log, which may be nothing. With the filter
    /// on, as many list entries count as are selected now, whether or not the list was updated since; with
    /// none selected, what has come stays in the buffer.
    std::string Receive(std::string_view piece, bool filter, std::size_t selected);

    /// Received text up to the next carriage return.
    const std::string &LineBuffer() const { return lineBuffer_; }

private:
    bool Passes(std::size_t selected) const;

    std::string lineBuffer_;
    std::array<std::string, Capacity> filterList_; ///< two characters each; empty for an entry never written
};

} // namespace vorn
