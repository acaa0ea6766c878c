#pragma once

#include "consoles/DigitalConsole.h"
#include "consoles/Watchdog.h"

#include <optional>

namespace vorn
{

/// Console of the eight relay outputs of 7276, with the communication watchdog.
class Form7276 final : public DigitalConsole
{
    Q_OBJECT

public:
    explicit Form7276(FormMain &main);

    Points DIOL;
    QLabel *LabDLv;
    std::optional<class Watchdog> Watchdog;

protected:
    void Form_Unload() override {} // this window closes without a handler

    void AfterFirmware() override;
    void InitialData() override { ReadOutputs(); }
    void Poll() override { ReadOutputs(); }
    Step UpdateMore() override;
    void ClearFlags() override;

private:
    void ReadOutputs();
};

} // namespace vorn
