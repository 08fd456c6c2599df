#pragma once

#include "Sound.h"

namespace mirvalde {

// Windows plays sound files itself, through winmm: no module and no audio library to load.
class WinmmSound final : public Sound {
  public:
    void Play(const std::string& path) override;
};

}  // namespace mirvalde
