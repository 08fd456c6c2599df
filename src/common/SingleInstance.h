#pragma once

#include <QLockFile>
#include <QString>

namespace mirvalde {

// One copy of the program at a time, per user. The lock lives in the user's runtime folder;
// a lock left by a copy that was killed is taken over.
class SingleInstance {
  public:
    explicit SingleInstance(const QString& name);

    // True while another living copy holds the lock. Once this copy has it, it keeps it.
    bool AnotherCopyRunning();

  private:
    QLockFile lock_;
    bool held_ = false;
};

}  // namespace mirvalde
