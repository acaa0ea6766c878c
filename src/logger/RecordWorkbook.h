#pragma once

#include "logger/LoggerRecord.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vorn
{

/// A workbook that can't be written or read; `what` tells why, for the operator.
class WorkbookError final : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

class CompoundFile;

/// Names of the sheets, by kind of record.
inline constexpr std::array<const char *, 2> SheetNames{"Standard", "event"};

/// Column titles of the sheets, by kind of record; the first row of each.
using SheetTitles = std::array<std::vector<std::string>, 2>;
/// Those of a workbook that the program makes.
SheetTitles OwnSheetTitles();

/// Writes a workbook with both sheets and no record. The file is there as a whole or not at all.
void WriteEmptyWorkbook(const std::filesystem::path &path, const SheetTitles &titles);

/// The workbook that receives records: Excel 97 format (BIFF8 in a compound file).
///
/// The file is a valid workbook at any moment, whatever becomes of the program. Only what makes room in it
/// (`Begin`, `Finish`) writes a file again, beside the old one, whose place it then takes. The room of the
/// sheet that grows is a row of filling records, one a page of the file, which readers pass over. Rows are
/// written into such a record behind its header, with a shorter filling record behind them, and then its
/// header is overwritten with that of the first row's first cell: four bytes of one page, which are there or
/// not. Memory holds only the rows since the last `Commit`, a page of them at most, and the disk has the room
/// from the beginning.
///
/// All members throw `WorkbookError`.
class RecordWorkbook final
{
public:
    RecordWorkbook(std::filesystem::path path, SheetTitles titles);

    /// Makes room for `rows` records of a kind, 65535 at most. The records of the other kind stay.
    void Begin(RecordKind kind, int rows);
    /// Adds a row to the sheet that was begun.
    void Add(const LoggerRecord &record);
    /// Puts the rows that were added into the file.
    void Commit();
    /// Commits, and gives back the room that was not used.
    void Finish();

private:
    /// Where the rows of a sheet lie in the file. Those of the room have filling records among them.
    struct Sheet {
        std::uint64_t rowsAt = 0;
        std::uint64_t rowBytes = 0;
        std::uint64_t roomAt = 0;
        std::uint64_t roomBytes = 0; ///< of rows, in that room
        int rows = 0;
    };
    struct CloseFile {
        void operator()(std::FILE *file) const { std::fclose(file); }
    };

    void Rebuild(RecordKind last, int room);
    void CopyRows(CompoundFile &to, const Sheet &sheet) const;
    void Open();
    void Write(std::uint64_t at, std::string_view bytes);
    Sheet &Growing() { return sheets_[static_cast<std::size_t>(kind_)]; }

    std::filesystem::path path_;
    SheetTitles titles_;
    std::array<Sheet, 2> sheets_;
    RecordKind kind_ = RecordKind::Standard; ///< of the sheet that grows
    int room_ = 0;                           ///< rows that it has room for
    std::uint64_t at_ = 0;                   ///< place of the filling record that takes the next rows
    std::size_t left_ = 0;                   ///< bytes from there to the end of its page
    std::string pending_;
    int pendingRows_ = 0;
    std::unique_ptr<std::FILE, CloseFile> file_;
};

} // namespace vorn
