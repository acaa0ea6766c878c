#pragma once

namespace vorn
{

/// The mark that this user runs the program already. It is a lock of the operating system, so that a crashed
/// instance never blocks the next one.
class SingleInstance final
{
public:
    SingleInstance();
    ~SingleInstance();
    SingleInstance(const SingleInstance &) = delete;
    SingleInstance &operator=(const SingleInstance &) = delete;

    /// True if another instance holds the mark.
    bool PrevInstance() const { return prevInstance_; }

private:
    int fd_ = -1;
    bool prevInstance_ = false;
};

} // namespace vorn
