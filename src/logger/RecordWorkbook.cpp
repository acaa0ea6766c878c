#include "logger/RecordWorkbook.h"

#include "logger/CompoundFile.h"
#include "logger/SheetRecords.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>
#include <utility>

namespace vorn
{

namespace
{

constexpr std::size_t Kinds = SheetNames.size();
constexpr std::size_t Page = 4096;
constexpr std::size_t RowsOfPage = Page / LongestRow;

std::size_t IndexOf(RecordKind kind)
{
    return static_cast<std::size_t>(kind);
}

/// Length of the filling record that brings a place of the file to the begin of a page.
std::size_t FillingToPage(std::uint64_t at)
{
    const std::size_t left = Page - at % Page;
    return left < FillingHeader ? left + Page : left;
}

std::uint64_t PagesFor(int rows)
{
    return static_cast<std::uint64_t>(rows) / RowsOfPage + 1;
}

[[noreturn]] void Throw(const char *what)
{
    throw WorkbookError(std::string(what) + ": " + std::strerror(errno));
}

/// Writes room for rows and tells where it begins in the file.
std::uint64_t WriteRoom(CompoundFile &file, std::uint64_t pages)
{
    file.Write(Filling(FillingToPage(CompoundFile::StreamAt + file.Size())));
    const std::uint64_t begin = CompoundFile::StreamAt + file.Size();
    const std::string page = Filling(Page);
    for (std::uint64_t i = 0; i < pages; ++i)
        file.Write(page);
    return begin;
}

} // namespace

SheetTitles OwnSheetTitles()
{
    return {{{"Record", "Channel", "Value"}, {"Record", "Channel", "Value", "Time stamp"}}};
}

void WriteEmptyWorkbook(const std::filesystem::path &path, const SheetTitles &titles)
{
    RecordWorkbook(path, titles).Finish();
}

RecordWorkbook::RecordWorkbook(std::filesystem::path path, SheetTitles titles)
    : path_(std::move(path)), titles_(std::move(titles))
{
}

void RecordWorkbook::Begin(RecordKind kind, int rows)
{
    Commit();
    Rebuild(kind, std::min(rows, MostRecords));
}

void RecordWorkbook::Add(const LoggerRecord &record)
{
    if (Growing().rows + pendingRows_ >= room_)
        throw WorkbookError("There is no room for another record");
    const std::string cells = RowCells(1 + Growing().rows + pendingRows_, record, kind_);
    const std::size_t bytes = pending_.size() + cells.size();
    if (bytes != left_ && bytes + FillingHeader > left_) {
        Commit();
        at_ += left_;
        left_ = Page;
    }
    pending_ += cells;
    ++pendingRows_;
}

void RecordWorkbook::Commit()
{
    if (pending_.empty())
        return;
    const std::size_t bytes = pending_.size();
    const std::size_t left = left_ - bytes;
    const std::string rows = pending_ + FillingBegin(left);
    Write(at_ + FillingHeader, std::string_view(rows).substr(FillingHeader));
    Write(at_, std::string_view(rows).substr(0, FillingHeader));
    left_ = left; // not before: a commit that failed may be repeated
    at_ += bytes;
    Growing().roomBytes += bytes;
    Growing().rows += std::exchange(pendingRows_, 0);
    pending_.clear();
}

void RecordWorkbook::Finish()
{
    Commit();
    Rebuild(RecordKind::Event, 0);
}

/// Writes the file again: the rows as they stand, and room for so many in the sheet that comes last.
void RecordWorkbook::Rebuild(RecordKind last, int room)
{
    std::array<RecordKind, Kinds> order{RecordKind::Standard, RecordKind::Event};
    if (last == RecordKind::Standard)
        std::swap(order[0], order[1]);

    std::array<std::uint32_t, Kinds> begins{};
    std::array<std::string, Kinds> heads;
    std::array<Sheet, Kinds> sheets = sheets_;
    std::uint64_t at = Globals(begins).size();
    const std::string end = SheetEnd();
    for (const RecordKind kind : order) {
        const std::size_t i = IndexOf(kind);
        Sheet &sheet = sheets[i];
        begins[i] = static_cast<std::uint32_t>(at);
        heads[i] = SheetHead(titles_[i], 1 + (kind == last ? std::max(room, sheet.rows) : sheet.rows));
        sheet.rowsAt = CompoundFile::StreamAt + at + heads[i].size();
        sheet.rowBytes += std::exchange(sheet.roomBytes, 0);
        at += heads[i].size() + sheet.rowBytes + end.size();
    }

    CompoundFile file(path_);
    file.Write(Globals(begins));
    for (const RecordKind kind : order) {
        file.Write(heads[IndexOf(kind)]);
        CopyRows(file, sheets_[IndexOf(kind)]);
        if (room > 0 && kind == last)
            sheets[IndexOf(kind)].roomAt = WriteRoom(file, PagesFor(room));
        file.Write(end);
    }
    if (file.Size() < CompoundFile::LeastStream)
        file.WriteZeros(CompoundFile::LeastStream - file.Size());
    file.Close();
    sheets_ = sheets;
    kind_ = last;
    room_ = room;
    at_ = Growing().roomAt;
    left_ = Page;
    Open();
}

/// Copies the rows of a sheet without what fills the room between them.
void RecordWorkbook::CopyRows(CompoundFile &to, const Sheet &sheet) const
{
    if (sheet.rowBytes > 0)
        to.Copy(file_.get(), sheet.rowsAt, sheet.rowBytes);
    std::string page(Page, '\0');
    std::uint64_t copied = 0;
    for (std::uint64_t at = sheet.roomAt; copied < sheet.roomBytes; at += Page) {
        if (std::fseek(file_.get(), static_cast<long>(at), SEEK_SET) != 0 ||
            std::fread(page.data(), 1, Page, file_.get()) != Page)
            Throw("The records written so far can't be read again");
        const std::size_t bytes = RowBytesOf(page);
        to.Write(std::string_view(page).substr(0, bytes));
        copied += bytes;
    }
    if (copied != sheet.roomBytes)
        throw WorkbookError("The file isn't as it was written");
}

void RecordWorkbook::Open()
{
    file_.reset(std::fopen(path_.string().c_str(), "r+b"));
    if (!file_)
        Throw("The file can't be opened");
    std::setvbuf(file_.get(), nullptr, _IONBF, 0); // the order of the writes counts
}

void RecordWorkbook::Write(std::uint64_t at, std::string_view bytes)
{
    if (!file_ || std::fseek(file_.get(), static_cast<long>(at), SEEK_SET) != 0 ||
        std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size())
        Throw("Records can't be written");
}

} // namespace vorn
