#pragma once

#include <QObject>

namespace vorn
{

class FormMain;
class NodeKey;
class Pages;

/// Writes alarm mode and limits of a stand-alone analog input module, and clears latches and counts.
class AnalogAlarm final : public QObject
{
public:
    AnalogAlarm(FormMain &main, Pages &pages);

private:
    void CmdAlarmUpdata_Click();
    void WriteMode(const NodeKey &node);
    void WriteLimits(const NodeKey &node);

    FormMain &main_;
    Pages &pages_;
};

} // namespace vorn
