#pragma once

#include <QObject>

namespace vorn
{

class FormMain;
class SerialPorts;

/// The tools of a port that stand in windows of their own: one terminal, and a data scope for each port.
class BenchTools final : public QObject
{
public:
    BenchTools(FormMain &main, const SerialPorts &ports);
    /// The windows go with the program.
    ~BenchTools() override;

private:
    void Terminal_Click();
    void Data_Scope_Click();

    FormMain &main_;
    const SerialPorts &ports_;
};

} // namespace vorn
