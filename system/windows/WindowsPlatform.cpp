#include "system/windows/WindowsPlatform.h"

#include <windows.h>

#include <mmsystem.h>
#include <shellapi.h>

#include "system/Process.h"

namespace zd::sys {

std::string WindowsPlatform::programFolder() {
    return ownProgramFolder();
}

int WindowsPlatform::waveOutputCount() {
    return static_cast<int>(waveOutGetNumDevs());
}

// Plays on in the background; a path that cannot be played stays silent
// instead of giving the system's default sound.
void WindowsPlatform::playWave(const std::string& path) {
    sndPlaySoundA(path.c_str(), SND_ASYNC | SND_NODEFAULT);
}

// The viewer comes up maximised (show mode 3).
void WindowsPlatform::openDocument(const std::string& path) {
    ShellExecuteA(nullptr, "open", path.c_str(), nullptr, nullptr, SW_SHOWMAXIMIZED);
}

}  // namespace zd::sys
