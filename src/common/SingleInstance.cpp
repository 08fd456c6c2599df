#include "SingleInstance.h"

#include <QDateTime>
#include <QFileInfo>

#ifdef _WIN32
#include <windows.h>
#else
#include <QDir>
#include <QStandardPaths>
#endif

namespace mirvalde {

#ifdef _WIN32

SingleInstance::SingleInstance(const QString& name) : name_(name) {}

SingleInstance::~SingleInstance() {
    if (mutex_) CloseHandle(mutex_);
}

bool SingleInstance::AnotherCopyRunning() {
    if (mutex_) return false;
    const QString object = QStringLiteral("Local\\") + name_;
    mutex_ = CreateMutexW(nullptr, FALSE, reinterpret_cast<LPCWSTR>(object.utf16()));
    // Without a mutex at all, nothing tells of another copy: the player is let in.
    if (!mutex_) return false;
    if (GetLastError() == ERROR_ALREADY_EXISTS) {
        CloseHandle(mutex_);
        mutex_ = nullptr;
        return true;
    }
    return false;
}

#else

namespace {

QString LockPath(const QString& name) {
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty()) folder = QDir::tempPath();
    return folder + u'/' + name + QStringLiteral(".lock");
}

}  // namespace

SingleInstance::SingleInstance(const QString& name) : path_(LockPath(name)), lock_(path_) {
    lock_.setStaleLockTime(0);  // only the holder's death frees the lock, not its age
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::AnotherCopyRunning() {
    if (!held_) held_ = lock_.tryLock(0);
    // A copy killed as it took the lock leaves it naming no holder. Once nobody can still be
    // writing it, such a lock keeps nobody out.
    qint64 pid = 0;
    QString host, application;
    if (!held_ && lock_.error() == QLockFile::LockFailedError &&
        !lock_.getLockInfo(&pid, &host, &application) &&
        QFileInfo(path_).lastModified().secsTo(QDateTime::currentDateTime()) > 5 &&
        lock_.removeStaleLockFile()) {
        held_ = lock_.tryLock(0);
    }
    // A folder we cannot write to, or a full disk, must not keep the player out of the game:
    // only a living holder of the lock is another copy.
    return !held_ && lock_.error() == QLockFile::LockFailedError;
}

#endif

}  // namespace mirvalde
