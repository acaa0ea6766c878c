// Workbooks with records, read back by the program's own reader and by one that knows nothing of it, also
// when the program that wrote them was killed.

#include "logger/RecordWorkbook.h"
#include "logger/CompoundFile.h"
#include "logger/RecordSheet.h"
#include "logger/SheetRecords.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <thread>

using namespace vorn;

namespace
{

/// A record that tells its number in all of its cells.
LoggerRecord Record(RecordKind kind, int number)
{
    const std::string sign = number % 3 == 0 ? "-" : "+";
    const std::uint32_t timeStamp =
        kind == RecordKind::Event ? 0xF0000000U + static_cast<unsigned>(number) : 0;
    return {number, number % 16, sign + std::to_string(number % 1000) + ".0065", timeStamp};
}

std::string SheetLines(RecordKind kind, int rows, int first = 0)
{
    const auto i = static_cast<std::size_t>(kind);
    const std::string name = SheetNames[i];
    std::string lines;
    const auto add = [&](int row, int column, const char *type, const std::string &value) {
        lines += name + "\t" + std::to_string(row) + "\t" + std::to_string(column) + "\t" + type + "\t" +
                 value + "\n";
    };
    const std::vector<std::string> titles = OwnSheetTitles()[i];
    for (int column = 0; column < static_cast<int>(titles.size()); ++column)
        add(0, column, "text", titles[static_cast<std::size_t>(column)]);
    for (int row = 1; row <= rows; ++row) {
        const LoggerRecord record = Record(kind, first + row - 1);
        add(row, 0, "number", std::to_string(record.number));
        add(row, 1, "number", std::to_string(record.channel));
        add(row, 2, "text", record.value);
        if (kind == RecordKind::Event)
            add(row, 3, "number", std::to_string(record.timeStamp));
    }
    return lines;
}

class Workbooks : public testing::Test
{
protected:
    Workbooks()
    {
        std::string name = (std::filesystem::temp_directory_path() / "vorn-book-XXXXXX").string();
        folder_ = ::mkdtemp(name.data());
        path_ = folder_ / "Memory.xls";
    }
    ~Workbooks() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    /// All cells as another reader finds them.
    std::string Cells() const
    {
        const std::string command = "/usr/bin/python3 " SHEET_CELLS " " + path_.string() + " 2>&1";
        std::FILE *pipe = ::popen(command.c_str(), "r");
        std::string cells;
        char piece[4096];
        for (std::size_t got = 0; (got = std::fread(piece, 1, sizeof piece, pipe)) > 0;)
            cells.append(piece, got);
        EXPECT_EQ(::pclose(pipe), 0) << cells.substr(0, 2000);
        return cells;
    }
    /// The cells are those of so many records, for both readers.
    void ExpectRecords(int standard, int event) const
    {
        // Not by EXPECT_EQ: a difference would be told in megabytes.
        EXPECT_TRUE(Cells() ==
                    SheetLines(RecordKind::Standard, standard) + SheetLines(RecordKind::Event, event))
            << standard << " and " << event << " records";
        ExpectSheet(RecordKind::Standard, standard);
        ExpectSheet(RecordKind::Event, event);
    }
    void ExpectSheet(RecordKind kind, int rows) const
    {
        const RecordSheet sheet = ReadRecordSheet(path_, kind);
        EXPECT_EQ(sheet.Titles(), OwnSheetTitles()[static_cast<std::size_t>(kind)]);
        ASSERT_EQ(sheet.Rows(), static_cast<std::size_t>(rows));
        for (int row = 0; row < rows; ++row) {
            const auto r = static_cast<std::size_t>(row);
            const LoggerRecord record = Record(kind, row);
            ASSERT_EQ(std::get<double>(sheet.Cell(r, 0)), record.number);
            ASSERT_EQ(std::get<double>(sheet.Cell(r, 1)), record.channel);
            ASSERT_EQ(std::get<std::string>(sheet.Cell(r, 2)), record.value);
            if (kind == RecordKind::Event) {
                ASSERT_EQ(std::get<double>(sheet.Cell(r, 3)), record.timeStamp);
            }
        }
    }
    static void Fill(RecordWorkbook &book, RecordKind kind, int rows)
    {
        book.Begin(kind, rows);
        for (int i = 0; i < rows; ++i)
            book.Add(Record(kind, i));
    }
    void Damage(std::size_t at, char byte) const
    {
        std::fstream file(path_, std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(static_cast<std::streamoff>(at));
        file.put(byte);
    }

    std::filesystem::path folder_, path_;
};

} // namespace

TEST_F(Workbooks, WithoutRecordsHaveTheirTitles)
{
    WriteEmptyWorkbook(path_, OwnSheetTitles());
    ExpectRecords(0, 0);
}

TEST_F(Workbooks, HoldRecordsOfEachKind)
{
    RecordWorkbook book(path_, OwnSheetTitles());
    Fill(book, RecordKind::Standard, 10);
    Fill(book, RecordKind::Event, 3);
    book.Finish();
    ExpectRecords(10, 3);
}

TEST_F(Workbooks, HoldEventsAlone)
{
    RecordWorkbook book(path_, OwnSheetTitles());
    Fill(book, RecordKind::Event, 3);
    book.Finish();
    ExpectRecords(0, 3);
}

TEST_F(Workbooks, HoldAsManyRecordsAsASheetHasRows)
{
    RecordWorkbook book(path_, OwnSheetTitles());
    Fill(book, RecordKind::Standard, MostRecords);
    Fill(book, RecordKind::Event, MostRecords);
    book.Finish();
    ExpectRecords(MostRecords, MostRecords);
}

TEST_F(Workbooks, AreWholeBehindEachCommit)
{
    RecordWorkbook book(path_, OwnSheetTitles());
    book.Begin(RecordKind::Standard, 1000);
    for (int rows = 0; rows < 1000; ++rows) {
        if (rows % 111 == 0) {
            ExpectRecords(rows, 0);
        }
        book.Add(Record(RecordKind::Standard, rows));
        book.Commit();
    }
    book.Begin(RecordKind::Event, 1000);
    ExpectRecords(1000, 0);
    for (int rows = 0; rows < 500; ++rows) {
        book.Add(Record(RecordKind::Event, rows));
        book.Commit();
    }
    ExpectRecords(1000, 500);
}

TEST_F(Workbooks, GiveBackTheRoomThatWasNotUsed)
{
    RecordWorkbook book(path_, OwnSheetTitles());
    book.Begin(RecordKind::Standard, 60000);
    book.Add(Record(RecordKind::Standard, 0));
    book.Finish();
    ExpectRecords(1, 0);
    EXPECT_LT(std::filesystem::file_size(path_), 10000U);
}

TEST_F(Workbooks, TakeNoMoreThanTheyHaveRoomFor)
{
    RecordWorkbook book(path_, OwnSheetTitles());
    Fill(book, RecordKind::Standard, 2);
    EXPECT_THROW(book.Add(Record(RecordKind::Standard, 2)), WorkbookError);
    book.Finish();
    ExpectRecords(2, 0);
}

TEST_F(Workbooks, HoldTheLongestRow)
{
    RecordWorkbook book(path_, OwnSheetTitles());
    book.Begin(RecordKind::Event, MostRecords);
    for (int i = 0; i < MostRecords; ++i)
        book.Add({i, 15, "-0.0065535", 4294967295U});
    book.Finish();
    EXPECT_EQ(ReadRecordSheet(path_, RecordKind::Event).Rows(), static_cast<std::size_t>(MostRecords));
}

TEST_F(Workbooks, KeepTheOldFileWhereTheNewOneCannotBeWritten)
{
    std::ofstream(path_) << "old";
    std::filesystem::create_directory(folder_ / "Memory.xls.new"); // in the way
    EXPECT_THROW(WriteEmptyWorkbook(path_, OwnSheetTitles()), WorkbookError);
    EXPECT_EQ(std::filesystem::file_size(path_), 3U);
}

TEST_F(Workbooks, OnAFullDiskAreNotBegun)
{
    if (!std::filesystem::exists("/dev/full"))
        GTEST_SKIP() << "This system has no device that is always full";
    WriteEmptyWorkbook(path_, OwnSheetTitles());
    std::filesystem::create_symlink("/dev/full", folder_ / "Memory.xls.new");
    RecordWorkbook book(path_, OwnSheetTitles());
    try {
        book.Begin(RecordKind::Standard, 10);
        FAIL() << "A full disk was not noticed";
    } catch (const WorkbookError &error) {
        EXPECT_NE(std::string(error.what()).find("No space left"), std::string::npos) << error.what();
    }
    ExpectRecords(0, 0);
}

/// A limit of this process on the length of files, while it lives: a write beyond it fails as on a full disk.
class FullDisk final
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{bytes, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &before_); }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit before_{};
};

