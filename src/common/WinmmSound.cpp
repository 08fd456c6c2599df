#include "WinmmSound.h"

#include <windows.h>
// After <windows.h>, which it needs.
#include <mmsystem.h>

#include <string>

namespace mirvalde {

void WinmmSound::Play(const std::string& path) {
    // The path comes in UTF-8. Played asynchronously, it cuts the sound still playing; a
    // missing file plays the system's default sound, and no failure stops the game.
    const int length = MultiByteToWideChar(CP_UTF8, 0, path.c_str(), -1, nullptr, 0);
    if (length <= 0) return;
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, path.c_str(), -1, wide.data(), length);
    // The ANSI call takes the path in the user's code page; a folder whose name that code page
    // cannot write is handed over in UTF-16 instead.
    BOOL lossy = FALSE;
    const int ansiLength = WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.c_str(), -1,
                                               nullptr, 0, nullptr, &lossy);
    if (ansiLength > 0 && !lossy) {
        std::string ansi(static_cast<std::size_t>(ansiLength), '\0');
        WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.c_str(), -1, ansi.data(), ansiLength,
                            nullptr, nullptr);
        sndPlaySoundA(ansi.c_str(), SND_ASYNC);
    } else {
        sndPlaySoundW(wide.c_str(), SND_ASYNC);
    }
}

}  // namespace mirvalde
