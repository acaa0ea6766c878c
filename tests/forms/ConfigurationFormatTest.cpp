// The whole of what is read, filed and written back: for every model and every card the records in full,
// spelt out here once more, apart from the program's own tables.

#include "support/ConfigurationRun.h"

#include <QAction>
#include <QApplication>

#include <atomic>
#include <map>

namespace
{

/// A record as it is asked for, answered, filed and written back.
struct Record {
    std::string label;
    std::string query;
    std::string answer; ///< behind "!" and the address
    std::string value;  ///< in the file
    Lines writes;
};
using Records = std::vector<Record>;

/// Behind every value stands more than is filed, as checksum characters do.
constexpr const char *More = "77";

Record Plain(const std::string &label, const std::string &query, const std::string &value,
             const std::string &write)
{
    return {label, query, value + More, value, {write + value}};
}

void Append(Records &records, const Records &more)
{
    records.insert(records.end(), more.begin(), more.end());
}

// Of modules. AA is the address.

Records Module(const std::string &AA)
{
    return {Plain("Configuration Status", "$" + AA + "2", "0806C0", "%" + AA + AA)};
}

Records Alarm(const std::string &AA, const std::string &digit, const std::string &word, const Lines &writes)
{
    Records records = Module(AA);
    records.push_back({"Alarm Status", "@" + AA + "DI", digit + "0100", word, writes});
    records.push_back(Plain("High Alarm", "@" + AA + "RH", "+10.001", "@" + AA + "HI"));
    records.push_back(Plain("Low Alarm", "@" + AA + "RL", "-10.002", "@" + AA + "LO"));
    return records;
}

Records Mapping()
{
    Records records = Alarm("0A", "2", "LATCH", {"@0AEAL"});
    Append(records, {Plain("Linear Mapping", "$0AB", "1", "$0AA"),
                     Plain("Linear Source", "$0A3", "-02.500+03.500", "$0A6"),
                     Plain("Linear Target", "$0A5", "-100.00+200.00", "$0A7")});
    return records;
}

Records Channels()
{
    Records records = Module("0A");
    records.push_back(Plain("Channel Status", "$0A6", "B7", "$0A5"));
    return records;
}

Records Logging()
{
    Records records = Channels();
    records.push_back(Plain("Memory Status", "@0AD", "FF001003C", "@0AC"));
    for (const char *n : {"0", "1", "2", "3", "4", "5", "6", "7"}) {
        records.push_back(Plain(std::string("Ch ") + n + " Alarm Limit", std::string("@0AB") + n,
                                std::string("+2000") + n + "-200FF", std::string("@0AA") + n));
    }
    return records;
}

/// `alarm` is filed as it is read, and written back by `alarms`.
Records Counters(const std::string &AA, const std::string &alarm, const Lines &alarms, const Records &last)
{
    Records records = Module(AA);
    Append(records, {Plain("Input Mode", "$" + AA + "B", "1", "$" + AA + "B"),
                     Plain("Gate Mode", "$" + AA + "A", "2", "$" + AA + "A"),
                     Plain("C0 Maximun Value", "$" + AA + "30", "0000A000", "$" + AA + "30"),
                     Plain("C1 Maximun Value", "$" + AA + "31", "0000A001", "$" + AA + "31"),
                     Plain("C0 Start/Stop", "$" + AA + "50", "1", "$" + AA + "50"),
                     Plain("C1 Start/Stop", "$" + AA + "51", "0", "$" + AA + "51"),
                     Plain("Filter Status", "$" + AA + "4", "1", "$" + AA + "4"),
                     Plain("High Width", "$" + AA + "0H", "00012", "$" + AA + "0H"),
                     Plain("Low Width", "$" + AA + "0L", "00034", "$" + AA + "0L"),
                     Plain("High Trigger", "$" + AA + "1H", "24", "$" + AA + "1H"),
                     Plain("Low Trigger", "$" + AA + "1L", "08", "$" + AA + "1L"),
                     {"Alarm Status", "@" + AA + "DI", alarm + "0000", alarm, alarms},
                     Plain("Low/C0 Limit", "@" + AA + "RP", "00001111", "@" + AA + "PA"),
                     Plain("High/C1 Limit", "@" + AA + "RA", "00002222", "@" + AA + "SA")});
    Append(records, last);
    return records;
}

Records Presets(const std::string &alarm, const Lines &alarms)
{
    return Counters("0A", alarm, alarms,
                    {Plain("C0 Initial Value", "@0AG0", "00000A00", "@0AP0"),
                     Plain("C1 Initial Value", "@0AG1", "00000A01", "@0AP1")});
}

Records Display(const std::string &alarm, const Lines &alarms)
{
    return Counters("0A", alarm, alarms, {Plain("LED Origin", "$0A8", "2", "$0A8")});
}

// Of units.

/// The length of the answer to "$0A2" makes it four slots.
Records Unit(const std::string &types)
{
    return {{"I/O type", "$0AT", types + More, types, {}},
            {"Configuration Status", "$0A2", "06407777", "0640", {"%0A000640"}}};
}

Records InputCard(char slot, const std::string &code, int lastChannel)
{
    const std::string S = std::string("S") + slot, at = "$0A" + S;
    Records records{Plain(S + " " + code + " Configuration", at + "B", "0A40", at + "A"),
                    Plain(S + " " + code + " Channel Status", at + "6", "5B", at + "5")};
    if (code == "3H") {
        for (char j = '0'; j <= '7'; ++j)
            records.push_back(Plain(S + "C" + j + " 3H Configuration", at + "C" + j + "B",
                                    std::string("0") + j + "40", at + "C" + j + "A"));
    }
    const auto each = [&](const auto &add) {
        for (char j = '0'; j <= '0' + lastChannel; ++j) {
            for (const char k : {'L', 'H'})
                add(S + "C" + j + " " + code + " " + k + " ", at + "C" + j, k, j);
        }
    };
    int modes = 0;
    each([&](const std::string &label, const std::string &channel, char k, char) {
        const std::string mode(1, "DML"[modes++ % 3]), alarm = channel + "A" + k;
        const Lines writes = mode == "D" ? Lines{alarm + "ED"} : Lines{alarm + mode, alarm + "EE"};
        records.push_back({label + "Alarm Mode", alarm, mode + More, mode, writes});
    });
    each([&](const std::string &label, const std::string &channel, char k, char j) {
        records.push_back(Plain(label + "Connection", channel + "R" + k + "C", std::string("S2C") + j,
                                channel + "A" + k + "C"));
    });
    each([&](const std::string &label, const std::string &channel, char k, char j) {
        records.push_back(Plain(label + "Limit", channel + "R" + k + "U",
                                (k == 'L' ? "-" : "+") + std::string("01.00") + j, channel + "A" + k + "U"));
    });
    return records;
}

Records OutputCard(char slot)
{
    const std::string S = std::string("S") + slot;
    Records records;
    for (const char j : {'0', '1', '2', '3'})
        records.push_back(Plain(S + "C" + j + " 31 Configuration", "$0A" + S + "C" + j + "B",
                                std::string("3") + j + "14", "$0A" + S + "C" + j + "A"));
    return records;
}

Records InputUnit()
{
    Records records = Unit("2123253H");
    Append(records, InputCard('0', "21", 2));
    Append(records, InputCard('1', "23", 7));
    Append(records, InputCard('2', "25", 6));
    Append(records, InputCard('3', "3H", 7));
    return records;
}

Records MixedUnit()
{
    Records records = Unit("62FF3123");
    Append(records, OutputCard('2'));
    Append(records, InputCard('3', "23", 7));
    return records;
}

// The table of all.

struct Format {
    const char *name;
    const char *key;
    Records records;
};

void PrintTo(const Format &format, std::ostream *out)
{
    *out << format.name;
}

std::vector<Format> Formats()
{
    const Records plain = Module("0A");
    const Lines momentary{"@0AEAM"}, latch{"@0AEAL"}, disable{"@0ADA"};
    return {
        {"7203", "_0003!!0A7203", Alarm("0A", "0", "Disable", disable)},
        {"7203D", "_0003!!0A7203D", Alarm("0A", "1", "MOMENTARY", momentary)},
        {"7206", "_0003!!0A7206", Alarm("0A", "2", "LATCH", latch)},
        {"7206OfAnUnknownMode", "_0003!!0A7206", Alarm("0A", "5", "", {"@0AEA "})},
        {"7206InInitState", "*1003!!0A7206", Alarm("00", "1", "MOMENTARY", {"@00EAM"})},
        {"7209", "_0003!!0A7209", plain},
        {"7212D", "_0003!!0A7212D", Mapping()},
        {"7218", "_0003!!0A7218", Alarm("0A", "0", "Disable", disable)},
        {"7221", "_0003!!0A7221", Channels()},
        {"7224", "_0003!!0A7224", Channels()},
        {"7224M", "_0003!!0A7224M", Logging()},
        {"7231", "_0003!!0A7231", plain},
        {"7252", "_0003!!0A7252", plain},
        {"7256", "_0003!!0A7256", plain},
        {"7258", "_0003!!0A7258", plain},
        {"7272", "_0003!!0A7272", plain},
        {"7282WithoutAlarm", "_0003!!0A7282", Presets("0", {"@0ADI0", "@0ADI1"})},
        {"7282WithTheSecondAlarm", "_0003!!0A7282", Presets("2", {"@0ADI0", "@0AEA1"})},
        {"7282WithBothAlarms", "_0003!!0A7282", Presets("3", {"@0AEA0", "@0AEA1"})},
        {"7282DWithoutAlarm", "_0003!!0A7282D", Display("0", disable)},
        {"7282DOfAnUnknownMode", "_0003!!0A7282D", Display("7", {})},
        {"7282N", "_0003!!0A7282N", Display("2", latch)},
        {"3900WithInputs", "_0003!!0A3900", InputUnit()},
        {"3900WithGaps", "_0003!!0A3900", MixedUnit()},
    };
}

class ConfigurationFormatTest : public ConfigurationTest, public ::testing::WithParamInterface<Format>
{
protected:
    std::string model() const { return vorn::NodeKey(GetParam().key).model(); }
    std::string address() const { return vorn::NodeKey(GetParam().key).busAddress(); }

