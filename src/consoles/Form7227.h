#pragma once

#include "consoles/ScanConsole.h"

namespace vorn
{

/// Console of the eight universal inputs of 7227.
class Form7227 final : public ScanConsole
{
    Q_OBJECT

public:
    explicit Form7227(FormMain &main);

    QPushButton *cmdNSpan;

protected:
    void BeforeFirmware() override;
    void ReadMore() override { ReadColdJunctionValue(); }
    void ShowReadBack() override;
};

} // namespace vorn
