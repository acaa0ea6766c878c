#include "platform/RuntimeError.h"

#include "pages/CounterSettings.h"
#include "protocol/CommandFrame.h"
#include "protocol/Conversions.h"
#include "protocol/Number.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace
{

using namespace vorn;

struct RaiseCase {
    const char *what;
    std::function<void()> raise;
    int number;
};

TEST(RuntimeError, HasTheNumberOfWhatWentWrong)
{
    const std::vector<RaiseCase> cases{
        {"a text that is no number", [] { (void)CInt("12x"); }, 13},
        {"no text at all", [] { (void)CDbl(""); }, 13},
        {"a number beyond 16 bits", [] { (void)CInt("32768"); }, 6},
        {"a number beyond 32 bits", [] { (void)CLng("-2147483649"); }, 6},
        {"a count that is no number", [] { (void)DecToHex8("ten"); }, 13},
        {"a reply that is no hexadecimal number", [] { (void)Hex8ToDec("0000000G"); }, 13},
        {"a sum of characters beyond 16 bits", [] { (void)Checksum(std::string(200, '\xFF')); }, 6},
        {"an option that the page doesn't have", [] { (void)DisplaySourceOf("3"); }, 340},
    };
    for (const RaiseCase &c : cases) {
        try {
            c.raise();
            ADD_FAILURE() << c.what << " passed";
        } catch (const RuntimeError &error) {
            EXPECT_EQ(error.number(), c.number) << c.what;
        }
    }
}

TEST(RuntimeError, CarriesItsNumberThroughAGeneralHandler)
{
    try {
        throw RuntimeError(RuntimeErrorNumber::InvalidPort);
    } catch (const std::exception &error) {
        const auto *known = dynamic_cast<const RuntimeError *>(&error);
        ASSERT_NE(known, nullptr);
        EXPECT_EQ(known->number(), 8002);
        EXPECT_NE(std::string(error.what()), "");
    }
}

} // namespace
