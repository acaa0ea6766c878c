#pragma once

#include "firmware/DownloadRun.h"
#include "protocol/NodeKey.h"

#include <QObject>

#include <optional>
#include <string>

namespace vorn
{

class FormMain;

/// Puts new firmware into a base unit at address 0 of a point-to-point link: a loader image that comes with
/// the program, then the main image that the operator picks.
class FirmwareDownload final : public QObject
{
    Q_OBJECT

public:
    explicit FirmwareDownload(FormMain &main) : main_(main) {}

    /// The whole download for the unit on show, from the instructions to the closing box.
    void CmdDownLoadF_Click(const NodeKey &node);

Q_SIGNALS:
    /// The slots of a base unit have been read again.
    void UnitRebuilt(const std::string &key);

private:
    /// What goes on behind the questions: nothing more, or the closing steps.
    enum class Then { Leave, Close };

    LoaderImage ReadLoaderImage();
    Then Download(const NodeKey &node, const LoaderImage &loader);
    std::optional<int> AskSpeed();
    QString OpenAfile();
    bool ReadImages(const LoaderImage &loader, const QString &mainPath, FirmwareImage &loaderImage,
                    FirmwareImage &mainImage);
    bool ReadImage(const QString &path, int blocks, FirmwareImage &image);
    Then Tell(DownloadRun::Outcome outcome, const NodeKey &node);
    void RemoveUnit(const NodeKey &node);
    void Rebuild(const NodeKey &node);

    FormMain &main_;
    bool extended_ = false; ///< the unit says that it is a 3900E
};

} // namespace vorn
