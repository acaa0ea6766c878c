#pragma once

#include "logger/LoggerRecord.h"
#include "logger/RecordWorkbook.h"
#include "protocol/NodeKey.h"
#include "protocol/Registers.h"

#include <QElapsedTimer>
#include <QObject>

#include <memory>
#include <string>

namespace vorn
{

class FormMain;
class FormScan;

/// The copying of a logger's records into the workbook of the program directory, one transaction a record.
class RecordTransfer final : public QObject
{
    Q_OBJECT

public:
    /// @param mixed  the storage mode is the mixed one, in which events have addresses of their own
    RecordTransfer(FormMain &main, NodeKey node, bool mixed);

    /// The whole of it, with its boxes. The main window is disabled meanwhile.
    void Run();

Q_SIGNALS:
    /// The record of a number is being transferred.
    void AtRecord(int number);

private:
    int Count(Register count);
    std::string Ask(std::string command);
    void AwaitQuiet();
    void Transfer(RecordKind kind, int count);
    void ReadRecords(RecordKind kind, int count);
    void ReadRecord(RecordKind kind, int number);
    void ShowTimeLeft(int done, int count);
    void ShowWindow(RecordKind kind, int count);
    void ShowRecord(int number, int count);
    void Commit();
    FormScan *Window() const;

    FormMain &main_;
    NodeKey node_;
    bool mixed_;
    std::unique_ptr<RecordWorkbook> book_;
    QElapsedTimer shown_;
    double begin_ = 0;  ///< of the part that runs, by the clock
    std::string fault_; ///< why the workbook can't be written any more
};

} // namespace vorn
