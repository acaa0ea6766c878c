#pragma once

#include "Figures.h"
#include "Stand.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <algorithm>
#include <atomic>
#include <semaphore>
#include <thread>
#include <vector>

/// Asks the window's thread for a sign of life, again and again, and keeps how long each one took.
class Probe final
{
public:
    Probe() : thread_([this] { Run(); }) {}
    ~Probe() { End(); }

    void End()
    {
        ending_ = true;
        while (thread_.joinable()) {
            QCoreApplication::processEvents(); // the last sign of life
            if (ended_)
                thread_.join();
        }
    }
    double Longest() const { return *std::max_element(times_.begin(), times_.end()); }
    double Middle() const { return Median(times_); }
    std::size_t Count() const { return times_.size(); }

private:
    void Run()
    {
        while (!ending_) {
            std::binary_semaphore served(0);
            const auto asked = Steady::now();
            QMetaObject::invokeMethod(
                qApp, [&served] { served.release(); }, Qt::QueuedConnection);
            served.acquire();
            times_.push_back(Milliseconds(Steady::now() - asked).count());
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        ended_ = true;
    }

    std::vector<double> times_;
    std::atomic<bool> ending_ = false;
    std::atomic<bool> ended_ = false;
    std::thread thread_;
};
