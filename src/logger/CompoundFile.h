#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

namespace vorn
{

/// A compound file with the one stream "Workbook", which lies in it as one piece. It is written beside the
/// file of its name, and takes its place when it is closed. Throws `WorkbookError`.
class CompoundFile final
{
public:
    /// Place of the stream in the file.
    static constexpr std::uint64_t StreamAt = 512;
    /// A shorter stream would lie elsewhere.
    static constexpr std::uint64_t LeastStream = 4096;

    explicit CompoundFile(const std::filesystem::path &path);
    ~CompoundFile();
    CompoundFile(const CompoundFile &) = delete;
    CompoundFile &operator=(const CompoundFile &) = delete;

    /// Bytes of the stream so far.
    std::uint64_t Size() const { return size_; }
    void Write(std::string_view bytes);
    void WriteZeros(std::uint64_t count);
    /// Bytes of another file.
    void Copy(std::FILE *from, std::uint64_t at, std::uint64_t count);
    /// Without it nothing of the file is left.
    void Close();

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
    std::uint64_t size_ = 0;
};

} // namespace vorn
