#pragma once

#include "Fault.h"
#include "Loader.h"
#include "Rack.h"
#include "Unit.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace vornsim
{

using TimePoint = std::chrono::steady_clock::time_point;

/// A stand-alone module, or a base unit with its cards, as the bus sees it: address, line speed, checksum,
/// INIT state and the silence of a restart.
class Module
{
public:
    /// @param seed  gives the moving values of each module a phase of their own
    /// @throws RackError for a setting that the model hasn't got or can't take
    Module(const ModuleDescription &description, unsigned seed);

    /// Where the module answers: its stored address, 00 in INIT state.
    const std::string &Address() const { return address_; }
    int Speed() const { return speed_; }
    bool HasChecksum() const { return checksum_; }
    std::string Model() const { return std::string(unit_.Model().name); }
    std::string Describe() const; ///< one line for a listing

    struct Heard {
        Reply reply;
        std::optional<Fault> fault; ///< how the reply is spoilt, if it is
    };

    /// Hears a line of the bus, without its carriage return.
    /// @param time    the simulator's clock, in milliseconds, to which all values refer
    /// @param now     when the line was complete, to which a restart refers
    /// @param shared  faults of the port, which act where the module has none
    /// @return nothing when the line isn't for this module, or the module is silent
    std::optional<Heard> Hear(std::string_view line, int speed, double time, TimePoint now, Faults &shared);

    /// Whether a byte at the beginning of a line begins a block of an image for this module.
    bool BeginsFrame(char first, int speed) const;
    /// Hears such a block, `Loader::FrameSize` bytes.
    std::optional<Heard> HearFrame(std::string_view frame, Faults &shared);
    /// The name of a block for listings, such as "main0005".
    std::string NameOfFrame(std::string_view frame) const { return loader_.NameOf(frame); }
    /// What a download has put into a base unit since it began.
    const std::string &Image(ImageKind kind) const { return loader_.Image(kind); }

    /// @name Settings and states by rack file name
    /// Those of a card begin with "slot2.".
    /// @throws std::invalid_argument for a name or value that isn't known
    /// @{
    void Set(std::string_view name, std::string_view value, double time);
    std::string Get(std::string_view name, double time);
    /// @}

    Faults &OwnFaults() { return faults_; }

private:
    std::optional<std::string_view> Understood(std::string_view line) const;
    std::optional<Heard> HearLoader(std::string_view line, int speed, TimePoint now, Faults &shared);
    std::optional<Fault> MeetFault(std::string_view command, Faults &shared);
    void StartLoaded(TimePoint now);
    void SaveImages() const;
    Answer ExecuteLine(std::string_view line, double time);
    Answer Execute(std::string_view command, double time);
    void DriveConnectedOutputs(double time);
    Unit &UnitOf(std::string_view &name);
    void Refresh();

    Unit unit_;
    std::map<int, Unit> cards_;
    Faults faults_;
    TimePoint silentUntil_{};
    Loader loader_;

    // Copies of the settings that decide whether a line is for this module: most lines are for another one.
    std::string address_;
    int speed_ = 0;
    bool checksum_ = false;
};

/// Throws the error that building a module of the description would throw.
void CheckModule(const ModuleDescription &description);

} // namespace vornsim
