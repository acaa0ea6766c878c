#pragma once

#include <QObject>

#include <string>

namespace vorn
{

class DeviceTree;
class FormMain;

/// Fills the tree below a port: asks each address from a start address to 255 for its model and adds a node
/// for each module that the catalogue knows, with the slots and channels of base units.
class BusSearch final : public QObject
{
public:
    BusSearch(FormMain &main, DeviceTree &tree);

    /// The whole search of the selected port, from the prompt for the start address to the closing message.
    void Search_Click();

private:
    /// A module as the search found it.
    struct Finding {
        bool init = false;      ///< in INIT state
        char chkflag = '0';     ///< checksum digit of its keys
        bool plainZero = false; ///< really set to address 00, without checksum
        std::string hexaddr;    ///< address that it answers at
        bool checksum = false;  ///< transactions with it carry a checksum
    };

    void Run(int startAddress);
    void Scan(int startAddress);
    void ScanAddress(const std::string &hexaddr);
    void ScanAddressZero();
    bool TellInitStateByWriting(const std::string &record);
    /// Adds the node of the module whose "$AAM" reply is in `ReplyText`, unless the catalogue doesn't know
    /// it.
    void AddModule(const Finding &finding);
    void AddSlots(const std::string &moduleKey, const Finding &finding);
    void End();

    FormMain &main_;
    DeviceTree &tree_;
    std::string portKey_;
    std::string portDigits_;
};

} // namespace vorn
