#pragma once

#include <QString>

#ifndef _WIN32
#include <QLockFile>
#endif

namespace mirvalde {

// One copy of the program at a time, per user. On Windows a named mutex of the user's session;
// elsewhere a lock in the user's runtime folder. Either is freed by the holder's death, so a
// copy that was killed never keeps the player out.
class SingleInstance {
  public:
    explicit SingleInstance(const QString& name);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    // True while another living copy holds the lock. Once this copy has it, it keeps it.
    bool AnotherCopyRunning();

  private:
#ifdef _WIN32
    QString name_;
    void* mutex_ = nullptr;  // held by this copy once it has it
#else
    QString path_;
    QLockFile lock_;
    bool held_ = false;
#endif
};

}  // namespace mirvalde
