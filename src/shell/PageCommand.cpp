#include "shell/PageCommand.h"

#include "protocol/CommandFrame.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/Module1.h"

#include <QAbstractButton>

#include <utility>

namespace vorn
{

bool Send(FormMain &main, const NodeKey &node, std::string command, char lead)
{
    return IsAccepted(main.trans(command, node.checksum()), lead);
}

void WaitStored(FormMain &main, const NodeKey &node)
{
    const Hourglass hourglass(main);
    WaitModuleReady(main, node.busAddress(), node.checksum());
}

bool Store(FormMain &main, const NodeKey &node, std::string command)
{
    if (!Send(main, node, std::move(command)))
        return false;
    WaitStored(main, node);
    return true;
}

void Reload(FormMain &main)
{
    main.ChooseNode(main.Nodes.Selected());
}

RefreshHold::RefreshHold(FormMain &main) : main_(main)
{
    main_.PauseRefresh = true;
    main_.Timer1.stop();
}

RefreshHold::~RefreshHold()
{
    if (kept_)
        return;
    main_.PauseRefresh = false;
    main_.Timer1.start();
}

NoYieldHold::NoYieldHold(FormMain &main, bool noYield)
    : main_(main), before_(std::exchange(main.NoYield, noYield))
{
}

NoYieldHold::~NoYieldHold()
{
    main_.NoYield = before_;
}

void OnClick(FormMain &main, QAbstractButton *button, QObject *context,
             const std::function<void(const NodeKey &)> &handler)
{
    QObject::connect(button, &QAbstractButton::clicked, context,
                     [&main, button, context, handler] { main.TakeForPage(context, button, handler); });
}

void OnTick(FormMain &main, QAbstractButton *box, QObject *context,
            const std::function<void(const NodeKey &, bool)> &handler)
{
    QObject::connect(box, &QAbstractButton::clicked, context, [&main, context, handler](bool ticked) {
        main.TakeForPage(context, nullptr, [handler, ticked](const NodeKey &node) { handler(node, ticked); });
    });
}

void OnWindowClick(Gate &gate, QAbstractButton *button, QWidget *window, const std::function<void()> &handler)
{
    OnWindowClickWith(gate, button, window, [handler] { return handler; });
}

void OnWindowClickWith(Gate &gate, QAbstractButton *button, QWidget *window,
                       const std::function<std::function<void()>()> &taken)
{
    QObject::connect(button, &QAbstractButton::clicked, window, [&gate, button, window, taken] {
        gate.Take({.context = window, .action = taken(), .source = button});
    });
}

} // namespace vorn
