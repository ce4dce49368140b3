#pragma once

#include <string>

#include "system/LocalFiles.h"

namespace zd::sys {

// The game's platform on Windows, all of it the system's own: the data
// folder on the drive of the Windows folder, the folder of the program
// file, wave sound through the multimedia library, and documents opened by
// the shell.
class WindowsPlatform : public LocalFiles {
public:
    explicit WindowsPlatform(FileCalls* calls = nullptr) : LocalFiles(calls) {}

    std::string programFolder() override;
    int waveOutputCount() override;
    void playWave(const std::string& path) override;
    void openDocument(const std::string& path) override;
};

}  // namespace zd::sys
