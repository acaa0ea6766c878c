#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using namespace vorn;

struct NumberCase {
    int number, expected;
};

TEST(RuntimeError, HasTheNumbersThatHandlersTellApart)
{
    constexpr NumberCase Cases[] = {
        {RuntimeErrorNumber::Overflow, 6},
        {RuntimeErrorNumber::OutOfMemory, 7},
        {RuntimeErrorNumber::SubscriptOutOfRange, 9},
        {RuntimeErrorNumber::TypeMismatch, 13},
        {RuntimeErrorNumber::FileNotFound, 53},
        {RuntimeErrorNumber::PathFileAccess, 75},
        {RuntimeErrorNumber::ObjectNotSet, 91},
        {RuntimeErrorNumber::InvalidControlIndex, 340},
        {RuntimeErrorNumber::InvalidProperty, 380},
        {RuntimeErrorNumber::InvalidPort, 8002},
        {RuntimeErrorNumber::PortAlreadyOpen, 8005},
        {RuntimeErrorNumber::DialogCancelled, 32755},
    };
    for (const NumberCase &c : Cases)
        EXPECT_EQ(c.number, c.expected);
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
