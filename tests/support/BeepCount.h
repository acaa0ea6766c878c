#pragma once

#include "platform/Dialogs.h"

#include <utility>

/// Ears for the beeps of its time.
class BeepCount final
{
public:
    BeepCount()
    {
        vorn::OnBeep([this] { ++count_; });
    }
    ~BeepCount() { vorn::OnBeep({}); }
    BeepCount(const BeepCount &) = delete;
    BeepCount &operator=(const BeepCount &) = delete;

    /// How many there were since the last question, on the window's thread.
    int Take() { return std::exchange(count_, 0); }

private:
    int count_ = 0;
};
