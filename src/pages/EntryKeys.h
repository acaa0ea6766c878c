#pragma once

#include <QObject>

#include <functional>

class QKeyEvent;
class QLineEdit;

namespace vorn
{

/// Tells what the operator does in an entry of an output's value: it reports Return, and whatever writes or
/// deletes, also by pasting and dropping. Keys that only move are none of it.
class EntryKeys final : public QObject
{
public:
    /// `entered` says whether it has used the key; else it counts as typed.
    EntryKeys(QLineEdit *entry, std::function<void()> typed, std::function<bool()> entered);

protected:
    bool eventFilter(QObject *control, QEvent *event) override;

private:
    bool Key(const QKeyEvent &key);

    std::function<void()> typed_;
    std::function<bool()> entered_;
};

} // namespace vorn
