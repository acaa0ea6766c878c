#include "firmware/FirmwareFrame.h"

#include <numeric>

namespace vorn
{

namespace
{

constexpr char CarriageReturn = '\r';
constexpr std::string_view Ready = "!00";

} // namespace

std::string BlockFrame(int block, std::string_view bytes)
{
    std::string frame{static_cast<char>(block / 256), static_cast<char>(block % 256)};
    frame += bytes;
    const unsigned sum = std::accumulate(frame.begin(), frame.end(), 0U, [](unsigned total, char byte) {
        return total + static_cast<unsigned char>(byte);
    });
    frame += static_cast<char>(sum & 0xFF);
    frame += CarriageReturn;
    return frame;
}

BlockVerdict JudgeBlockReply(std::string_view frame, std::string_view reply)
{
    if (reply.empty())
        return BlockVerdict::Unfinished;
    if (reply.front() != '!')
        return BlockVerdict::Refused;
    for (std::size_t at = 1; at < reply.size(); ++at) {
        if (reply[at] == CarriageReturn)
            return BlockVerdict::Accepted;
        if (at >= frame.size() || reply[at] != frame[at])
            return BlockVerdict::Refused;
    }
    return BlockVerdict::Unfinished;
}

bool SaysReady(std::string_view reply)
{
    return reply.starts_with(Ready);
}

Permission PermissionIn(std::string_view received)
{
    for (std::size_t start = 0; start < received.size();) {
        const std::string_view line = received.substr(start);
        const std::size_t end = line.find(CarriageReturn);
        if (SaysReady(line))
            return end == std::string_view::npos ? Permission::Given : Permission::Whole;
        if (end == std::string_view::npos)
            break;
        start += end + 1;
    }
    return Permission::Open;
}

} // namespace vorn
