#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <map>
#include <memory>

#include "Sound.h"

class QSoundEffect;

namespace mirvalde {

class QtSound final : public Sound {
  public:
    // `beep` rings when a file is missing; by default the platform's own beep.
    explicit QtSound(std::function<void()> beep = {});
    ~QtSound() override;
    QtSound(const QtSound&) = delete;
    QtSound& operator=(const QtSound&) = delete;

    void Play(const std::string& path) override;

    // True once every file played so far has been read, or found unreadable. Qt reads them
    // on a thread of its own, which must not be cut short at the end of a run.
    bool Loaded() const;

  private:
    std::function<void()> beep_;
    // One effect per file, kept loaded: the second play of a sound starts at once.
    std::map<QString, std::unique_ptr<QSoundEffect>> effects_;
    QSoundEffect* playing_ = nullptr;
};

}  // namespace mirvalde
