#pragma once

#include <QGroupBox>

#include <array>

class QLabel;

namespace vorn
{

class DIO;

/// Digital points in two groups of eight: the low group `DIOL`, the high group `DIOH`.
class FrameDIO final : public QGroupBox
{
public:
    FrameDIO();

    static constexpr int Points = 8;
    QLabel *LabDL, *LabDLv; ///< low group: kind, value in hexadecimal
    QLabel *LabDH, *LabDHv; ///< high group
    std::array<DIO *, Points> DIOL;
    std::array<DIO *, Points> DIOH;

private:
    QLayout *BuildGroup(QLabel *kind, QLabel *value, std::array<DIO *, Points> &points, const char *name);
};

} // namespace vorn
