#pragma once

#include "protocol/CalibrationMode.h"
#include "protocol/PollList.h"
#include "shell/PageReading.h"

#include <QGroupBox>
#include <QPointer>
#include <QVariant>

#include <functional>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class QAbstractButton;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace vorn
{

class DIO;
class FormMain;

/// Reply of a step of the live refresh.
struct LiveReply {
    const PollStep &step;
    const NodeKey &node;
    int channel; ///< channel that the step was sent for, 0 where it has none
    bool accepted;
    const std::string &text;
    std::string payload; ///< data of an accepted reply
};

/// A frame of the page: it lays out its own controls, loads them, shows their live values and handles them.
class PageFrame : public QGroupBox
{
public:
    PageFrame(FormMain &main, const char *name, const char *title);

    /// Clears and fills the lists of a model; a list that the model doesn't use keeps its entries.
    virtual void LoadRangeTables(const std::string &model);
    /// Reads from the module what the frame shows. Nothing is cached: the controls are the only copy of the
    /// module's settings. A command that the module doesn't answer is skipped, and its controls keep what
    /// they show. Does nothing for a node that the frame has no part in.
    virtual void Load(PageReading &reading);

    /// Whether a step of the refresh is to be sent as far as this frame has a say in it.
    virtual bool Wants(const PollStep &step, int channel);
    /// Shows the reply of a step, if it is this frame's.
    virtual void ShowLive(const LiveReply &reply);

    /// Has the frame note what the operator changes; once, when all controls are there.
    void WatchControls();
    /// Another page, or another matter, comes on show: what was changed on the one before, and not sent, goes
    /// with it.
    virtual void Leave();
    /// A load of the page has begun, or ended.
    void SetLoading(bool loading) { loading_ = loading; }

protected:
    FormMain &main() const { return main_; }
    bool IsLoading() const { return loading_; }

    // Loaded values. What the operator has changed behind the press that the present action runs for isn't
    // overwritten: neither by the load of a page nor by the reload at the end of an update.
    void ShowText(QLineEdit *entry, std::string_view text);
    /// Fills a list from its captions and leaves nothing selected.
    void FillList(QComboBox *list, std::span<const std::string_view> captions);
    void FillList(QComboBox *list, std::span<const RangeRow> rows);
    /// Selects a position; one that the list doesn't have leaves its selection.
    void Select(QComboBox *list, int position);
    void SetTick(QAbstractButton *button, bool ticked);

    using Handler = std::function<void(const NodeKey &node)>;

    /// Has a button run a handler that goes by what the frame holds at the press; `taken` reads that, and
    /// gives it. While the frame is loading, it goes by what the operator had changed by the press, and for
    /// the rest by what is loaded.
    void Writes(QAbstractButton *button, const std::function<Handler()> &taken);
    /// The same for one of several buttons of which the last that is pressed counts; `among` stands for them
    /// all.
    void Chooses(QAbstractButton *among, QAbstractButton *button, const std::function<Handler()> &taken);
    /// Has a button open the calibration of the node that is on show when it is pressed.
    void OpensCalibration(QAbstractButton *button, CalibrationMode mode);
    /// Has a point act through the gate, for the page that is on show when it is switched.
    void Wire(DIO *point, const std::function<void(const NodeKey &node)> &click);

    /// Which of several things that the frame shows by turns is on show.
    virtual std::string Matter() const { return {}; }
    /// Forgets that the operator has changed a control.
    static void Forget(QWidget *control);

    /// Whether the operator has changed a control of this page behind the press that the present action runs
    /// for, while it waited or since it runs.
    bool IsTouched(const QWidget *control) const;

private:
    /// A control and what stands in it.
    using Content = std::vector<std::pair<QPointer<QWidget>, QVariant>>;

    Content ContentOf(bool touchedOnly) const;
    std::string Fingerprint() const;
    Handler BehindLoad(const std::function<Handler()> &taken) const;

    FormMain &main_;
    bool loading_ = false;
};

/// Sets the text of all labels of an array.
template <class Labels>
void SetAll(const Labels &labels, const QString &text)
{
    for (auto *label : labels)
        label->setText(text);
}

void ShowAll(std::initializer_list<QWidget *> controls, bool show);

/// Leaves none of the options side by side chosen: what the module has isn't known.
void ChooseNone(std::span<QRadioButton *const> options);

/// Sets the lamps of a group from eight binary characters: element i from bit i.
void SetLamps(std::span<DIO *const> points, std::string_view bits);

/// Whether the character of a reply at a position from 1 is a digit other than 0.
bool IsSetAt(std::string_view reply, std::size_t position);

} // namespace vorn
