#pragma once

#include "Fault.h"

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vornsim
{

/// A rack that can't be built. The text begins "line 7: " when the rack was read from a text.
class RackError : public std::runtime_error
{
public:
    RackError(int line, const std::string &text);
    int line() const { return line_; } ///< counted from 1; 0 when the rack wasn't read from a text

private:
    int line_;
};

/// A setting of a module or card, under its rack file name.
struct Setting {
    std::string name;
    std::string value;
    int line = 0;
};

struct CardDescription {
    std::string model;
    std::vector<Setting> settings = {};
    int line = 0;
};

struct ModuleDescription {
    std::string model;
    std::vector<Setting> settings = {};
    std::map<int, CardDescription> cards = {}; ///< by slot
    std::vector<Fault> faults = {};
    int line = 0;
};

/// Another master on the bus. A host that listens on the port hears its commands and the modules' replies.
struct Master {
    std::vector<std::string> send;        ///< commands without checksum and carriage return, sent in turn
    std::chrono::milliseconds every{200}; ///< from one command to the next; 0: as fast as the host reads
    std::size_t cut = 0;                  ///< every line in two pieces, cut behind so many bytes; 0: whole
    std::chrono::milliseconds gap{10};    ///< between the two pieces
    int times = 0;                        ///< how many commands; 0 is for ever
    bool checksum = false;                ///< the commands get their two characters
};

struct PortDescription {
    int number = 1;
    int speed = 9600;                   ///< of modules that don't name one, and of the second master
    bool pace = false;                  ///< bytes take their time at line speed
    std::chrono::milliseconds delay{0}; ///< by which all replies to the host come later
    std::vector<ModuleDescription> modules = {};
    std::vector<Fault> faults = {};
    std::optional<Master> master = {};
};

struct Rack {
    std::vector<PortDescription> ports;
};

/// Reads a rack file; README.md describes its form.
/// @throws RackError for the first line that is wrong
Rack ParseRack(std::string_view text);

/// A rack with every model, on COM2 and COM4, and another master on COM6.
Rack DemoRack();

} // namespace vornsim
