// Bytes of the bus on their way into the logs of the terminal and the scope.

#include "Fuzz.h"

#include "platform/RuntimeError.h"
#include "tools/LogRecord.h"
#include "tools/LogText.h"
#include "tools/ScopeFilter.h"

#include <algorithm>

namespace
{

using namespace vorn;

/// Without a filter the log holds every byte that came, in order, a line feed behind each piece that ended
/// with a carriage return.
void NothingIsLost(fuzz::Input input)
{
    ScopeFilter scope;
    std::string expected;
    std::string log;
    std::string waiting;
    while (!input.AtEnd()) {
        const std::string piece = input.Bytes(1 + input.Number(16));
        waiting += piece;
        if (waiting.ends_with('\r')) {
            expected += waiting + "\r\n";
            waiting.clear();
        }
        log += scope.Receive(piece, false, 0);
        PROMISE(scope.LineBuffer() == waiting);
    }
    PROMISE(log == expected);
}

/// With a filter each line of the log is of a chosen address.
void OnlyChosenAddressesPass(fuzz::Input input)
{
    ScopeFilter scope;
    std::vector<std::string> addresses;
    for (std::size_t i = input.Number(24); i > 0; --i)
        addresses.push_back(input.Bytes(2));
    try {
        scope.Update(addresses);
        PROMISE(addresses.size() <= ScopeFilter::Capacity);
    } catch (const RuntimeError &error) {
        PROMISE(error.number() == RuntimeErrorNumber::SubscriptOutOfRange);
        PROMISE(addresses.size() > ScopeFilter::Capacity);
        addresses.resize(ScopeFilter::Capacity);
    }
    while (!input.AtEnd()) {
        const std::string entry = scope.Receive(input.Bytes(1 + input.Number(16)), true, addresses.size());
        if (entry.empty())
            continue;
        PROMISE(entry.ends_with("\r\r\n"));
        PROMISE(std::ranges::find(addresses, entry.substr(1, 2)) != addresses.end());
    }
}

/// The view shows the log row by row, whatever stands in it, and cuts its front at the end of a row.
void TheViewFollows(const std::string &log)
{
    const std::u16string shown = ShownText(log);
    PROMISE(shown.size() <= 5 * log.size() + 1);
    PROMISE(std::ranges::none_of(shown, [](char16_t c) { return c < u' ' && c != u'\n' && c != u'\t'; }));

    std::size_t rows = 0;
    for (std::size_t at = 0; at < log.size(); ++rows) {
        const std::size_t next = BehindRows(log, at, 1);
        PROMISE(next > at && next <= log.size());
        at = next;
    }
    PROMISE(BehindRows(log, 0, static_cast<int>(rows)) == log.size());

    const std::size_t rooms[] = {0, 1, log.size() / 2, log.size(), log.size() + 1};
    for (const std::size_t room : rooms) {
        const std::size_t cut = OldestRows(log, room);
        PROMISE(cut <= log.size() && cut >= std::min(room, log.size()));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    NothingIsLost({data, size});
    OnlyChosenAddressesPass({data, size});
    const std::string bytes = fuzz::Text(data, size);
    TheViewFollows(bytes);
    for (const int column : {SentColumn, TypedColumn, 0, 81})
        PROMISE(LogRecord(bytes, "12:34:56", column).size() == 80);
    try {
        (void)SentText(bytes, true);
    } catch (const RuntimeError &error) {
        PROMISE(error.number() == RuntimeErrorNumber::Overflow);
    }
    return 0;
}
