#include "logger/LoggerTabs.h"

#include "logger/FrameMAlarmset.h"
#include "logger/FrameMemOperation.h"
#include "logger/FrameMemory.h"
#include "platform/Events.h"
#include "shell/FormMain.h"
#include "shell/Module1.h"
#include "shell/PageCommand.h"

#include <QComboBox>
#include <QSignalBlocker>
#include <QTabBar>

#include <utility>

namespace vorn
{

LoggerTabs::LoggerTabs(FormMain &main, Parts parts) : main_(main), parts_(std::move(parts))
{
    connect(parts_.tabStrip, &QTabBar::currentChanged, this, [this](int tab) {
        const NodeKey node(main_.PageOnShow());
        main_.Gate.TakeInPlace({.context = parts_.tabStrip,
                                .action =
                                    [this, node, tab] {
                                        if (tab != Module)
                                            main_.NowStatus(""); // the refresh has ended
                                        TabStrip1_Click(node, tab);
                                    },
                                .source = parts_.tabStrip,
                                .page = node.text()});
    });
    const auto storageMode = [this](int mode) { parts_.limits->AllowLimits(mode); };
    connect(parts_.memory->CmbDataStorage, &QComboBox::currentIndexChanged, this, storageMode);
    storageMode(parts_.memory->CmbDataStorage->currentIndex());

    const auto reload = [this](const NodeKey &node) {
        TabStrip1_Click(node, parts_.tabStrip->currentIndex());
    };
    parts_.memory->ReloadTab = reload;
    parts_.limits->ReloadTab = reload;
    parts_.operation->StorageMode = [this] { return parts_.memory->CmbDataStorage->currentIndex(); };
}

/// The refresh goes on behind the first tab only.
void LoggerTabs::TabStrip1_Click(const NodeKey &node, int tab)
{
    WaitTransIdle(main_);
    RefreshHold hold(main_);
    hold.Keep();
    const QSignalBlocker blocker(parts_.tabStrip);
    parts_.tabStrip->setCurrentIndex(tab); // a page that was loaded meanwhile has gone to the first one
    const std::string reply = main_.trans(Query(Register::MemoryConfiguration, node), node.checksum());
    parts_.memory->ShowStorageMode(reply);
    switch (tab) {
    case Module:
        ShowModule(node);
        break;
    case Memory:
        parts_.memory->ShowConfiguration(reply);
        ShowAlone(parts_.memory);
        break;
    case Limits:
        ReadLimits(node);
        break;
    default:
        parts_.limits->ClearChanged();
        parts_.operation->Enter();
        DoEvents();
        parts_.operation->ReadState(node);
        ShowAlone(parts_.operation);
        break;
    }
}

void LoggerTabs::ShowModule(const NodeKey &node)
{
    ShowAlone(nullptr);
    if (main_.PortRefused)
        return; // told once; the next click tries again
    main_.PauseRefresh = false;
    parts_.pollLiveData(node.text());
}

void LoggerTabs::ReadLimits(const NodeKey &node)
{
    parts_.tabStrip->hide();
    parts_.limits->ReadLimits(node);
    parts_.tabStrip->show();
    ShowAlone(parts_.limits);
}

/// Shows one of the logger's frames; null for those of the first tab.
void LoggerTabs::ShowAlone(const QWidget *frame) const
{
    for (QWidget *ofModule : parts_.module)
        ofModule->setVisible(!frame);
    for (QWidget *one : std::initializer_list<QWidget *>{parts_.memory, parts_.limits, parts_.operation})
        one->setVisible(frame && one == frame);
}

} // namespace vorn
