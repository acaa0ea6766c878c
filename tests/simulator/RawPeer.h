#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>

/// A host that speaks to a port with bare system calls.
class RawPeer
{
public:
    /// Opens the port raw at a line speed.
    explicit RawPeer(const std::filesystem::path &link, int speed = 9600);
    ~RawPeer();
    RawPeer(const RawPeer &) = delete;
    RawPeer &operator=(const RawPeer &) = delete;

    bool Open() const { return fd_ >= 0; }
    int Descriptor() const { return fd_; }
    void SetSpeed(int speed) const;
    void Close();

    void Write(std::string_view bytes) const;
    /// Sends a line and reads one; both without carriage return. Empty when nothing came in time.
    std::string Ask(std::string_view line);

    /// The bytes up to the next carriage return, without it; empty when none came in time.
    std::string ReadLine();
    /// Exactly so many bytes, fewer when no more came in time.
    std::string ReadBytes(std::size_t count);
    /// What one read gives as soon as anything is there; empty at a hang-up or when nothing came in time.
    std::string ReadPiece();

private:
    bool Wait(std::chrono::steady_clock::time_point until) const;
    bool Fill(std::chrono::steady_clock::time_point until);

    int fd_ = -1;
    std::string received_;
};

/// How long a test waits for what must come. Only a failing test takes so long.
inline constexpr std::chrono::seconds Patience{10};
