#pragma once

#include "protocol/NodeKey.h"

#include <QObject>

#include <array>
#include <functional>
#include <string>

class QTabBar;
class QWidget;

namespace vorn
{

class FormMain;
class FrameMAlarmset;
class FrameMemOperation;
class FrameMemory;

/// The tabs of the logging model's page: each reads again what it shows.
class LoggerTabs final : public QObject
{
public:
    struct Parts {
        QTabBar *tabStrip;
        std::array<QWidget *, 2> module; ///< frames of the first tab
        class FrameMemory *memory;
        FrameMAlarmset *limits;
        FrameMemOperation *operation;
        std::function<void(const std::string &key)> pollLiveData;
    };
    LoggerTabs(FormMain &main, Parts parts);

private:
    enum Tab { Module, Memory, Limits, Operation };

    void TabStrip1_Click(const NodeKey &node, int tab);
    void ShowModule(const NodeKey &node);
    void ReadLimits(const NodeKey &node);
    void ShowAlone(const QWidget *frame) const;

    FormMain &main_;
    Parts parts_;
};

} // namespace vorn
