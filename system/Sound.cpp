#include "system/Sound.h"

#include "system/Dateien.h"

namespace zd::sys {

int soundNumber(std::string_view fileName) {
    for (std::size_t i = 0; i < kSoundFiles.size(); ++i) {
        if (kSoundFiles[i] == fileName) return static_cast<int>(i) + 1;
    }
    return 0;
}

std::string soundPath(Platform& platform, const std::string& datei) {
    return PfadMitTrenner(platform.programFolder()) + datei;
}

bool SoundOnBoard(Platform& platform) {
    return platform.waveOutputCount() > 0;
}

void SpieleSound(Platform& platform, int nummer, bool soundAn) {
    std::string name;
    if (nummer >= 1 && nummer <= static_cast<int>(kSoundFiles.size())) {
        name = std::string(kSoundFiles[static_cast<std::size_t>(nummer - 1)]);
    }
    // The path is worked out even with sound off; a number without a file
    // gives the bare folder, which is no wave file.
    const std::string pfad = soundPath(platform, name);
    if (name.empty()) return;
    if (ExistiertDatei(platform, pfad) && SoundOnBoard(platform) && soundAn) {
        platform.playWave(pfad);
    }
}

}  // namespace zd::sys
