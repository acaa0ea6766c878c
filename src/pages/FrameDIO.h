#pragma once

#include "shell/PageFrame.h"

#include <array>
#include <cstdint>

class QGridLayout;
class QLabel;

namespace vorn
{

class DIO;
enum class PointRow : std::uint8_t;

/// Digital points in two groups of eight: the low group `DIOL`, the high group `DIOH`.
class FrameDIO final : public PageFrame
{
public:
    explicit FrameDIO(FormMain &main);

    static constexpr int Points = 8;
    QLabel *LabDL, *LabDLv; ///< low group: kind, value in hexadecimal
    QLabel *LabDH, *LabDHv; ///< high group
    std::array<DIO *, Points> DIOL;
    std::array<DIO *, Points> DIOH;

    void Load(PageReading &reading) override;
    void ShowLive(const LiveReply &reply) override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    using Group = std::array<DIO *, Points>;

    QLayout *BuildGroup(PointRow row, QLabel *kind, QLabel *value, Group &points, const char *name);

    static void ShowDirections(const Group &points, int first, const std::string &pair);
    void Point_Click(const NodeKey &node, PointRow row, int element);
    void ShowSlotPoints(const LiveReply &reply);
    void MarkFaults(const LiveReply &reply);
    void ArrangePoints(int perRow);
    static void ShowPair(QLabel *value, const Group &points, const std::string &pair);

    std::array<QGridLayout *, 2> lamps_{}; ///< of the low and the high group
    int perRow_ = 0;                       ///< points side by side
};

} // namespace vorn
