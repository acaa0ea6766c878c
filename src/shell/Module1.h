#pragma once

#include "protocol/Conversions.h"

#include <functional>
#include <string>

namespace vorn
{

class FormMain;

/// Puts `text` into the wire form of the data format of the open analog output page (`OutputFormatCode`).
std::string FormatOutputValue(const FormMain &main, std::string &text);

// The windows are served in all waits; nothing else begins in them.

/// Tells a wait that nobody waits for its outcome any more.
using GivenUp = std::function<bool()>;

/// Polls a restarting module with "$AA2" until it answers, 30 seconds have gone, its port is refused, or the
/// wait is given up. The verdict is in `ReplyText`.
void WaitModuleReady(FormMain &main, const std::string &addr, bool checksum, const GivenUp &givenUp = {});

/// Polls a module at the end of a calibration step with "$AA3" in the same way.
void WaitCalibrationDone(FormMain &main, const std::string &addr, bool checksum, const GivenUp &givenUp = {});

/// Waits until more than `seconds` have gone.
void DelaySeconds(const FormMain &main, float seconds);

/// Waits until a running transaction has ended, half a second at most: a bus that an error has silenced stays
/// busy for good.
void WaitTransIdle(const FormMain &main);

} // namespace vorn
