#include "simulator/Pattern.h"

#include <gtest/gtest.h>

namespace
{

using vornsim::MatchCommand;

struct Case {
    const char *pattern;
    const char *command;
    bool matches;
    int channel = vornsim::NoChannel;
    const char *data = "";
    char side = '\0';
};

TEST(Pattern, PlacesTakeWhatTheyKnow)
{
    const Case cases[] = {
        {"$2", "$2", true},
        {"$2", "$22", false},
        {"$2", "$", false},
        {"$2", "#2", false},
        {"#c", "#7", true, 7},
        {"#c", "#8", false}, // one channel too many
        {"#c", "#A", false},
        {"$5xx", "$5AF", true, -1, "AF"},
        {"$5xx", "$5aF", false},
        {"$5xx", "$5A", false},
        {"$5cb", "$511", true, 1, "1"},
        {"$5cb", "$512", false},
        {"$8t", "$82", true, -1, "2"},
        {"$8t", "$83", false},
        {"$9sxxxx", "$9-0557", true, -1, "-0557"},
        {"$9sxxxx", "$900557", false},
        {"$CcAhEe", "$C3ALED", true, 3, "D", 'L'},
        {"$CcAhEe", "$C3AXED", false},
        {"$CcAhm", "$C0AHM", true, 0, "M", 'H'},
        {"$CcAhm", "$C0AHX", false},
        {"@HI~", "@HI+1", true, -1, "+1"},
        {"@HI~", "@HI", false},
        {"$0Hddddd", "$0H12345", true, -1, "12345"},
        {"$0Hddddd", "$0H1234A", false},
        {"#", "#", true},
    };
    for (const Case &c : cases) {
        const auto match = MatchCommand(c.pattern, c.command, 8);
        ASSERT_EQ(match.has_value(), c.matches) << c.pattern << " " << c.command;
        if (!match)
            continue;
        EXPECT_EQ(match->channel, c.channel) << c.command;
        EXPECT_EQ(match->data, c.data) << c.command;
        EXPECT_EQ(match->side, c.side) << c.command;
    }
}

} // namespace
