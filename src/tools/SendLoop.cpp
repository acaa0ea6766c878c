#include "tools/SendLoop.h"

#include <utility>

namespace vorn
{

bool SendLoop::BeginSend()
{
    looping_ = false;
    return std::exchange(clearOnSend_, false);
}

void SendLoop::BeginLoop()
{
    looping_ = true;
    clearOnSend_ = false;
    rounds_ = 0;
}

void SendLoop::Stop()
{
    looping_ = false;
    ++stops_;
}

void SendLoop::LogIsFull()
{
    clearOnSend_ = true;
    Stop();
}

} // namespace vorn
