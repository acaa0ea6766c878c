#pragma once

#include <QObject>

#include <string>

class QLineEdit;

namespace vorn
{

class FormMain;
class ModulePageLoad;
class NodeKey;
class Pages;
enum class CounterField;
enum class FilterField;
struct CounterRead;

/// The counter and frequency modules: choosing and writing a counter, starting and stopping it, input stage
/// and filter.
class CounterPage final : public QObject
{
public:
    CounterPage(FormMain &main, Pages &pages, ModulePageLoad &load);

private:
    void CmdCounterSet_Click(int counter);
    void ComCUpdata_Click();
    void OptionCch0S_Click(bool start);
    void OptionFSel_Click(int element);
    void ComFUpdata_Click();

    void Show(const NodeKey &node, int counter, const CounterRead &read);
    void ShowFields(const NodeKey &node, int counter);
    void SetCount(CounterField field, const std::string &payload);
    void ReadFilter(const NodeKey &node);
    QLineEdit *Field(CounterField field) const;
    QLineEdit *Field(FilterField field) const;

    FormMain &main_;
    Pages &pages_;
    ModulePageLoad &load_;
};

} // namespace vorn
