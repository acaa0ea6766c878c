// Modules without a wire.

#include "simulator/Module.h"
#include "simulator/BusText.h"
#include "simulator/Models.h"

#include <gtest/gtest.h>

#include <random>

namespace
{

using namespace vornsim;

/// A line that is nearly a command: the right address, mostly characters that commands are made of.
std::string RandomLine(std::mt19937 &random)
{
    constexpr std::string_view letters = "0123456789ABCDEFGHILMNOPRSTU+-.*";
    std::string line(1, "$%#@"[random() % 4]);
    line += "01";
    for (std::size_t i = random() % 12; i > 0; --i)
        line += random() % 50 == 0 ? static_cast<char>(random() & 255) : letters[random() % letters.size()];
    return line;
}

std::string SlotPrefixed(std::string line, std::mt19937 &random)
{
    return line.insert(3, "S" + std::to_string(random() % 8) + (random() % 2 ? "C0" : ""));
}

ModuleDescription Describe(const ModelRow &model)
{
    ModuleDescription description{std::string(model.name), {{"address", "01"}, {"restart", "0"}}};
    int slot = 0;
    for (const ModelRow &card : AllModels()) {
        if (card.IsCard() && slot < model.slots)
            description.cards[slot++] = {std::string(card.name)};
    }
    return description;
}

TEST(Module, NoLineDoesHarm)
{
    std::mt19937 random(1);
    Faults none;
    for (const ModelRow &model : AllModels()) {
        if (model.IsCard())
            continue;
        Module module(Describe(model), 0);
        for (int i = 0; i < 5000; ++i) {
            std::string line = RandomLine(random);
            if (model.slots > 0)
                line = SlotPrefixed(line, random);
            const auto heard = module.Hear(line, 9600, i * 50.0, TimePoint{}, none);
            ASSERT_TRUE(heard) << Escape(line);
            ASSERT_NE(std::string_view("!>?").find(heard->reply.text.front()), std::string_view::npos)
                << Escape(line);
            if (module.Address() != "01") // a record was taken
                module.Set("address", "01", i * 50.0);
        }
    }
}

TEST(Module, IsDescribedInALine)
{
    EXPECT_EQ(Module({"3900E", {{"address", "0A"}, {"checksum", "yes"}}, {{1, {"3923H"}}, {6, {"3951"}}}}, 0)
                  .Describe(),
              "0A  3900E  9600  checksum  slots 1:3923H 6:3951");
    EXPECT_EQ(Module({"7252", {{"address", "05"}, {"init", "yes"}, {"baud", "1200"}}}, 0).Describe(),
              "00  7252  9600  INIT, stored address 05");
}

TEST(Module, ADescriptionThatCannotBeBuiltIsAnError)
{
    EXPECT_THROW(Module({"7290"}, 0), RackError);
    EXPECT_THROW(Module({"7252", {{"colour", "red"}}}, 0), RackError);
    EXPECT_THROW(Module({"7252", {{"baud", "300"}}}, 0), RackError);
    EXPECT_THROW(Module({"7252", {}, {{0, {"3923"}}}}, 0), RackError);
}

} // namespace
