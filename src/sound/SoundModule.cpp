// The module that plays the game's sounds, loaded by the game once its first window is up.

#include "ModuleSound.h"
#include "QtSound.h"

#include <type_traits>

extern "C" Q_DECL_EXPORT mirvalde::Sound* MirvaldeCreateSound(const std::function<void()>& beep) {
    return new mirvalde::QtSound(beep);
}

// The game looks the factory up by name, and calls it with the type it expects.
static_assert(std::is_same_v<decltype(&MirvaldeCreateSound), mirvalde::CreateSoundFunction>);
