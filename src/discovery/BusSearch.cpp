#include "discovery/BusSearch.h"

#include "discovery/DeviceTree.h"
#include "platform/Animation.h"
#include "platform/Dialogs.h"
#include "platform/RuntimeError.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Conversions.h"
#include "protocol/FormatByte.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/Number.h"
#include "protocol/Registers.h"
#include "protocol/Text.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/FormScan.h"
#include "shell/Module1.h"
#include "shell/PageCommand.h"
#include "shell/RowList.h"
#include "shell/SlotNodes.h"

#include <QComboBox>
#include <QGroupBox>

#include <limits>

namespace vorn
{

namespace
{

constexpr int EndOfAddresses = 256;
constexpr std::string_view AddressZero = "00";

const char *const NothingFound = "Please Check:\r"
                                 "\r"
                                 "   <1> Communication port and baudrate \r"
                                 "   <2> Power supply voltage ( +10 to +30 VDC) \r"
                                 "   <3> Power wiring\r"
                                 "   <4> Communication line wiring\r"
                                 "   <5> Firmware version\r"
                                 "\r"
                                 "Then execute the 'Search' function to repeat scan";

/// What the operator typed as start address; what can't be read as a 16-bit number is 0.
int StartAddress(const std::string &text)
{
    try {
        return CInt(text);
    } catch (const RuntimeError &) {
        return 0;
    }
}

/// Address as the bus knows it: two digits, more above 255, the last two of the 16-bit form below 0.
std::string AddressText(int address)
{
    if (address < 0)
        return Right(Hex(static_cast<std::uint16_t>(address)), 2);
    return PadLeft(Hex(static_cast<std::uint32_t>(address)), 2, '0');
}

/// The text of a "$AA2" reply between the address and the data byte: "TTCC", or "CC" of a base unit.
std::string RecordMiddle(const std::string &reply)
{
    constexpr std::size_t Around = 5; // "!AA" and the data byte
    return reply.size() > Around ? Mid(reply, 4, reply.size() - Around) : std::string{};
}

} // namespace

BusSearch::BusSearch(FormMain &main, DeviceTree &tree) : main_(main), tree_(tree) {}

void BusSearch::Search_Click()
{
    if (NodeKey(main_.Nodes.Selected()).kind() != NodeKind::Port)
        return; // only a port can be searched
    main_.NowStatus("Searching module, Please wait moment....");
    RefreshHold hold(main_);
    const NoYieldHold yielding(main_, false);
    if (main_.FormFull_Screen)
        main_.FormFull_Screen->close();

    const auto answer =
        InputBox("Enter start address between 0 and 255 decimal", "Search Installed Modules", "0");
    if (!answer || answer->isEmpty()) {
        hold.Keep();
        return;
    }

    portKey_ = main_.Nodes.Selected();
    portDigits_ = Mid(portKey_, 7, 3);
    auto *formScan = new FormScan(main_, ProgressOf::Scan);
    formScan->show();
    main_.StopScan = false;
    main_.CommPortNo = static_cast<int>(Val(Mid(main_.Nodes.Text(portKey_), 4)));
    main_.SetPortBaud(main_.CommPortNo, main_.CmbPBaudrate->currentIndex());
    tree_.FoldSilently(portKey_);
    main_.Nodes.RemoveChildren(portKey_);
    if (TagOf(main_.ListView1) == portKey_)
        main_.ListView1->clear();
    formScan->Animation1->Open(QStringLiteral("findcomp"));
    formScan->Animation1->Play();
    Run(StartAddress(FromQString(*answer)));
    End();
}

/// The scan itself, with only the progress window alive.
void BusSearch::Run(int startAddress)
{
    main_.setCursor(Qt::BusyCursor);
    const DisabledWindow disabled(main_);
    Scan(startAddress);
    if (main_.Nodes.IsExpanded(portKey_))
        tree_.Collapse(portKey_);
    else
        main_.ChooseNode(portKey_);
    main_.unsetCursor();
    if (main_.FormScan)
        main_.FormScan->close();
}

void BusSearch::Scan(int startAddress)
{
    int address = startAddress;
    do {
        if (main_.StopScan || address > std::numeric_limits<std::int16_t>::max())
            return;
        const std::string hexaddr = AddressText(address);
        if (auto *formScan = qobject_cast<FormScan *>(main_.FormScan.data()))
            formScan->ShowAddress(hexaddr, address);
        if (address == 0)
            ScanAddressZero();
        else
            ScanAddress(hexaddr);
    } while (++address != EndOfAddresses); // a start above it runs on to the integer limit
}

void BusSearch::ScanAddress(const std::string &hexaddr)
{
    Finding finding{.hexaddr = hexaddr};
    main_.ReplyText.clear();
    main_.trans(Query(Register::ModelText, hexaddr), false);
    if (!IsAccepted(main_.ReplyText)) {
        if (main_.PortRefused)
            return; // told once is enough
        main_.trans(Query(Register::ModelText, hexaddr), true);
        if (!IsAccepted(main_.ReplyText))
            return;
        finding.chkflag = '1';
        finding.checksum = true;
    }
    AddModule(finding);
}

/// At address 0 a module in INIT state answers whatever its stored address is, and must be told from one that
/// is really set to 00.
void BusSearch::ScanAddressZero()
{
    Finding finding{.hexaddr = "00"};
    main_.ReplyText.clear();
    main_.trans(Query(Register::Configuration, AddressZero), false);
    if (main_.StopScan)
        return;
    if (!IsAccepted(main_.ReplyText)) {
        main_.trans(Query(Register::ModelText, AddressZero), true);
        if (!IsAccepted(main_.ReplyText))
            return;
        finding.chkflag = '1';
        finding.checksum = true;
        AddModule(finding);
        return;
    }

    const std::string record = main_.ReplyText;
    const bool checksumOn = Bit(HexToBin(Right(record, 2)), FormatBit::Checksum);
    const bool elsewhere = Mid(record, 2, 2) != "00";
    finding.chkflag = checksumOn ? '1' : '0';
    finding.init = checksumOn || elsewhere || TellInitStateByWriting(record);

    main_.trans(Query(Register::ModelText, AddressZero), false);
    if (!IsAccepted(main_.ReplyText))
        return;
    finding.plainZero = !finding.init;
    AddModule(finding);
}

/// Only a module in INIT state takes a change of its checksum bit. Tries it, puts the old record back, and
/// tells whether the change was taken.
bool BusSearch::TellInitStateByWriting(const std::string &record)
{
    const std::string oldrec = Mid(record, 2);
    std::string bits = HexToBin(Right(record, 2));
    if (bits.size() == 8)
        bits[7 - FormatBit::Checksum] = '1';
    main_.trans(Write(Register::Configuration, AddressZero, "00" + RecordMiddle(record) + BinToHex(bits)),
                false);
    if (IsAccepted(main_.ReplyText))
        WaitModuleReady(main_, "00", true);

    const bool init = IsAccepted(main_.ReplyText);
    main_.trans(Write(Register::Configuration, AddressZero, oldrec), init);
    if (IsAccepted(main_.ReplyText))
        WaitModuleReady(main_, "00", false);
    return init;
}

void BusSearch::AddModule(const Finding &finding)
{
    ModelReply reply = ReduceModelReply(main_.ReplyText, finding.checksum);
    main_.ReplyText = reply.reply;
    if (!AcceptModel(reply.model))
        return;
    const bool base = reply.model == BaseUnitModel;
    const NodeImages &images = base ? BaseUnitImage : ModuleImage;
    const std::string key = ModuleKey(finding.init, finding.chkflag, portDigits_, main_.ReplyText);
    const std::string text =
        ModuleNodeText(finding.init, finding.hexaddr, reply.model, base && finding.plainZero);
    if (main_.Nodes.Add(portKey_, key, text, images.normal, images.selected) && base)
        AddSlots(key, finding);
}

void BusSearch::AddSlots(const std::string &moduleKey, const Finding &finding)
{
    main_.trans(Query(Register::SlotTypes, finding.hexaddr), finding.checksum);
    AddSlotNodes(main_.Nodes, moduleKey, main_.ReplyText, finding.checksum);
}

void BusSearch::End()
{
    if (main_.Nodes.HasChildren(portKey_))
        tree_.ExpandNode(portKey_);
    else
        MsgBox(NothingFound, MsgBoxStyle::Critical,
               PortText(PortOfPortKey(portKey_)) + " No Modules found !");

    const std::string selected = main_.Nodes.Selected();
    if (TagOf(main_.Frame1) != selected)
        main_.ChooseNode(selected);
    main_.NowStatus("COM Port Status");
}

} // namespace vorn
