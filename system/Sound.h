#pragma once

#include <array>
#include <string>
#include <string_view>

#include "system/Platform.h"

namespace zd::sys {

// Sound numbers 1 to 5 and their files beside the program; any other number
// names no file and stays silent.
inline constexpr std::array<std::string_view, 5> kSoundFiles = {
    "START.WAV", "FRAGE.WAV", "FEHLER.WAV", "WHOOSH.WAV", "TADA.WAV"};

// The number of a sound file name, or 0.
int soundNumber(std::string_view fileName);

std::string soundPath(Platform& platform, const std::string& datei);

// True exactly when wave sound can be played now: asked anew at every call,
// so that a headset plugged in later is heard.
bool SoundOnBoard(Platform& platform);

// Starts the sound and returns at once; silence on every failure.
void SpieleSound(Platform& platform, int nummer, bool soundAn);

}  // namespace zd::sys
