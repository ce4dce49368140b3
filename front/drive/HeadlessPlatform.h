#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "system/LocalFiles.h"

namespace zd::drive {

// The platform as the headless driver sees it: real files, a chosen drive
// root or the system's own, and sounds and documents written down instead
// of played or opened.
class HeadlessPlatform : public sys::LocalFiles {
public:
    // `driveRoot`: empty for none, nothing for the system's own.
    HeadlessPlatform(std::ostream& out, std::string programFolder,
                     std::optional<std::string> driveRoot, bool soundDevice,
                     sys::FileCalls* calls = nullptr);

    std::string systemDriveRoot() override;
    std::string programFolder() override { return programFolder_; }
    int waveOutputCount() override { return soundDevice_ ? 1 : 0; }
    void playWave(const std::string& path) override;
    void openDocument(const std::string& path) override;

private:
    std::ostream& out_;
    std::string programFolder_;
    std::optional<std::string> driveRoot_;
    bool soundDevice_;
};

}  // namespace zd::drive
