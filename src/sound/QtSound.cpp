#include "QtSound.h"

#include <QApplication>
#include <QFileInfo>
#include <QSoundEffect>
#include <QUrl>

namespace mirvalde {

QtSound::QtSound(std::function<void()> beep)
    : beep_(beep ? std::move(beep) : [] { QApplication::beep(); }) {}

QtSound::~QtSound() = default;

bool QtSound::Loaded() const {
    for (const auto& [path, effect] : effects_) {
        if (effect->status() == QSoundEffect::Loading) return false;
    }
    return true;
}

void QtSound::Play(const std::string& path) {
    const QString file = QString::fromStdString(path);
    if (playing_) playing_->stop();
    playing_ = nullptr;
    if (!QFileInfo(file).isFile()) {
        beep_();
        return;
    }
    std::unique_ptr<QSoundEffect>& effect = effects_[file];
    if (!effect) {
        effect = std::make_unique<QSoundEffect>();
        effect->setSource(QUrl::fromLocalFile(file));
    }
    // play() returns at once; with no audio device Qt only warns, and nothing waits on it.
    effect->play();
    playing_ = effect.get();
}

}  // namespace mirvalde