    std::atomic<bool> answering_ = false;

    /// A module that refuses all until it is `answering_`, and then gives and takes its records.
    void SetUp() override
    {
        Peer();
        std::map<std::string, std::string> answers;
        for (const Record &record : GetParam().records) {
            answers[record.query] = record.answer;
            for (const std::string &line : record.writes)
                answers.emplace(line, "");
        }
        peer_->OnLine([this, answers](const std::string &line, const RawPeer::Writer &write) {
            const auto found = answers.find(line);
            const bool accepted = answering_ && found != answers.end();
            write((accepted ? "!" + address() + found->second : "?" + address()) + "\r");
        });
    }

    void TearDown() override { peer_.reset(); } // it asks for `answering_`

    /// What a walk sends: from the answer to its file dialog to its closing box.
    Lines Walk(Operator &op, QAction *entry, const char *title)
    {
        op.Trigger(entry);
        op.AwaitBox(title);
        peer_->Forget();
        answering_ = true;
        op.AnswerFile(title, model() + ".txt", Path("file.txt"));
        op.AwaitMessage("the closing box");
        answering_ = false;
        return peer_->Lines();
    }
};

std::string NameOf(const ::testing::TestParamInfo<Format> &info)
{
    return info.param.name;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(All, ConfigurationFormatTest, ::testing::ValuesIn(Formats()), NameOf);

TEST_P(ConfigurationFormatTest, IsSavedInFull)
{
    Lines queries;
    std::vector<std::pair<std::string, std::string>> file{{"Module Name", model()}};
    for (const Record &record : GetParam().records) {
        queries.push_back(record.query);
        file.emplace_back(record.label, record.value);
    }
    Operate([&](Operator &op) {
        Show(op, GetParam().key, "5000");
        EXPECT_EQ(Walk(op, main().VORNSaveSet, "Save As ---"), queries);
        op.AnswerBox(SaveDone, 64, SaveDoneTitle);
        EXPECT_EQ(Read(Path("file.txt")), FileOf(file));
        AwaitActions(op);
    });
}

TEST_P(ConfigurationFormatTest, IsLoadedInFull)
{
    Lines lines;
    std::vector<std::pair<std::string, std::string>> file{{"Module Name", model()}};
    for (const Record &record : GetParam().records) {
        if (record.label == "I/O type")
            lines.push_back(record.query);
        for (const std::string &write : record.writes) {
            lines.push_back(write);
            lines.push_back("$" + address() + "2"); // until it is ready again
        }
        file.emplace_back("whatever stands here", record.value);
    }
    Put(Path("file.txt"), FileOf(file));
    Operate([&](Operator &op) {
        Show(op, GetParam().key, "5000");
        EXPECT_EQ(Walk(op, main().VORNLoadSet, "Load As ---"), lines);
        op.AnswerBox(LoadDone, 64, LoadDoneTitle);
        AwaitActions(op);
    });
}
