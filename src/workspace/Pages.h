#pragma once

#include <QHash>
#include <QString>

#include <string>

class QLabel;
class QTabBar;
class QTreeWidget;
class QWidget;

namespace vorn
{

class FormMain;
class FrameAIn;
class FrameAOut;
class FrameASet;
class FrameChannel;
class FrameDIO;
class FrameFC;
class FrameFCdata;
class FrameFCf;
class FrameGen;
class FrameLSet;
class FrameMAlarmset;
class FrameMemOperation;
class FrameMemory;
class FrameMSet;
class FramePort;
class FrameSlot;
class FrameSlotIO;

/// All frames that the page of a node is put together from, in the order in which they stand below each
/// other, and the way from a control's name to the control.
class Pages final
{
public:
    explicit Pages(FormMain &main);

    QLabel *LabPC; ///< text of the PC page
    class FramePort *FramePort;
    QTabBar *TabStrip1;
    class FrameMSet *FrameMSet;
    QTreeWidget *ListView3900; ///< slots of a base unit
    class FrameGen *FrameGen;
    class FrameAIn *FrameAIn;
    class FrameAOut *FrameAOut;
    class FrameDIO *FrameDIO;
    class FrameFCdata *FrameFCdata;
    class FrameFC *FrameFC;
    class FrameFCf *FrameFCf;
    class FrameASet *FrameASet;
    class FrameLSet *FrameLSet;
    class FrameSlot *FrameSlot;
    class FrameSlotIO *FrameSlotIO;
    class FrameChannel *FrameChannel;
    class FrameMemory *FrameMemory;
    class FrameMAlarmset *FrameMAlarmset;
    class FrameMemOperation *FrameMemOperation;

    /// The control of a name such as "LabRange" or "DIOL_3"; null if there is none.
    QWidget *Control(const std::string &name) const;

private:
    void BuildLists();
    void Register(QWidget *frame);

    QHash<QString, QWidget *> controls_;
};

} // namespace vorn
