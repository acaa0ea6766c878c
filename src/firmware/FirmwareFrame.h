#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vorn
{

/// Bytes of the file that a block carries.
inline constexpr std::size_t BlockSize = 128;

/// Bytes that one read of a block's reply takes at most; no reply that is looked at is longer.
inline constexpr std::size_t BlockReplySize = 4;

/// One block as it goes over the line, 132 bytes: the block number (high byte, low byte), 128 bytes of the
/// file, the low byte of the sum of all these, a carriage return. `bytes` holds 128 bytes.
std::string BlockFrame(int block, std::string_view bytes);

/// What a loader's reply to a block means.
enum class BlockVerdict {
    Accepted,
    Refused,    ///< to be sent again
    Unfinished, ///< nothing wrong so far, but its carriage return is missing; at its end it is a refusal
};

/// Judges the reply to a frame: "!", then bytes that repeat those of the frame at the same places, up to a
/// carriage return. Any other byte refuses the block.
BlockVerdict JudgeBlockReply(std::string_view frame, std::string_view reply);

/// Whether a reply, or what is there of it, says that the loader is ready: it begins with "!00".
bool SaysReady(std::string_view reply);

/// What came in while a loader is asked for permission to send a block ("&00D"). The end of an earlier reply
/// may stand in front.
enum class Permission {
    Open,  ///< not given yet
    Given, ///< "!00" is there, the end of its line not yet
    Whole, ///< with its carriage return
};
Permission PermissionIn(std::string_view received);

} // namespace vorn
