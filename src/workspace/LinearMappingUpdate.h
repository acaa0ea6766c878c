#pragma once

#include <QObject>

#include <string>

namespace vorn
{

class FormMain;
class NodeKey;
class Pages;

/// Writes the linear mapping of 7212D: its switch, its input range and its output range.
class LinearMappingUpdate final : public QObject
{
public:
    LinearMappingUpdate(FormMain &main, Pages &pages);

private:
    /// What the closing box says.
    struct Outcome {
        std::string text;
        std::string title;
        bool success = false;
    };

    void CmdLinearUpdata_Click();
    Outcome Write(const NodeKey &node);

    FormMain &main_;
    Pages &pages_;
};

} // namespace vorn
