#pragma once

#include "protocol/Conversions.h"

#include <string>

namespace vorn
{

class FormMain;

/// Puts `text` into the wire form of the data format of the open analog output page (`OutputFormatCode`).
std::string FormatOutputValue(const FormMain &main, std::string &text);

/// Polls a restarting module with "$AA2" until it answers or 30 seconds have gone; the window stays alive
/// unless `NoYield`. The verdict is in `ReplyText`.
void WaitModuleReady(FormMain &main, const std::string &addr, bool checksum);

/// Polls a module at the end of a calibration step with "$AA3" until it answers or 30 seconds have gone.
void WaitCalibrationDone(FormMain &main, const std::string &addr, bool checksum);

/// Waits, without serving window events, until more than `seconds` have gone.
void DelaySeconds(const FormMain &main, float seconds);

/// Waits until a running transaction has ended, half a second at most. Called from within that transaction's
/// own yield it can only run out; it is short for that reason.
void WaitTransIdle(const FormMain &main);

} // namespace vorn
