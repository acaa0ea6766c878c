// Image files, and what a loader says.

#include "Fuzz.h"

#include "firmware/FirmwareFrame.h"
#include "firmware/FirmwareImage.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace
{

using namespace vorn;

void ReadImage(const std::string &bytes, std::size_t blocks)
{
    const int fd = ::memfd_create("image", MFD_CLOEXEC);
    PROMISE(fd >= 0 && ::write(fd, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
    FirmwareImage image;
    const auto fault = image.Read("/proc/self/fd/" + std::to_string(fd), static_cast<int>(blocks));
    ::close(fd);
    const bool isShort = bytes.size() < blocks * BlockSize;
    PROMISE(fault == (isShort ? FirmwareImage::Fault::Short : FirmwareImage::Fault::None));
    PROMISE(image.Size() == bytes.size());
    for (std::size_t at = 0; at <= bytes.size() + BlockSize; at += 61) {
        std::string wanted = at < bytes.size() ? bytes.substr(at, BlockSize) : std::string();
        wanted.resize(BlockSize, '\0');
        PROMISE(image.Block(at) == wanted);
        const std::string frame = BlockFrame(static_cast<int>(at % 1024), wanted);
        PROMISE(frame.size() == 132 && frame.substr(2, BlockSize) == wanted && frame.back() == '\r');
    }
}

void Judge(const std::string &reply)
{
    const std::string frame = BlockFrame(1, std::string(BlockSize, 'x'));
    const BlockVerdict verdict = JudgeBlockReply(frame, reply);
    PROMISE(verdict != BlockVerdict::Accepted || reply.find('\r') != std::string::npos);
    PROMISE(verdict != BlockVerdict::Refused || !reply.empty());
    // More bytes never change a verdict that has been given.
    if (verdict != BlockVerdict::Unfinished)
        PROMISE(JudgeBlockReply(frame, reply + "\r") == verdict);
    PROMISE((PermissionIn(reply) == Permission::Open) || reply.find("!00") != std::string::npos);
    PROMISE(!SaysReady(reply) || PermissionIn(reply) != Permission::Open);
    (void)LoaderImageFor(IsExtendedBaseUnit(reply), reply);
    (void)IsMainImagePath(reply);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    fuzz::Input input(data, size);
    const std::size_t blocks = input.Number(4);
    const std::string text = input.Rest();
    ReadImage(text, blocks);
    Judge(text);
    return 0;
}
