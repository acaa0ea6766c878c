#pragma once

#include "support/ProgramRun.h"

#include "simulator/Simulator.h"

#include "platform/WidgetText.h"

#include <QComboBox>

#include <memory>
#include <string>
#include <vector>

/// A rack of one module at 0A on COM2, its node in the tree.
class RackOfOne : public ProgramRun
{
public:
    void Rack(const std::string &module)
    {
        rack_ = std::make_unique<vornsim::Simulator>(
            vornsim::ParseRack("port 2 speed=9600\nmodule " + module + "\n"), ports.Path());
        rack_->Start();
    }

    vornsim::Simulator &rack() { return *rack_; }

    void AddNode(Operator &op, const std::string &key)
    {
        op.Gui([&] {
            main().TextTimeOut->setText(QStringLiteral("250"));
            main().Nodes.Add("KeyCOM002", key, "(0A) " + vorn::NodeKey(key).model(), "vorn4ico", "vorn4icoS");
        });
    }

    /// Adds the node and chooses it.
    void Open(Operator &op, const std::string &key)
    {
        AddNode(op, key);
        rack_->ClearTrace();
        Choose(op, key);
    }

    bool AwaitCommands(Operator &op, std::size_t count)
    {
        return op.WaitFor([&] { return rack_->Commands(2).size() >= count; }, "the commands");
    }

    int Position(const char *list) { return Find<QComboBox>(list)->currentIndex(); }
    std::vector<std::string> Entries(const char *list)
    {
        std::vector<std::string> entries;
        const auto *box = Find<QComboBox>(list);
        for (int i = 0; i < box->count(); ++i)
            entries.push_back(vorn::FromQString(box->itemText(i)));
        return entries;
    }

private:
    std::unique_ptr<vornsim::Simulator> rack_;
};
