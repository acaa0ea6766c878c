#pragma once

#include "screen/Child.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

/// A screen of its own, an X server without hardware and a window manager, and the eyes and hands before it.
/// Windows are known by their X id.
class Desktop final
{
public:
    /// Nothing that a program on the screen is waited for takes longer.
    static constexpr std::chrono::seconds Patience{20};

    /// Runs a tool to its end and returns what it wrote.
    using Runner = std::function<std::string(const Child::Command &)>;

    /// Puts up a screen.
    /// @throws std::runtime_error that says what didn't start
    Desktop();
    /// Looks at a screen that is there already; somebody else runs the tools.
    explicit Desktop(Runner runner);
    ~Desktop();

    /// What a program needs in its environment to appear on this screen.
    Child::Variables Variables() const;
    /// Runs a tool on the screen and returns what it wrote. A tool that hangs is ended.
    std::string Run(const Child::Command &command) const;

    /// @name Eyes
    /// @{
    /// Windows whose title fits a regular expression.
    std::vector<std::string> Windows(const std::string &title) const;
    /// The first such window as soon as there is one; empty if it never comes.
    std::string AwaitWindow(const std::string &title) const;
    /// Whether the last such window goes away.
    bool AwaitNoWindow(const std::string &title) const;
    std::string ActiveWindow() const;
    struct Size {
        int width = 0;
        int height = 0;
        friend bool operator==(const Size &, const Size &) = default;
    };
    Size SizeOf(const std::string &window) const;
    /// A picture of a window with its frame; of the whole screen without a window.
    bool TakePicture(const std::filesystem::path &file, const std::string &window = {}) const;
    static bool WaitFor(const std::function<bool()> &condition);
    /// @}

    /// @name Hands
    /// @{
    bool Activate(const std::string &window) const; ///< puts a window in front, with the keyboard
    void Press(const std::vector<std::string> &keys) const;
    void Type(const std::string &text) const;
    void Click(int x, int y) const; ///< left button, place on the screen
    void ClickIn(const std::string &window, int x, int y, int times = 1) const;
    void WheelDown(int x, int y) const;
    void WheelUp(int x, int y) const;
    /// Changes a window's size as its frame would.
    void Resize(const std::string &window, Size size) const;
    /// Drags the lower right corner of a window's frame inwards, by so many pixels both ways.
    void ShrinkByMouse(const std::string &window, int pixels) const;
    /// Asks a window to close, as the button of its frame does.
    void Close(const std::string &window) const;
    /// @}

private:
    void AtPlace(int x, int y, const char *button) const;

    std::unique_ptr<Child> server_;
    std::unique_ptr<Child> manager_;
    std::string display_;
    Runner runner_;
};
