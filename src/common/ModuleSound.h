#pragma once

#include <QLibrary>
#include <QString>
#include <functional>
#include <memory>

#include "Sound.h"

namespace mirvalde {

// What the sound module beside the executable exports: a player of sound files that rings
// `beep` for a file it cannot play.
using CreateSoundFunction = Sound* (*)(const std::function<void()>& beep);
inline constexpr const char* kCreateSoundSymbol = "MirvaldeCreateSound";

// Plays through the sound module, loaded when first wanted rather than at start-up: the audio
// libraries it brings are many, and the first window needs none of them. Without the module,
// every sound rings the beep and the game goes on.
class ModuleSound final : public Sound {
  public:
    // `modulePath` without its platform's prefix and suffix; `beep` by default the platform's.
    explicit ModuleSound(QString modulePath, std::function<void()> beep = {});
    ~ModuleSound() override;
    ModuleSound(const ModuleSound&) = delete;
    ModuleSound& operator=(const ModuleSound&) = delete;

    // Loads the module now, once; true when it plays.
    bool Load();
    void Play(const std::string& path) override;

  private:
    QLibrary module_;
    std::function<void()> beep_;
    bool tried_ = false;
    std::unique_ptr<Sound> sound_;
};

}  // namespace mirvalde
