#pragma once

#include <QHash>
#include <QString>

#include <string>
#include <vector>

class QLabel;
class QTabBar;
class QWidget;

namespace vorn
{

class FormMain;
class FrameMAlarmset;
class FrameMSet;
class FrameMemOperation;
class FrameMemory;
class PageFrame;
class RowList;

/// All that the page of a node is put together from, in the order in which it stands below each other, and
/// the way from a control's name to the control.
class Pages final
{
public:
    /// `framePort` is the page of a port.
    Pages(FormMain &main, QWidget *framePort);

    QLabel *LabPC; ///< text of the PC page
    QWidget *FramePort;
    QTabBar *TabStrip1;
    class FrameMSet *FrameMSet;
    class FrameMemory *FrameMemory;
    class FrameMAlarmset *FrameMAlarmset;
    class FrameMemOperation *FrameMemOperation;
    RowList *ListView3900; ///< slots of a base unit

    /// The frames that load themselves, in their order on the page, which is the order of the load.
    const std::vector<PageFrame *> &Frames() const { return frames_; }

    /// The control of a name such as "LabRange" or "DIOL_3"; null if there is none.
    QWidget *Control(const std::string &name) const;

private:
    void BuildLists();
    void Add(FormMain &main, QWidget *part);

    std::vector<PageFrame *> frames_;
    QHash<QString, QWidget *> controls_;
};

} // namespace vorn
