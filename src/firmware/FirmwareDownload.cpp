#include "firmware/FirmwareDownload.h"

#include "firmware/DownloadF.h"
#include "platform/Dialogs.h"
#include "platform/Events.h"
#include "platform/ProgramDirectory.h"
#include "platform/WidgetText.h"
#include "protocol/CommandFrame.h"
#include "protocol/Registers.h"
#include "shell/Controls.h"
#include "shell/FormMain.h"
#include "shell/PageCommand.h"
#include "shell/RowList.h"
#include "shell/SlotNodes.h"

#include <QComboBox>
#include <QFileInfo>

#include <memory>

namespace vorn
{

namespace
{

constexpr std::string_view UnitAddress = "00";
constexpr int StartSpeed = 3; ///< list position of 9600
constexpr std::string_view Failed = "Firmware download failed, please reset the unit";

MsgBoxResult Box(std::string_view text, MsgBoxStyle style)
{
    return MsgBox(text, style, DownloadTitle);
}

std::string Instructions(std::string_view loaderName)
{
    return "(1). Connect the COM port of the host computer with the\r"
           "       RS-232 port on the VORN-3900.\r"
           "\r"
           "(2). Make sure the image file :   " +
           std::string(loaderName) +
           "\r"
           "       has copied to current directory.\r"
           "\r"
           "(3). Set address 0 in VORN-3900 and reset it.\r"
           "\r"
           "     Do you want to entry download process?";
}

} // namespace

void FirmwareDownload::CmdDownLoadF_Click(const NodeKey &node)
{
    const RefreshHold hold(main_);
    DoEvents();
    const LoaderImage loader = ReadLoaderImage();
    if (Box(Instructions(loader.name), MsgBoxStyle::Question) == MsgBoxResult::Yes &&
        Download(node, loader) == Then::Leave)
        return;
    main_.CmbPBaudrate->setCurrentIndex(StartSpeed);
    Rebuild(node);
}

/// Asks the unit what it is.
LoaderImage FirmwareDownload::ReadLoaderImage()
{
    extended_ = IsExtendedBaseUnit(main_.trans(Query(Register::ModelText, UnitAddress), false));
    if (!extended_)
        main_.trans(Query(Register::FirmwareVersion, UnitAddress), false);
    return LoaderImageFor(extended_, main_.ReplyText);
}

FirmwareDownload::Then FirmwareDownload::Download(const NodeKey &node, const LoaderImage &loader)
{
    const auto speed = AskSpeed();
    if (!speed)
        return Then::Leave;
    FirmwareImage loaderImage, mainImage;
    if (!ReadImages(loader, OpenAfile(), loaderImage, mainImage))
        return Then::Leave;

    main_.NowStatus("Now Download Firmware Program is processing , Please wait moment....");
    const Hourglass hourglass(main_);
    return Tell(DownloadRun(main_, loaderImage, mainImage, *speed).Run(), node);
}

/// List position of the line speed; nothing when the operator gives up.
std::optional<int> FirmwareDownload::AskSpeed()
{
    do {
        const auto dialog = std::make_unique<DownloadF>(&main_);
        dialog->exec();
        if (dialog->Selection >= 0)
            return dialog->Selection;
    } while (Box("  Baudrate setting error \rDo you want to entry download process?",
                 MsgBoxStyle::Question) == MsgBoxResult::Yes);
    return std::nullopt;
}

/// Has the operator choose the main image. Returns its path, an empty text when he gives up.
QString FirmwareDownload::OpenAfile()
{
    const std::string reply = main_.trans(Query(Register::ModelText, UnitAddress), false);
    if (IsAccepted(reply))
        extended_ = IsExtendedBaseUnit(reply);
    const MainImageOffer offer = MainImageFor(extended_);
    for (;;) {
        const auto path = ShowOpen(&main_, {.title = ToQString(DownloadTitle),
                                            .folder = ProgramDirectory(),
                                            .fileName = ToQString(offer.fileName),
                                            .extension = ToQString(offer.extension),
                                            .filter = ToQString(offer.filter),
                                            .anyName = true});
        if (path) {
            if (IsMainImagePath(path->toStdString()))
                return *path;
            Box("Selected Download filename incorrect", MsgBoxStyle::Critical);
        } else if (Box("Do you want to quit download process?", MsgBoxStyle::Question) == MsgBoxResult::Yes) {
            Box("Exit Download process\rPlease reset device and retry", MsgBoxStyle::Critical);
            return {};
        }
    }
}

/// Both images are in memory before anything is sent: whatever becomes of the files, no block is half one.
bool FirmwareDownload::ReadImages(const LoaderImage &loader, const QString &mainPath,
                                  FirmwareImage &loaderImage, FirmwareImage &mainImage)
{
    const QString loaderPath = ProgramFile(ToQString(loader.name));
    const QString path = mainPath.isEmpty() ? QString() : InAnyCase(mainPath);
    if (loaderPath.isEmpty() || path.isEmpty()) {
        Box("File Not Found \rPlease chick file name", MsgBoxStyle::Critical);
        return false;
    }
    return ReadImage(loaderPath, loader.blocks, loaderImage) && ReadImage(path, MainImageBlocks, mainImage);
}

bool FirmwareDownload::ReadImage(const QString &path, int blocks, FirmwareImage &image)
{
    const std::string name = FromQString(QFileInfo(path).fileName());
    switch (image.Read(std::filesystem::path(path.toStdU16String()), blocks)) {
    case FirmwareImage::Fault::None:
        return true;
    case FirmwareImage::Fault::Missing:
        Box("File Not Found \rPlease chick file name", MsgBoxStyle::Critical);
        break;
    case FirmwareImage::Fault::NoFile:
        Box("Image file is no file :\r" + name, MsgBoxStyle::Critical);
        break;
    case FirmwareImage::Fault::Unreadable:
        Box("Image file can't be read :\r" + name, MsgBoxStyle::Critical);
        break;
    case FirmwareImage::Fault::Short:
        Box("Image file too short :\r" + name + "\r" + std::to_string(image.Size()) + " bytes, " +
                std::to_string(image.Needed()) + " are needed",
            MsgBoxStyle::Critical);
        break;
    }
    return false;
}

FirmwareDownload::Then FirmwareDownload::Tell(DownloadRun::Outcome outcome, const NodeKey &node)
{
    switch (outcome) {
    case DownloadRun::Outcome::Completed:
        main_.NowStatus("Firmware download completed");
        Box("Firmware Download is completed ", MsgBoxStyle::Information);
        return Then::Close;
    case DownloadRun::Outcome::TransferFailed:
        main_.NowStatus(Failed);
        Box("Download process error \rPlease reset device ans retry", MsgBoxStyle::Critical);
        break;
    case DownloadRun::Outcome::SetupFailed:
        main_.NowStatus(Failed);
        Box("Download process setting error \rPlease reset device and retry", MsgBoxStyle::Critical);
        RemoveUnit(node);
        break;
    case DownloadRun::Outcome::BrokenOff:
        main_.NowStatus("Firmware download broken off, please reset the unit");
        break;
    }
    return Then::Leave;
}

/// Takes the unit out of tree and list, and loads the page of the node that is then selected.
void FirmwareDownload::RemoveUnit(const NodeKey &node)
{
    for (const std::string &slot : main_.Nodes.Children(node.text()))
        delete main_.ListView1->RowOf(slot);
    delete main_.ListView1->RowOf(node.text());
    main_.Nodes.Remove(node.text());
    main_.ChooseNode(main_.Nodes.Selected());
}

/// Reads the slots of the unit again.
void FirmwareDownload::Rebuild(const NodeKey &node)
{
    main_.Nodes.SetExpanded(node.text(), false);
    main_.Nodes.RemoveChildren(node.text());
    main_.trans(Query(Register::SlotTypes, UnitAddress), false);
    AddSlotNodes(main_.Nodes, node.text(), main_.ReplyText, false);
    Q_EMIT UnitRebuilt(node.text());
}

} // namespace vorn
