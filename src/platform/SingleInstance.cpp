#include "platform/SingleInstance.h"

#include <QDir>
#include <QStandardPaths>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace vorn
{

SingleInstance::SingleInstance()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty())
        folder = QStandardPaths::writableLocation(QStandardPaths::TempLocation);
    const QString name = QStringLiteral("vorn-%1.lock").arg(::getuid());
    const QByteArray path = QDir(folder).filePath(name).toLocal8Bit();
    fd_ = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    prevInstance_ = fd_ >= 0 && ::flock(fd_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

SingleInstance::~SingleInstance()
{
    if (fd_ >= 0)
        ::close(fd_);
}

} // namespace vorn
