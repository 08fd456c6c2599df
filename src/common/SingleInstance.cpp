#include "SingleInstance.h"

#include <QDir>
#include <QStandardPaths>

namespace mirvalde {

SingleInstance::SingleInstance(const QString& name) {
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty()) folder = QDir::tempPath();
    lock_ = std::make_unique<QLockFile>(folder + u'/' + name + QStringLiteral(".lock"));
    lock_->setStaleLockTime(0);  // only the holder's death frees the lock, not its age
}

bool SingleInstance::AnotherCopyRunning() {
    if (!held_) held_ = lock_->tryLock(0);
    if (!held_ && lock_->error() == QLockFile::PermissionError) {
        // A folder we cannot write to must not keep the player out of the game.
        return false;
    }
    return !held_;
}

}  // namespace mirvalde
