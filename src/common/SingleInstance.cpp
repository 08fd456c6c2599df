#include "SingleInstance.h"

#include <QDir>
#include <QStandardPaths>

namespace mirvalde {
namespace {

QString LockPath(const QString& name) {
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty()) folder = QDir::tempPath();
    return folder + u'/' + name + QStringLiteral(".lock");
}

}  // namespace

SingleInstance::SingleInstance(const QString& name) : lock_(LockPath(name)) {
    lock_.setStaleLockTime(0);  // only the holder's death frees the lock, not its age
}

bool SingleInstance::AnotherCopyRunning() {
    if (!held_) held_ = lock_.tryLock(0);
    // A folder we cannot write to, or a full disk, must not keep the player out of the game:
    // only a living holder of the lock is another copy.
    return !held_ && lock_.error() == QLockFile::LockFailedError;
}

}  // namespace mirvalde
