#include "logger/CompoundFile.h"

#include "logger/RecordWorkbook.h"

#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-output-stdio.h>
#include <gsf/gsf-utils.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>

namespace vorn
{

namespace
{

template <class Object>
struct Unref {
    void operator()(Object *object) const { g_object_unref(object); }
};
template <class Object>
using Held = std::unique_ptr<Object, Unref<Object>>;

[[noreturn]] void Throw()
{
    throw WorkbookError("The file can't be written: " + std::string(std::strerror(errno)));
}

std::FILE *Create(const std::filesystem::path &path)
{
    static const bool initialised = (gsf_init(), true);
    static_cast<void>(initialised);
    std::FILE *file = std::fopen(path.string().c_str(), "wb");
    if (!file)
        Throw();
    return file;
}

} // namespace

struct CompoundFile::Parts {
    explicit Parts(const std::filesystem::path &to)
        : path(to), besides(to.string() + ".new"), file(Create(besides)),
          sink(gsf_output_stdio_new_FILE(besides.string().c_str(), file, TRUE)),
          container(gsf_outfile_msole_new(sink.get())),
          stream(gsf_outfile_new_child(container.get(), "Workbook", FALSE))
    {
    }

    std::filesystem::path path, besides;
    std::FILE *file;
    Held<GsfOutput> sink;
    Held<GsfOutfile> container;
    Held<GsfOutput> stream;
};

CompoundFile::CompoundFile(const std::filesystem::path &path) : parts_(std::make_unique<Parts>(path)) {}

CompoundFile::~CompoundFile()
{
    if (!parts_)
        return;
    std::FILE *file = parts_->file;
    const std::filesystem::path besides = parts_->besides;
    parts_.reset();
    std::fclose(file);
    std::error_code ignored;
    std::filesystem::remove(besides, ignored);
}

void CompoundFile::Write(std::string_view bytes)
{
    // Text and bytes are of one kind to a file.
    const auto *data = static_cast<const guint8 *>(static_cast<const void *>(bytes.data()));
    if (!gsf_output_write(parts_->stream.get(), bytes.size(), data))
        Throw();
    size_ += bytes.size();
}

void CompoundFile::WriteZeros(std::uint64_t count)
{
    static constexpr std::array<char, 65536> Zeros{};
    while (count > 0) {
        const std::size_t piece = std::min<std::uint64_t>(count, Zeros.size());
        Write({Zeros.data(), piece});
        count -= piece;
    }
}

void CompoundFile::Copy(std::FILE *from, std::uint64_t at, std::uint64_t count)
{
    std::array<char, 65536> bytes{};
    bool good = from && std::fseek(from, static_cast<long>(at), SEEK_SET) == 0;
    while (good && count > 0) {
        const std::size_t piece = std::min<std::uint64_t>(count, bytes.size());
        good = std::fread(bytes.data(), 1, piece, from) == piece;
        if (good)
            Write({bytes.data(), piece});
        count -= piece;
    }
    if (!good)
        throw WorkbookError("The records written so far can't be read again");
}

void CompoundFile::Close()
{
    const bool written = gsf_output_close(parts_->stream.get()) &&
                         gsf_output_close(GSF_OUTPUT(parts_->container.get())) &&
                         std::fflush(parts_->file) == 0 && std::ferror(parts_->file) == 0;
    if (!written)
        Throw();
    std::error_code error;
    std::filesystem::rename(parts_->besides, parts_->path, error);
    if (error)
        throw WorkbookError("The file can't be replaced: " + error.message());
}

} // namespace vorn