TEST_F(Workbooks, ThatTookNoMoreTakeTheSameRowsLater)
{
    RecordWorkbook book(path_, OwnSheetTitles());
    book.Begin(RecordKind::Standard, 200);
    for (int i = 0; i < 10; ++i)
        book.Add(Record(RecordKind::Standard, i));
    book.Commit();
    for (int i = 10; i < 20; ++i)
        book.Add(Record(RecordKind::Standard, i));
    {
        const FullDisk full(CompoundFile::StreamAt);
        EXPECT_THROW(book.Commit(), WorkbookError);
        EXPECT_THROW(book.Commit(), WorkbookError);
        ExpectSheet(RecordKind::Standard, 10);
    }
    for (int i = 20; i < 200; ++i)
        book.Add(Record(RecordKind::Standard, i));
    book.Finish();
    ExpectRecords(200, 0);
}

TEST_F(Workbooks, ThatCannotBeFinishedHoldAllTheirRecords)
{
    RecordWorkbook book(path_, OwnSheetTitles());
    Fill(book, RecordKind::Standard, 100);
    book.Commit();
    {
        const FullDisk full(2 * CompoundFile::StreamAt);
        EXPECT_THROW(book.Finish(), WorkbookError);
    }
    ExpectRecords(100, 0);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "Memory.xls.new"));
    Fill(book, RecordKind::Event, 3);
    book.Finish();
    ExpectRecords(100, 3);
}

