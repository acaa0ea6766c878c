#include "tools/ScopeFilter.h"

#include "platform/RuntimeError.h"
#include "protocol/Text.h"

#include <algorithm>
#include <utility>

namespace vorn
{

void ScopeFilter::Update(std::span<const std::string> addresses)
{
    const std::size_t fitting = std::min(addresses.size(), Capacity);
    std::copy_n(addresses.begin(), fitting, filterList_.begin());
    if (addresses.size() > Capacity)
        throw RuntimeError(RuntimeErrorNumber::SubscriptOutOfRange);
}

std::string ScopeFilter::Receive(std::string_view piece, bool filter, std::size_t selected)
{
    lineBuffer_ += piece;
    if (lineBuffer_.size() > BufferCapacity)
        lineBuffer_.erase(0, lineBuffer_.size() - BufferCapacity / 2);
    if (!lineBuffer_.ends_with('\r') || (filter && selected == 0))
        return {};
    const bool shown = !filter || Passes(selected);
    const std::string line = std::exchange(lineBuffer_, {});
    return shown ? line + "\r\n" : std::string{};
}

/// Whether the address field of the line, its characters 2 and 3, is one of the first `selected` entries.
bool ScopeFilter::Passes(std::size_t selected) const
{
    const std::string address = Mid(lineBuffer_, 2, 2);
    const std::span<const std::string> entries(filterList_.data(), std::min(selected, Capacity));
    return !address.empty() && std::ranges::find(entries, address) != entries.end();
}

} // namespace vorn
