#pragma once

#include "platform/MSComm.h"
#include "tools/ScopeFilter.h"

#include <QWidget>

class QCheckBox;
class QListWidget;
class QPushButton;

namespace vorn
{

class FormMain;
class LogView;
class SerialPorts;

/// The data scope of a port: shows every line that passes on the bus, command or reply, and sends nothing.
class FormScope final : public QWidget
{
    Q_OBJECT

public:
    /// A scope of the selected port.
    FormScope(FormMain &main, const SerialPorts &ports);

    QListWidget *ListFilter; ///< addresses "00" to "FF"; several can be chosen
    QCheckBox *CheckFilter;
    QPushButton *CmdUpdate;
    QPushButton *CmdClear;
    QPushButton *CmdStart;
    QPushButton *CmdStop;
    QPushButton *CmdSave;
    LogView *Text1;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    QWidget *BuildFilter();
    QLayout *BuildButtons();

    void CmdStart_Click();
    void OpenPort();
    void CmdStop_Click();
    void CmdUpdate_Click();
    void CmdSave_Click();
    void MSComm1_OnComm();
    int SelCount() const;

    FormMain &main_;
    const int port_;
    MSComm MSComm1;
    ScopeFilter filter_;
    QString saveFolder_;    ///< where the save dialog was last
    bool starting_ = false; ///< the start waits for the end of a transaction
};

} // namespace vorn