/// The process that writes tells how many rows it has committed; at any moment it is killed.
TEST_F(Workbooks, OfAKilledProgramHoldAllThatWasCommitted)
{
    std::mt19937 random(20);
    for (int round = 0; round < 40; ++round) {
        WriteEmptyWorkbook(path_, OwnSheetTitles());
        int ends[2];
        ASSERT_EQ(::pipe(ends), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            RecordWorkbook book(path_, OwnSheetTitles());
            for (const RecordKind kind : {RecordKind::Standard, RecordKind::Event}) {
                book.Begin(kind, 3000);
                for (int i = 0; i < 3000; ++i) {
                    book.Add(Record(kind, i));
                    book.Commit();
                    const int committed = kind == RecordKind::Event ? 3000 + i + 1 : i + 1;
                    if (::write(ends[1], &committed, sizeof committed) < 0)
                        ::_exit(1);
                }
            }
            book.Finish();
            ::_exit(0);
        }
        ::close(ends[1]);
        const int killAt = static_cast<int>(random() % 6000);
        int committed = 0, told = 0;
        while (committed < killAt && ::read(ends[0], &told, sizeof told) == sizeof told)
            committed = told;
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 300));
        ::kill(child, SIGKILL);
        while (::read(ends[0], &told, sizeof told) == sizeof told)
            committed = told;
        ::close(ends[0]);
        ::waitpid(child, nullptr, 0);

        const auto standard = static_cast<int>(ReadRecordSheet(path_, RecordKind::Standard).Rows());
        const auto event = static_cast<int>(ReadRecordSheet(path_, RecordKind::Event).Rows());
        EXPECT_GE(standard + event, committed);
        EXPECT_LE(standard + event, committed + 1); // one may not have been told of any more
        if (round % 8 == 0) {
            ExpectRecords(standard, event);
        } else {
            ExpectSheet(RecordKind::Standard, standard);
            ExpectSheet(RecordKind::Event, event);
        }
    }
}

TEST_F(Workbooks, ThatAreNoneAreRefused)
{
    EXPECT_THROW(ReadRecordSheet(path_, RecordKind::Standard), WorkbookError); // missing
    std::ofstream(path_) << "";
    EXPECT_THROW(ReadRecordSheet(path_, RecordKind::Standard), WorkbookError);
    std::ofstream(path_) << "PK\x03\x04 something else altogether";
    EXPECT_THROW(ReadRecordSheet(path_, RecordKind::Standard), WorkbookError);
    std::filesystem::remove(path_);
    std::filesystem::create_directory(path_);
    EXPECT_THROW(ReadRecordSheet(path_, RecordKind::Standard), WorkbookError);
}

TEST_F(Workbooks, ThatRepeatALongTextWithoutEndAreRefused)
{
    constexpr std::size_t Length = 8000;
    constexpr int Rows = 9000;
    const auto low = [](std::size_t word) { return static_cast<char>(word & 0xFFU); };
    const auto high = [](std::size_t word) { return static_cast<char>(word >> 8U); };
    const std::string head = SheetHead({"A", "B", "C"}, Rows + 1);
    const auto standardAt = static_cast<std::uint32_t>(Globals({0, 0}).size());
    constexpr std::size_t LabelHeader = 13;
    const std::size_t length = head.size() + Rows * (LabelHeader + Length) + SheetEnd().size();
    CompoundFile file(path_);
    file.Write(Globals({standardAt, standardAt + static_cast<std::uint32_t>(length)}));
    file.Write(head);
    for (std::size_t row = 1; row <= Rows; ++row) {
        const std::size_t body = LabelHeader - 4 + Length;
        const char label[LabelHeader] = {4, 2,  low(body), high(body),  low(row),     high(row), 0,
                                         0, 15, 0,         low(Length), high(Length), 0};
        file.Write({label, sizeof label});
        file.Write(std::string(Length, 'x'));
    }
    file.Write(SheetEnd() + SheetHead({"A"}, 1) + SheetEnd());
    file.Close();
    try {
        ReadRecordSheet(path_, RecordKind::Standard);
        FAIL() << "72 megabytes of text were taken for records";
    } catch (const WorkbookError &error) {
        EXPECT_STREQ(error.what(), "The sheet \"Standard\" is too large to be shown");
    }
}

TEST_F(Workbooks, ThatAreCutOffAreRefusedOrRead)
{
    RecordWorkbook book(path_, OwnSheetTitles());
    Fill(book, RecordKind::Standard, 100);
    book.Finish();
    for (auto size = std::filesystem::file_size(path_); size > 512; size -= 512) {
        std::filesystem::resize_file(path_, size - 256);
        try {
            EXPECT_LE(ReadRecordSheet(path_, RecordKind::Standard).Rows(), 100U);
        } catch (const WorkbookError &error) {
            EXPECT_STRNE(error.what(), "");
        }
    }
}
