// Each console line by line and box by box: its load, a poll, every button and every update, out of the
// initial state and in it, with checksum and without, when all goes well, and when any one of the steps is
// refused, meets silence, is hurried by the operator, or is the last one because he closes the window.

#include "support/ConsoleScript.h"

#include <gtest/gtest.h>

namespace
{

const std::string Success = Box("Configuration is successful!", 64, "Configuration is successful");
const std::string Invalid = Box("Configuration is invalid!", 16, "Configuration is invalid");
const std::string Refused =
    Box("Configuration Baud Rate and Checksum is invalid!", 16, "Configuration is invalid");
const std::string Unread = Box("Read Configuration is invalid!", 16, "Configuration is invalid");
const std::string ChannelSet = Box("Channel Setting is successful!", 64, "Channel Setting is successful");
const std::string SwitchFailed = Box("Setup is invalid, please try again", 0);

/// The frame's steps of a general update: the record goes out and is read back.
Steps RecordSteps(const std::string &record, const std::string &refused = Refused,
                  const std::string &unread = Unread)
{
    return {Sends("%AA" + record).FourTimes(0, {{refused}}), Sends("$BB2").FourTimes(1, {{unread}})};
}

Procedure Update(const std::string &name, std::vector<Move> enters, const Steps &steps,
                 const char *button = "cmdGeneralUpdate")
{
    return {.name = name, .enters = std::move(enters), .press = Presses(button), .steps = steps};
}

Procedure ToAddress5(Procedure update)
{
    update.newAddress = "05";
    return update;
}

Procedure InInit(Procedure update)
{
    update.onlyInit = true;
    return update;
}

/// Record and firmware version at the load of a console that asks for each four times.
const Steps RecordAtLoad{Sends("$AA2").FourTimes()};
const Steps FirmwareAtLoad{Sends("$AAF").FourTimes()};

/// The updates that the frame alone makes, for a type code and a format byte.
std::vector<Procedure> FrameUpdates(const std::string &type, const char *button = "cmdGeneralUpdate")
{
    return {
        Update("update", {}, RecordSteps("0A" + type + "06{00|40}") + Steps{Shows(Success)}, button),
        ToAddress5(Update("new address", {Enters("txtNewAddress", "5")},
                          RecordSteps("05" + type + "06{00|40}") + Steps{Shows(Success)}, button)),
        InInit(Update("baud rate", {Picks("cboBaudRate", 7)},
                      RecordSteps("0A" + type + "0A40") + Steps{Shows(Success)}, button)),
        InInit(Update("checksum", {Presses("chkChecksum")},
                      RecordSteps("0A" + type + "0600") + Steps{Shows(Success)}, button)),
    };
}

std::vector<Procedure> operator+(std::vector<Procedure> front, const std::vector<Procedure> &back)
{
    front.insert(front.end(), back.begin(), back.end());
    return front;
}

// 7254

ConsoleTold Of7254()
{
    const Steps poll{Sends("$AA6")};
    return {
        .model = "7254",
        .interval = 300,
        .replies = {{"$AA2", "!NN4006{00|40}"}, {"$AAF", "!NNA1.0"}, {"$AA6", "!12F300"}, {"%AA*", "!NN"}},
        .load = RecordAtLoad + FirmwareAtLoad + poll,
        .poll = poll,
        .procedures = FrameUpdates("40")};
}

// 7262

ConsoleTold Of7262()
{
    const Steps poll{Sends("$AA6")};
    return {.model = "7262",
            .interval = 500,
            .replies = {{"$AA2", "!NN4006{00|40}"},
                        {"$AAF", "!NNA1.0"},
                        {"$AA6", "!81F300"},
                        {"%AA*", "!NN"},
                        {"#AA00*", ">"}},
            .load = RecordAtLoad + FirmwareAtLoad + poll,
            .poll = poll,
            .procedures =
                FrameUpdates("40") +
                std::vector<Procedure>{{.name = "output on",
                                        .press = Switches("DIOH_1"),
                                        .steps = {Sends("#AA0083").FourTimes(0, {{SwitchFailed}})}},
                                       {.name = "output off",
                                        .press = Switches("DIOH_7"),
                                        .steps = {Sends("#AA0001").FourTimes(0, {{SwitchFailed}})}}}};
}

// 7276

ConsoleTold Of7276()
{
    const Steps poll{Sends("$AA6").OrElse({SwitchFailed})};
    const std::string small = Box("The comm WDT is too small, do you want to use the value?", 1, "Waring");
    const Steps record = RecordSteps("0A4006{00|40}");
    const Steps readBack{Sends("$AAY").OrElse({Invalid}), Shows(Success)};
    Procedure cancelled = Update("small watchdog time, cancelled", {Enters("txtNewWDT", "19")},
                                 record + Steps{Shows(small)}, "Command1");
    cancelled.answer = "Cancel";
    cancelled.pollsBehind = false;
    return {.model = "7276",
            .interval = 300,
            .replies = {{"$AA2", "!NN4006{00|40}"},
                        {"$AAF", "!NNA1.0"},
                        {"$AA6", "!0F0000"},
                        {"%AA*", "!NN"},
                        {"#AA00*", ">"},
                        {"$AAY", "!NN0100"},
                        {"$AAX*", "!NN"}},
            .load = RecordAtLoad + FirmwareAtLoad + Steps{Sends("$AAY")} + poll,
            .poll = poll,
            .procedures =
                FrameUpdates("40", "Command1") +
                std::vector<Procedure>{
                    {.name = "output",
                     .press = Switches("DIOL_4"),
                     .steps = {Sends("#AA001F").FourTimes(0, {{SwitchFailed}})}},
                    Update("watchdog", {Enters("txtNewWDT", "20")},
                           record + Steps{Sends("$AAX0020")} + readBack, "Command1"),
                    Update("no watchdog", {Enters("txtNewWDT", "0")},
                           record + Steps{Sends("$AAX0000")} + readBack, "Command1"),
                    ToAddress5(Update(
                        "address and watchdog", {Enters("txtNewAddress", "5"), Enters("txtNewWDT", "12345")},
                        RecordSteps("054006{00|40}") +
                            Steps{Sends("$BBX12345"), Sends("$BBY").OrElse({Invalid}), Shows(Success)},
                        "Command1")),
                    Update("small watchdog time", {Enters("txtNewWDT", "19")},
                           record + Steps{Shows(small), Sends("$AAX0019")} + readBack, "Command1"),
                    cancelled}};
}

// The input consoles

/// A calibration of the channel on show: the box, the command, and what came of it.
Procedure Calibrates(const char *button, const std::string &prompt, const std::string &title,
                     const std::string &command, const std::string &kind, std::vector<Move> enters = {})
{
    const std::string done = kind + " Calibration is ";
    return {.name = kind,
            .enters = std::move(enters),
            .press = Presses(button),
            .steps = {Shows(Box(prompt, 1, title)),
                      Sends(command).OrElse({Box(done + "invalid!", 16, done + "invalid")}),
                      Shows(Box(done + "successful!", 64, done + "successful"))}};
}

/// The same, cancelled behind a poll whose last reply decides the box.
Procedure Cancelled(Procedure calibration, const std::string &kind, bool success)
{
    const std::string done = kind + " Calibration is ";
    calibration.name += " cancelled";
    calibration.enters.push_back(TicksTimer());
    calibration.answer = "Cancel";
    calibration.steps = {calibration.steps.front(),
                         Shows(success ? Box(done + "successful!", 64, done + "successful")
                                       : Box(done + "invalid!", 16, done + "invalid"))};
    return calibration;
}

Procedure ChannelUpdate(const std::string &name, std::vector<Move> enters, const Steps &steps)
{
    return Update(name, std::move(enters), steps, "cmdChannelUpdate");
}

Procedure ChoosesChannel(int channel)
{
    return {.name = "channel",
            .press = Picks("cboChannel", channel),
            .steps = {Sends("$AA8C" + std::to_string(channel))}};
}

Steps TypesOfChannels(int channels)
{
    Steps steps;
    for (int i = 0; i < channels; ++i)
        steps.push_back(Sends("$AA8C" + std::to_string(i)));
    return steps;
}

/// The walk over the types that ends at the first one without an answer.
Steps WalkOfTypes(int channels)
{
    Steps steps = TypesOfChannels(channels);
    for (std::size_t i = 0; i < steps.size(); ++i)
        steps[i] = steps[i].OrSkip(steps.size() - 1 - i);
    return steps;
}

/// Mask, wiring and readings at once; `more` lines follow in the same poll.
Steps ScanPoll(std::size_t more)
{
    return {Sends("$AA6").OrSkip(2 + more), Sends("$AAB").OrSkip(1 + more),
            Sends("#AA").OrSkipInSilence(more)};
}

/// What the operator types for the watchdog is read back; the module tells what it held if it refused.
Steps WatchdogSteps(const std::string &value, const std::string &address = "AA",
                    const std::vector<std::string> &rest = {})
{
    std::vector<std::string> failed{Invalid};
    failed.insert(failed.end(), rest.begin(), rest.end());
    std::vector<std::string> refused{"$" + address + "Y"};
    refused.insert(refused.end(), failed.begin(), failed.end());
    return {Sends("$" + address + "X" + value).OrElse(refused), Sends("$" + address + "Y").OrElse(failed)};
}

/// What 7216 and 7227 have in common; `type` is the type of all channels and `other` another one.
std::vector<Procedure> ScanProcedures(const char *list, const std::string &mask, int other,
                                      const std::string &otherCode)
{
    const Step sendsMask = Sends("$AA5" + mask).OrElse({Invalid});
    const Step sendsType = Sends("$AA7C0R" + otherCode).OrElse({Invalid});
    return {
        ChoosesChannel(3),
        ChannelUpdate("no change of the channel", {}, {}),
        ChannelUpdate("mask", {Presses("chkChannel")}, {sendsMask, Shows(ChannelSet)}),
        ChannelUpdate("type", {Picks(list, other)}, {sendsType, Shows(ChannelSet)}),
        ChannelUpdate("mask and type", {Presses("chkChannel"), Picks(list, other)},
                      {Sends("$AA5" + mask).OrElse({Invalid, "$AA7C0R" + otherCode, ChannelSet}),
                       Sends("$AA7C0R" + otherCode).OrElse({Invalid, ChannelSet}), Shows(ChannelSet)}),
        ChannelUpdate("type of channel 5", {Picks("cboChannel", 5), Picks(list, other)},
                      {Sends("$AA7C5R" + otherCode).OrElse({Invalid}), Shows(ChannelSet)}),
        Update("no change", {}, {Shows(Success)}),
        ToAddress5(Update("new address", {Enters("txtNewAddress", "5")},
                          RecordSteps("050006{00|40}") + Steps{Shows(Success)})),
        Update("watchdog", {Enters("txtNewWDT", "30")}, WatchdogSteps("0030") + Steps{Shows(Success)}),
        ToAddress5(
            Update("address and watchdog", {Enters("txtNewAddress", "5"), Enters("txtNewWDT", "7")},
                   RecordSteps("050006{00|40}") + WatchdogSteps("0007", "BB") + Steps{Shows(Success)})),
        InInit(
            Update("baud rate", {Picks("cboBaudRate", 7)}, RecordSteps("0A000A40") + Steps{Shows(Success)})),
        InInit(Update("checksum", {Presses("chkChecksum")}, RecordSteps("0A000600") + Steps{Shows(Success)})),
    };
}

// 7216

ConsoleTold Of7216()
{
    const Procedure zero = Calibrates("cmdZeroCalE", "Please apply 80ohm to Channel 0",
                                      "Vorn-7216 Zero Calibration", "$AA1C0", "Zero");
    const Procedure span = Calibrates("cmdSpanCal", "Please apply 140ohm to Channel 0",
                                      "Vorn-7216 Span Calibration", "$AA0C0", "Span");
    std::map<std::string, std::string> replies{
        {"$AAY", "!NN0100"}, {"$AAX*", "!NN"},  {"$AA2", "!NN0006{00|40}"},
        {"$AAF", "!NNA1.0"}, {"$AA6", "!NN3F"}, {"$AAB", "!NN02"},
        {"%AA*", "!NN"},     {"$AA5*", "!NN"},  {"$AA7C*", "!NN"},
        {"$AA0C*", "!NN"},   {"$AA1C*", "!NN"}};
    replies["#AA"] = ">+010.00+011.00+012.00+013.00+014.00+015.00";
    for (int i = 0; i < 6; ++i)
        replies["$AA8C" + std::to_string(i)] = "!NNC" + std::to_string(i) + "R20";
    const Steps poll = ScanPoll(0);
    return {.model = "7216",
            .interval = 100,
            .replies = replies,
            .load = Steps{Sends("$AAY"), Sends("$AA2"), Sends("$AAF")} + poll + WalkOfTypes(6) +
                    Steps{Sends("$AA8C0")},
            .poll = poll,
            .procedures = ScanProcedures("cboType", "3E", 10, "2A") +
                          std::vector<Procedure>{Update("data format", {Picks("CmbDataFormat", 1)},
                                                        RecordSteps("0A0006{03|43}") + Steps{Shows(Success)}),
                                                 zero, span, Cancelled(zero, "Zero", false),
                                                 Cancelled(span, "Span", false),
                                                 Calibrates("cmdZeroCalE", "Please apply 850ohm to Channel 4",
                                                            "Vorn-7216 Zero Calibration", "$AA1C4", "Zero",
                                                            {Picks("cboChannel", 4), Picks("cboType", 10)})},
            .pollShowsRefusal = true};
}

// 7227

ConsoleTold Of7227()
{
    const Procedure zero = Calibrates("cmdZero", "Please apply 0.00mV to Channel 0",
                                      "Vorn-7227 Zero Calibration", "$AA1C0", "Zero");
    const Procedure span = Calibrates("cmdSpan", "Please apply +78.125mV to Channel 0",
                                      "Vorn-7227 Span Calibration", "$AA0C0", "Span");
    const Procedure negative = Calibrates("cmdNSpan", "Please apply -78.125mV to Channel 0",
                                          "Vorn-7227 Span Calibration", "$AANC0", "Negative Gain");
    std::map<std::string, std::string> replies{
        {"$AAY", "!NN0100"}, {"$AAX*", "!NN"},    {"$AA2", "!NN0006{00|40}"},
        {"$AAF", "!NNA1.0"}, {"$AA6", "!NNFF"},   {"$AAB", "!NN02"},
        {"%AA*", "!NN"},     {"$AA5*", "!NN"},    {"$AA7C*", "!NN"},
        {"$AA0C*", "!NN"},   {"$AA1C*", "!NN"},   {"$AANC*", "!NN"},
        {"$AA9*", "!NN"},    {"$AA3", ">+0025.0"}};
    replies["#AA"] = ">+010.00+011.00+012.00+013.00+014.00+015.00+016.00+017.00";
    for (int i = 0; i < 8; ++i)
        replies["$AA8C" + std::to_string(i)] = "!NNC" + std::to_string(i) + "R0F";
    const Steps poll = ScanPoll(1) + Steps{Sends("$AA3")};
    return {
        .model = "7227",
        .interval = 100,
        .replies = replies,
        .load = Steps{Sends("$AAY"), Sends("$AA2"), Sends("$AA3"), Sends("$AAF")} + poll + WalkOfTypes(8) +
                Steps{Sends("$AA8C0")},
        .poll = poll,
        .procedures =
            ScanProcedures("cboRange", "FE", 5, "08") +
            std::vector<Procedure>{
                Update("offset", {Enters("txtNewCJC", "-1.8")},
                       {Sends("$AA9-00C8").OrElse({Invalid}), Shows(Success)}),
                Update("offset upwards", {Enters("txtNewCJC", "1.8")},
                       {Sends("$AA9+00C8").OrElse({Invalid}), Shows(Success)}),
                ToAddress5(Update(
                    "address, watchdog and offset",
                    {Enters("txtNewAddress", "5"), Enters("txtNewWDT", "20"), Enters("txtNewCJC", "+0.09")},
                    RecordSteps("050006{00|40}") + WatchdogSteps("0020", "BB", {"$BB9+000A"}) +
                        Steps{Sends("$BB9+000A").OrElse({Invalid}), Shows(Success)})),
                zero, span, negative, Cancelled(zero, "Zero", false), Cancelled(span, "Span", false),
                Cancelled(negative, "Negative Gain", false),
                Calibrates("cmdNSpan", "Please apply -10V to Channel 7", "Vorn-7227 Span Calibration",
                           "$AANC7", "Negative Gain", {Picks("cboChannel", 7), Picks("cboRange", 5)})},
        .pollShowsRefusal = true};
}

/// Each channel's reading, with the mask behind each.
Steps ChannelPoll()
{
    Steps steps;
    for (int i = 0; i < 8; ++i)
        steps = steps + Steps{Sends("#AA" + std::to_string(i)), Sends("$AA6")};
    return steps;
}

/// The channel on show, then the types of all.
const Steps ChannelLoad = Steps{Sends("$AA8C0")} + TypesOfChannels(8);

std::map<std::string, std::string> ChannelReplies(const std::string &type)
{
    std::map<std::string, std::string> replies{{"$AAF", "!NNA1.0"}, {"$AA6", "!NNFF"},   {"%AA*", "!NN"},
                                               {"$AA5*", "!NN"},    {"$AA7C*", "!NN"},   {"$AA0C*", "!NN"},
                                               {"$AA1C*", "!NN"},   {"#AA*", ">+01.234"}};
    for (int i = 0; i < 8; ++i)
        replies["$AA8C" + std::to_string(i)] = "!NNC" + std::to_string(i) + "R" + type;
    return replies;
}

/// A calibration of a channel that is off: nothing is asked, nothing sent.
Procedure RefusesDisabled(const char *button, const std::string &title)
{
    return {.name = title + " of a disabled channel",
            .press = Presses(button),
            .steps = {Shows(Box("Please enable the channel first!", 0, title))},
            .replies = {{"$AA6", "!NNFE"}}};
}

// 7221P

ConsoleTold Of7221P()
{
    const Procedure zero = Calibrates("cmdZero", "Please apply 0.00V to Channel 0",
                                      "Vorn-7221+ Zero Calibration", "$AA1C0", "Zero");
    const Procedure span = Calibrates("cmdSpan", "Please apply 10V to Channel 0",
                                      "Vorn-7221+ Span Calibration", "$AA0C0", "Span");
    auto replies = ChannelReplies("08");
    replies["$AA2"] = "!NN0006{00|40}";
    const Steps poll = ChannelPoll();
    auto updates = FrameUpdates("ff");
    updates.front() = Update("no change", {}, {Shows(Success)});
    return {.model = "7221P",
            .interval = 100,
            .replies = replies,
            .load = RecordAtLoad + FirmwareAtLoad + poll + ChannelLoad,
            .poll = poll,
            .procedures =
                updates +
                std::vector<Procedure>{
                    ChoosesChannel(6),
                    ChannelUpdate("type", {Picks("cboRange", 2)},
                                  {Sends("$AA7C0R0A").OrElse({Invalid}), Shows(ChannelSet)}),
                    ChannelUpdate("mask", {Presses("chkEnable_1")},
                                  {Sends("$AA5FE").OrElse({Invalid}), Shows(ChannelSet)}),
                    ChannelUpdate("type and mask of channel 6",
                                  {Picks("cboChannel", 6), Picks("cboRange", 6), Presses("chkEnable_1")},
                                  {Sends("$AA7C6R07").OrElse({Invalid, "$AA5BF"}),
                                   Sends("$AA5BF").OrElse({Invalid}), Shows(ChannelSet)}),
                    zero, span, Cancelled(zero, "Zero", true), Cancelled(span, "Span", true),
                    Calibrates("cmdSpan", "Please apply 20mA to Channel 3", "Vorn-7221+ Span Calibration",
                               "$AA0C3", "Span", {Picks("cboChannel", 3), Picks("cboRange", 6)}),
                    RefusesDisabled("cmdZero", "Vorn-7221+ Zero Calibration"),
                    RefusesDisabled("cmdSpan", "Vorn-7221+ Span Calibration")}};
}

// 7224P

ConsoleTold Of7224P()
{
    const Procedure zero = Calibrates("cmdZero", "Please apply 0.00mV to Channel 0",
                                      "Vorn-7224+ Zero Calibration", "$AA1C0", "Zero");
    const Procedure span = Calibrates("cmdSpan", "Please apply 50mV to Channel 0",
                                      "Vorn-7224+ Span Calibration", "$AA0C0", "Span");
    const std::string noMask = Box("Configuration channel status invalid!", 16, "Configuration is invalid");
    const std::string notice = Box("Please enable channel first!", 0, "Notice");
    const std::string noWatchdog = Box("Configuration of WDT is invalid!", 16, "Configuration is invalid");
    const std::string noOffset = Box("Configuration of CJC is invalid!", 16, "Configuration is invalid");
    const auto record = [](const std::string &bytes) {
        return RecordSteps(bytes, Invalid,
                           Box("Read Configuration Status Failed!", 16, "Configuration is invalid"));
    };
    auto replies = ChannelReplies("0F");
    replies.insert({{"$AA2", "!NNFF06{00|40}"},
                    {"$AAY", "!NN0100"},
                    {"$AAX*", "!NN"},
                    {"$AAB", "!NN02"},
                    {"$AA3", ">+0025.0"},
                    {"$AA9*", "!NN"}});
    const Steps poll = ChannelPoll() + Steps{Sends("$AAB"), Sends("$AA3"), Sends("$AAY")};
    return {
        .model = "7224P",
        .interval = 300,
        .replies = replies,
        .load =
            Steps{Sends("$AAY")} + RecordAtLoad + Steps{Sends("$AA3")} + FirmwareAtLoad + poll + ChannelLoad,
        .poll = poll,
        .procedures = {
            ChoosesChannel(2),
            ChannelUpdate("type", {Picks("cboRange", 2)},
                          {Sends("$AA7C0R0E").OrElse({Invalid}), Shows(ChannelSet)}),
            ChannelUpdate("mask", {Presses("chkEnable_1")},
                          {Sends("$AA5FE").OrElse({noMask}), Shows(ChannelSet)}),
            ChannelUpdate("type and off", {Picks("cboRange", 2), Presses("chkEnable_1")},
                          {Sends("$AA5FE").OrElse({noMask, "$AA7C0R0E"}), Shows(notice)}),
            ChannelUpdate("type and on",
                          {Picks("cboRange", 2), Presses("chkEnable_1"), Presses("chkEnable_0")},
                          {Sends("$AA5FF").OrElse({noMask, "$AA7C0R0E"}),
                           Sends("$AA7C0R0E").OrElse({Invalid}), Shows(ChannelSet)}),
            Update("update", {}, record("0AFF06{00|40}") + Steps{Shows(Success)}),
            ToAddress5(Update("new address", {Enters("txtNewAddress", "5")},
                              record("05FF06{00|40}") + Steps{Shows(Success)})),
            Update("type of all", {Picks("cboAllChannelRange", 3)},
                   record("0A0e06{00|40}") + Steps{Shows(Success)}),
            Update("format and integration", {Picks("CmbDataFormat", 2), Picks("cboIntetime", 1)},
                   record("0AFF06{82|C2}") + Steps{Shows(Success)}),
            Update("watchdog", {Enters("txtNewWDT", "30")},
                   record("0AFF06{00|40}") + Steps{Sends("$AAX0030").OrElse({noWatchdog}), Shows(Success)}),
            Update("offset", {Enters("txtNewCJC", "-1.8")},
                   record("0AFF06{00|40}") + Steps{Sends("$AA9-00C8").OrElse({noOffset}), Shows(Success)}),
            ToAddress5(Update(
                "address, watchdog and offset",
                {Enters("txtNewAddress", "5"), Enters("txtNewWDT", "30"), Enters("txtNewCJC", "1.8")},
                record("05FF06{00|40}") + Steps{Sends("$BBX0030").OrElse({noWatchdog, "$BB9+00C8"}),
                                                Sends("$BB9+00C8").OrElse({noOffset}), Shows(Success)})),
            InInit(
                Update("baud rate", {Picks("cboBaudRate", 7)}, record("0AFF0A40") + Steps{Shows(Success)})),
            InInit(Update("checksum", {Presses("chkChecksum")}, record("0AFF0600") + Steps{Shows(Success)})),
            zero,
            span,
            Cancelled(zero, "Zero", true),
            Cancelled(span, "Span", true),
            RefusesDisabled("cmdZero", "Vorn-7224+ Zero Calibration"),
            RefusesDisabled("cmdSpan", "Vorn-7224+ Span Calibration")}};
}

// 7234 and its calibration

std::map<std::string, std::string> OutputReplies()
{
    std::map<std::string, std::string> replies{
        {"$AA2", "!NN0006{00|40}"}, {"$AAF", "!NNA1.0"}, {"%AA*", "!NN"},    {"$AAI", "!NN5"},
        {"$AA7C*", "!NN"},          {"#AAS*", "!NN"},    {"#AAE*", "!NN"},   {"#AAC*", "!NN"},
        {"$AAAC*", "!NN"},          {"$AAG", "!NN"},     {"$AAN*", "!NN05"}, {"$AAO*", "!NNFB"},
        {"$AAP*", "!NN"},           {"$AAQ*", "!NN"},    {"$AA3C*", "!NN"},  {"$AA0C*", "!NN"},
        {"$AA1C*", "!NN"}};
    for (int i = 0; i < 4; ++i) {
        const std::string channel = "C" + std::to_string(i);
        replies["$AA6" + channel] = "!NN+0" + std::to_string(i) + ".000";
        replies["$AAB" + channel] = "!NN" + channel + "1";
        replies["$AA8" + channel] = "!NN" + channel + (i == 3 ? "32" : "30");
        replies["$AAD" + channel] = "!NN+01.000";
        replies["$AAE" + channel] = "!NN+02.000";
    }
    return replies;
}

const Steps OutputPoll{Sends("$AAI"), Sends("$AA6C0"), Sends("$AA6C1"), Sends("$AA6C2"), Sends("$AA6C3")};

/// All that is read of the channels; a startup value that isn't told has its box.
Steps OutputSettings()
{
    Steps steps;
    for (const char *channel : {"C0", "C1", "C2", "C3"})
        steps = steps + Steps{Sends(std::string("$AA6") + channel), Sends(std::string("$AAB") + channel)};
    for (const char *channel : {"C0", "C1", "C2", "C3"})
        steps.push_back(Sends(std::string("$AA8") + channel));
    std::vector<std::string> rest{"$AAI"};
    Steps values;
    for (int i = 3; i >= 0; --i) {
        const std::string channel = "C" + std::to_string(i);
        std::vector<std::string> behind{Box("read startup value error", 0), "$AAE" + channel};
        behind.insert(behind.end(), rest.begin(), rest.end());
        values.insert(values.begin(), {Sends("$AAD" + channel).OrElse(behind), Sends("$AAE" + channel)});
        rest.insert(rest.begin(), {"$AAD" + channel, "$AAE" + channel});
    }
    return steps + values + Steps{Sends("$AAI")};
}

std::vector<std::string> TextsOf(const Steps &steps)
{
    std::vector<std::string> texts;
    for (const Step &step : steps)
        texts.push_back(step.text);
    return texts;
}

Steps OutputLoad()
{
    std::vector<std::string> behind{Box("Initialize Firmware Error", 0)};
    for (const std::string &text : TextsOf(OutputSettings()))
        behind.push_back(text);
    std::vector<std::string> noRecord{Box("Initialize Checksum and Baud Rate Error", 0), "$AAF"};
    for (const std::string &text : TextsOf(OutputSettings()))
        noRecord.push_back(text);
    return Steps{Sends("$AA2").FourTimes(0, noRecord), Sends("$AAF").FourTimes(0, behind)} + OutputSettings();
}

/// What one channel is set to, each step with its box; the first failure is the last step.
Steps SetsChannel(int channel, const std::string &type, const std::string &startup, const std::string &stop,
                  const std::string &flag)
{
    const std::string number = std::to_string(channel);
    const std::string shown = std::to_string(channel + 1);
    const std::string badValue = Box("The data is invalid on channel " + shown, 48);
    return {Sends("$AA7C" + number + "R" + type)
                .OrElse({Box("Setup out put type failed on channel " + shown, 16)}),
            Sends("#AASC" + number + startup).OrElse({badValue}),
            Sends("#AAEC" + number + stop).OrElse({badValue}),
            Sends("$AAAC" + number + flag).OrElse({badValue})};
}

Procedure Trims(const char *button, const std::string &point, const std::string &command,
                const std::string &read)
{
    return {.name = point + " calibration",
            .enters = {Picks("ChannelCal", 1)},
            .press = Presses(button),
            .steps = {Shows(Box("Apply " + point +
                                    " Calibration for Channel 2. Please connect METER to "
                                    "Channel 2, and check if output value equal " +
                                    point + ".",
                                1)),
                      Sends("$AAG").OrEnd(), Sends("#AAC1" + command).OrEnd(), Sends(read).OrEnd(),
                      Shows("<Form7234Calibration>")}};
}

Procedure Clears(const char *button, const std::string &point, const std::string &command)
{
    const std::string text = "Clear " + point + " for Channel3";
    return {
        .name = "clear " + point,
        .enters = {Picks("ChannelCal", 2)},
        .press = Presses(button),
        .steps = {Sends(command).OrElse({Box(text + " Failed", 0)}), Shows(Box(text + " Successfully", 0))}};
}

Procedure NoCurrent(const char *button)
{
    return {.name = std::string(button) + " of a voltage",
            .enters = {Picks("ChannelCal", 3)},
            .press = Presses(button),
            .steps = {Shows(Box("Please set the Channel 4  0~20mA first", 0))}};
}

ConsoleTold Of7234()
{
    const std::string prompt = Box("The output data is: 5", 1);
    const std::vector<Move> five{Picks("ChannelOut", 1), Enters("Directdata", "5")};
    Procedure cancelled{.name = "output, cancelled",
                        .enters = five,
                        .press = Presses("Command2"),
                        .steps = {Shows(prompt), Sends("$AA6C1")},
                        .answer = "Cancel"};
    Procedure cancelledTrim = Trims("Command1", "4mA", "+04.000", "$AANC1");
    cancelledTrim.name += ", cancelled";
    cancelledTrim.answer = "Cancel";
    cancelledTrim.steps.resize(1);
    const auto updates = FrameUpdates("00");
    return {.model = "7234",
            .interval = 200,
            .replies = OutputReplies(),
            .load = OutputLoad(),
            .poll = OutputPoll,
            .procedures =
                updates +
                std::vector<Procedure>{
                    Update("slew rate", {Picks("CmbSlewRate", 3)},
                           RecordSteps("0A0006{0C|4C}") + Steps{Shows(Success)}),
                    {.name = "output",
                     .enters = five,
                     .press = Presses("Command2"),
                     .steps = {Shows(prompt),
                               Sends("#AAC1+05.000").OrElse({Box("Send data failed", 0), "$AA6C1"}),
                               Shows(Box("Send data successfully", 0)), Sends("$AA6C1")}},
                    cancelled,
                    {.name = "output beyond its limits",
                     .enters = {Enters("Directdata", "20.001")},
                     .press = Presses("Command2"),
                     .steps = {Shows(Box("The data is invalid", 48))}},
                    {.name = "output that is no number",
                     .enters = {Enters("Directdata", "1.2.3")},
                     .press = Presses("Command2"),
                     .steps = {Shows(Box("The data format is invalid", 48))}},
                    {.name = "read", .press = Presses("Command6"), .steps = OutputSettings()},
                    {.name = "set",
                     .enters = {Picks("cboRange_1", 2), Enters("StartupValue_1", "-5.5"),
                                Enters("StopValue_2", "20"), Presses("Check1_3")},
                     .press = Presses("Command7"),
                     .steps = SetsChannel(0, "30", "+01.000", "+02.000", "1") +
                              SetsChannel(1, "32", "-05.500", "+02.000", "1") +
                              SetsChannel(2, "30", "+01.000", "+20.000", "1") +
                              SetsChannel(3, "32", "+01.000", "+02.000", "0") +
                              Steps{Shows(Box("Setup out put type successfully", 0))}},
                    {.name = "set beyond the limits",
                     .enters = {Enters("StartupValue_1", "25")},
                     .press = Presses("Command7"),
                     .steps =
                         SetsChannel(0, "30", "+01.000", "+02.000", "1") +
                         Steps{Sends("$AA7C1R30").OrElse({Box("Setup out put type failed on channel 2", 16)}),
                               Shows(Box("The data is invalid on channel 2", 48))}},
                    {.name = "set no number",
                     .enters = {Enters("StopValue_0", "1.2.3")},
                     .press = Presses("Command7"),
                     .steps = {Sends("$AA7C0R30").OrElse({Box("Setup out put type failed on channel 1", 16)}),
                               Shows(Box("The data format is invalid on channel 1", 48))}},
                    Trims("Command1", "4mA", "+04.000", "$AANC1"),
                    Trims("Command3", "20mA", "+20.000", "$AAOC1"),
                    cancelledTrim,
                    Clears("Command4", "4mA", "$AAPC2"),
                    Clears("Command5", "20mA", "$AAQC2"),
                    NoCurrent("Command1"),
                    NoCurrent("Command3"),
                    NoCurrent("Command4"),
                    NoCurrent("Command5")}};
}

/// The window above 7234 in which an output is trimmed.
ConsoleTold OfTrim(const std::string &point, const char *opens, const std::string &store)
{
    const std::string wrong = Box("Calibration Error", 0);
    const std::string stored = "Apply " + point + " Calibration for Channel 1 ";
    const auto trim = [&](const char *button, const std::string &byte) {
        return Procedure{
            .name = button, .press = Presses(button), .steps = {Sends("$AA3C0" + byte).OrElse({wrong})}};
    };
    return {.model = "7234",
            .interval = 400,
            .replies = OutputReplies(),
            .load = {},
            .poll = {Sends("$AA6C0")},
            .procedures = {trim("Command2", "0A"),
                           trim("Command3", "01"),
                           trim("Command4", "81"),
                           trim("Command5", "8A"),
                           {.name = "store",
                            .press = Presses("Command1"),
                            .steps = {Sends(store).OrElse({Box(stored + "Failed", 0)}),
                                      Shows(Box(stored + "Successfully", 0))}}},
            .trimButton = opens};
}

struct Console {
    const char *name;
    ConsoleTold (*told)();
};

class ConsoleMatrixTest : public ::testing::TestWithParam<std::tuple<Console, Speech>>
{
};

TEST_P(ConsoleMatrixTest, SaysAndShowsWhatIsToldAtEveryStep)
{
    const auto &[console, speech] = GetParam();
    ConsoleScript(console.told(), speech).RunAll();
}

std::string NameOf(const ::testing::TestParamInfo<std::tuple<Console, Speech>> &test)
{
    constexpr const char *Speeches[] = {"Plain", "Checksum", "Init"};
    return std::string(std::get<0>(test.param).name) +
           Speeches[static_cast<std::size_t>(std::get<1>(test.param))];
}

ConsoleTold OfTrim4mA()
{
    return OfTrim("4mA", "Command1", "$AA0C0");
}

ConsoleTold OfTrim20mA()
{
    return OfTrim("20mA", "Command3", "$AA1C0");
}

INSTANTIATE_TEST_SUITE_P(
    Each, ConsoleMatrixTest,
    ::testing::Combine(::testing::Values(Console{"7254", Of7254}, Console{"7262", Of7262},
                                         Console{"7276", Of7276}, Console{"7216", Of7216},
                                         Console{"7227", Of7227}, Console{"7221P", Of7221P},
                                         Console{"7224P", Of7224P}, Console{"7234", Of7234},
                                         Console{"Trim4mA", OfTrim4mA}, Console{"Trim20mA", OfTrim20mA}),
                       ::testing::Values(Speech::Plain, Speech::Checksum, Speech::Init)),
    NameOf);

} // namespace
