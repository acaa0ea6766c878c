#pragma once

#include "screen/Desktop.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QRect>

#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>

class QWidget;

namespace vorn
{
class Program;
}

/// One page of the tour: which node's, where its picture goes, and the control whose filling shows that the
/// page lives.
struct TourStop;

/// A walk through the program with mouse and keyboard: search, the module list, one page of each kind. The
/// hands work on the screen from outside; only the eyes look into the program, on the window's thread.
class Tour final
{
public:
    Tour(vorn::Program &program, Desktop &desktop, std::filesystem::path folder);

    /// Walks, and prints what it finds. Runs on a thread of its own, since the program's handlers loop.
    /// @throws std::runtime_error that says what didn't come
    void Walk();

private:
    /// Looks at something on the window's thread.
    template <class Look>
    auto Gui(Look look) const
    {
        using Result = std::invoke_result_t<Look>;
        const auto result = std::make_shared<std::promise<Result>>();
        QMetaObject::invokeMethod(
            qApp, [result, &look] { result->set_value(look()); }, Qt::QueuedConnection);
        std::future<Result> future = result->get_future();
        if (future.wait_for(Desktop::Patience) != std::future_status::ready)
            throw std::runtime_error("the window stands still");
        return future.get();
    }

    void Await(const std::function<bool()> &condition, const std::string &what) const;
    void Click(const std::function<QRect()> &place) const;
    void TakePicture(const char *name, const std::function<QWidget *()> &window) const;
    void TakePicture(const char *name) const;

    void OpenWindow();
    void ShortenTimeOut();
    void UseTerminal();
    void UseDataScope();
    void PressTool(int button);
    void Search();
    void AwaitSearch();
    void Visit(const TourStop &stop);
    void VisitConsole(const char *model);
    void ShowHelp();
    void PrintTree() const;

    std::string FirstNode(const TourStop &stop) const;
    QRect PlaceOf(const std::string &key) const;
    void Unfold(const std::string &key);
    void Reveal(const std::string &key);
    void Choose(const std::string &key);

    vorn::Program &program_;
    Desktop &desktop_;
    std::filesystem::path folder_;
};
