#pragma once

#include "consoles/ConsoleForm.h"

#include <array>
#include <initializer_list>
#include <optional>
#include <span>

class QLabel;

namespace vorn
{

class DIO;

/// A row of eight points of a digital console, with the label that shows them in hexadecimal.
struct PointRowDesign {
    const char *array;   ///< "DIOL"
    const char *caption; ///< "DI &%1"
    int first;           ///< number of the first point
    const char *label;   ///< name of the label
    const char *text;    ///< its caption
    const char *value;   ///< name of the label with the hexadecimal digits
};

/// What the consoles of the digital models share: a data area of points.
class DigitalConsole : public ConsoleForm
{
    Q_OBJECT

public:
    using Points = std::array<DIO *, 8>;

    QGroupBox *FrameDIO;

protected:
    DigitalConsole(FormMain &main, const ConsoleDesign &design);

    struct Row {
        Points points;
        QLabel *value;
    };
    Row AddPoints(const PointRowDesign &design);
    /// Shows outputs as the module holds them.
    void ShowOutputs(const Points &points, const std::string &hex);
    /// Has the operator switch outputs; `behind` runs when the module took them, with their two hexadecimal
    /// digits.
    void OnSwitch(const Points &points, int yields, const std::function<void(const std::string &)> &behind);

    std::string TypeCode() const override { return "40"; }

    static constexpr const char *SwitchFailed = "Setup is invalid, please try again";

private:
    std::optional<std::string> outputs_; ///< two hexadecimal digits, as far as the module has told

    void Switch(const Points &points, int yields, const std::function<void(const std::string &)> &behind);
};

/// A digital console whose module answers two bytes: those of `DIOH`, then those of `DIOL`.
class TwoRowConsole : public DigitalConsole
{
    Q_OBJECT

public:
    Points DIOL;
    Points DIOH;
    QLabel *LabDLv;
    QLabel *LabDHv;

protected:
    TwoRowConsole(FormMain &main, const ConsoleDesign &design, const PointRowDesign &low,
                  const PointRowDesign &high);

    void InitialData() override { InitialDI(); }
    void Poll() override { InitialDI(); }

private:
    void InitialDI();
};

} // namespace vorn
