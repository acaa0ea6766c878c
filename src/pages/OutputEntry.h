#pragma once

#include "protocol/NodeKey.h"

#include <QObject>

#include <functional>
#include <optional>
#include <string>

class QAbstractButton;
class QLineEdit;

namespace vorn
{

class FormMain;

/// An entry of an output's value. Return, and the button beside it, send what stands in the entry then. While
/// the operator types, the refresh leaves the entry alone.
class OutputEntry final : public QObject
{
public:
    /// `send` gets the node whose page was on show, and the text that stood in the entry, never an empty one.
    OutputEntry(FormMain &main, QLineEdit *entry, QAbstractButton *button,
                std::function<void(const NodeKey &node, const std::string &text)> send);

private:
    void Ask();

    FormMain &main_;
    QLineEdit *entry_;
    std::function<void(const NodeKey &, const std::string &)> send_;
    std::optional<std::string> asked_; ///< the text that waits to be sent: a held key piles up nothing
};

} // namespace vorn
