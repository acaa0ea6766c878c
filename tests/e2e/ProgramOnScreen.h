#pragma once

#include "screen/Child.h"
#include "screen/Desktop.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

/// Titles of the program's windows, as regular expressions.
namespace Title
{
inline const std::string Main = "^VORN 7000/3900 Series Setup / Utility Program$";
inline const std::string StartAddress = "^Search Installed Modules$";
inline const std::string Search = "Searching \\.\\.\\.$";
} // namespace Title

/// The built program and a rack as processes of their own, on a screen of their own, with settings of their
/// own.
class ProgramOnScreen : public ::testing::Test
{
protected:
    ProgramOnScreen();
    ~ProgramOnScreen() override;

    /// Starts a rack and waits for its ports. The same rack may be started again when it has ended.
    void StartRack(const std::string &description);
    std::unique_ptr<Child> NewProgram() const;
    /// Starts the program and waits for its main window, which has the keyboard then.
    void StartProgram();

    /// Opens the search of the port that is selected, up to the question for the start address.
    void OpenSearch();
    /// Searches from an address on, up to the end.
    void Search(const std::string &startAddress);
    /// Writes into the field of the port page.
    void SetTimeOut(const std::string &milliseconds);

    /// The text of the tree's present node, as the operator copies it.
    std::string PresentNode() const;
    std::string BoxText(const std::string &window) const;

    /// All that has passed on the bus, as the rack writes it down.
    std::string Traffic() const;
    /// Commands so far that begin so, from the rack's record of the line.
    int Commands(const std::string &begin) const;
    /// Whether so many more of them come.
    bool AwaitCommands(const std::string &begin, int more) const;
    bool PortIsFree() const;

    /// Closes the main window by its frame; the process is to end well, and to let the port go.
    void ExpectCloseEnds();
    /// Keeps a picture of the screen, named after the test.
    void KeepPicture(const std::string &name) const;

    Child::Variables Variables() const; ///< environment of the programs

    static constexpr int Port = 2;

    Desktop desktop;
    std::unique_ptr<Child> rack;
    std::unique_ptr<Child> program;
    std::string mainWindow;

private:
    std::string CopiedText() const;
    std::filesystem::path Link() const;
    std::filesystem::path Record() const { return home_ / "record"; }

    std::filesystem::path home_;
};
