#include "platform/FileLock.h"

#include <QFile>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace vorn
{

bool IsLockedElsewhere(const QString &path)
{
    const int file = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return false;
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    const bool ofRange = ::fcntl(file, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
    const bool ofFile = ::flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    ::close(file);
    return ofRange || ofFile;
}

} // namespace vorn
