#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <map>

#include "Sound.h"

class QSoundEffect;

namespace mirvalde {

class QtSound final : public Sound {
  public:
    // `beep` rings when a file is missing; by default the platform's own beep.
    explicit QtSound(std::function<void()> beep = {});
    ~QtSound() override;

    void Play(const std::string& path) override;

  private:
    std::function<void()> beep_;
    // One effect per file, kept loaded: the second play of a sound starts at once.
    std::map<QString, QSoundEffect*> effects_;
    QSoundEffect* playing_ = nullptr;
};

}  // namespace mirvalde
