#pragma once

#include <QPointer>

#include <string_view>

class QProgressBar;

namespace vorn
{

class FormMain;

/// How far a job has come, in the status bar, for as long as this lives.
class JobProgress final
{
public:
    explicit JobProgress(FormMain &main);
    ~JobProgress();
    JobProgress(const JobProgress &) = delete;
    JobProgress &operator=(const JobProgress &) = delete;

    /// Names what is done now, the next step of `steps`.
    void Step(std::string_view what, int steps);

private:
    QPointer<QProgressBar> bar_;
    int done_ = 0;
};

} // namespace vorn
