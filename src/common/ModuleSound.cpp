#include "ModuleSound.h"

#include <QApplication>

namespace mirvalde {

ModuleSound::ModuleSound(QString modulePath, std::function<void()> beep)
    : module_(modulePath), beep_(beep ? std::move(beep) : [] { QApplication::beep(); }) {}

// The player goes first; the module itself stays loaded to the end of the process.
ModuleSound::~ModuleSound() = default;

bool ModuleSound::Load() {
    if (tried_) return sound_ != nullptr;
    tried_ = true;
    const auto create = reinterpret_cast<CreateSoundFunction>(module_.resolve(kCreateSoundSymbol));
    if (!create) {
        qWarning("Mirvalde : pas de son, %s", qPrintable(module_.errorString()));
        return false;
    }
    sound_.reset(create(beep_));
    return true;
}

void ModuleSound::Play(const std::string& path) {
    if (Load()) {
        sound_->Play(path);
    } else {
        beep_();
    }
}

}  // namespace mirvalde
