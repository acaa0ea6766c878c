#pragma once

#include "consoles/ScanConsole.h"

class QListWidget;

namespace vorn
{

/// Console of the six resistance thermometers of 7216.
class Form7216 final : public ScanConsole
{
    Q_OBJECT

public:
    explicit Form7216(FormMain &main);

    QComboBox *CmbDataFormat;
    QGroupBox *fraburnout;
    QListWidget *lstOpenWiring;

protected:
    void ShowRecord() override;
    void ShowWiring() override;
    std::string FormatByte() const override;
    void ShowReadBack() override;
};

} // namespace vorn
