#pragma once

#include <QObject>

#include <string>

class QAction;
class QMenu;

namespace vorn
{

class FormMain;
class LiveData;
class ModulePageLoad;
struct PageDescription;
class Pages;

/// The switchboard of the program: what a chosen node shows, loads and polls.
class PageSelection final : public QObject
{
    Q_OBJECT

public:
    PageSelection(FormMain &main, Pages &pages, ModulePageLoad &load, LiveData &live);

    void TreeView1_NodeClick(const std::string &key);
    /// Lists the slots of a base unit, whose page is on show, as they stand in the tree.
    void FillSlotList(const std::string &key);

Q_SIGNALS:
    /// The console of a model is to be shown; returns when it has closed. `consoleBaud` is the line speed as
    /// digits, empty if none is chosen.
    void ConsoleAsked(const std::string &model, const std::string &consoleBaud);

private:
    void LeftClick(const std::string &key);
    void RightClick(const std::string &key);
    void Timer1_Tick();

    void Classify(const std::string &key);
    void NotePort(const std::string &key);
    void ShowPage(const std::string &key);
    void ShowPort(const std::string &key);
    void ShowModule(const std::string &key);
    void ShowConsole(const std::string &key);
    void Apply(const PageDescription &page);
    bool IsPortPageOnShow(const std::string &key) const;
    void PopupCOM(const std::string &key);
    void PopupVORNModule(const std::string &key);
    QAction *Popup(QMenu *menu);
    void RunChosen(QAction *chosen);
    void ListView3900_ItemClick(const std::string &key);
    void ListView3900_DblClick(const std::string &key);

    FormMain &main_;
    Pages &pages_;
    ModulePageLoad &load_;
    LiveData &live_;
    bool ClickGuard = false; ///< a click is being handled; stays set behind a run-time error
    std::string NodeClass;   ///< "PC", "COM", or the model of the chosen node
};

} // namespace vorn
