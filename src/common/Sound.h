#pragma once

#include <string>

namespace mirvalde {

// Plays a sound file without waiting for it.
class Sound {
  public:
    virtual ~Sound() = default;
    // A new sound cuts the one still playing; a missing file rings the platform's beep.
    virtual void Play(const std::string& path) = 0;
};

}  // namespace mirvalde
