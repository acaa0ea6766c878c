#include "shell/PageCommand.h"

#include "platform/Events.h"
#include "platform/RuntimeError.h"
#include "protocol/CommandFrame.h"
#include "shell/FormMain.h"
#include "shell/Module1.h"

#include <QAbstractButton>

#include <memory>
#include <utility>

namespace vorn
{

Hourglass::Hourglass(FormMain &main) : main_(main)
{
    main_.setCursor(Qt::WaitCursor);
}

Hourglass::~Hourglass()
{
    main_.unsetCursor();
}

bool Send(FormMain &main, const NodeKey &node, std::string command, char lead)
{
    main.trans(command, node.checksum());
    return IsAccepted(main.ReplyText, lead);
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
    // From the event loop: the refresh that the load ends in must not become part of the handler.
    Queue(&main, [&main] {
        main.NodeLeftClick = true;
        main.TreeView1_NodeClick(main.Nodes.Selected());
    });
}

void OnClick(QAbstractButton *button, QObject *context, const std::function<void()> &handler)
{
    struct State {
        bool running = false;
        bool again = false;
    };
    const auto state = std::make_shared<State>();
    QObject::connect(button, &QAbstractButton::clicked, context, [button, context, handler, state] {
        if (std::exchange(state->running, true)) {
            state->again = button->isCheckable();
            return;
        }
        Queue(context, [handler, state] {
            do {
                state->again = false;
                try {
                    handler();
                } catch (const RuntimeError &) {
                    // What the handler had done by then stands.
                }
            } while (state->again);
            state->running = false;
        });
    });
}

void OnIdleClick(FormMain &main, QAbstractButton *button, QObject *context,
                 const std::function<void()> &handler)
{
    const auto running = std::make_shared<bool>(false);
    QObject::connect(button, &QAbstractButton::clicked, context, [&main, context, handler, running] {
        if (std::exchange(*running, true))
            return;
        Queue(context, [&main, context, handler, running] {
            main.WhenIdle(context, [handler, running] {
                try {
                    handler();
                } catch (const RuntimeError &) {
                    // What the handler had done by then stands.
                }
                *running = false;
            });
        });
    });
}

} // namespace vorn
