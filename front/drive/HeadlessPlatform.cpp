#include "front/drive/HeadlessPlatform.h"

#include <filesystem>

#include "system/Sound.h"

namespace zd::drive {

HeadlessPlatform::HeadlessPlatform(std::ostream& out, std::string programFolder,
                                   std::optional<std::string> driveRoot, bool soundDevice,
                                   sys::FileCalls* calls)
    : LocalFiles(calls),
      out_(out),
      programFolder_(std::move(programFolder)),
      driveRoot_(std::move(driveRoot)),
      soundDevice_(soundDevice) {}

std::string HeadlessPlatform::systemDriveRoot() {
    return driveRoot_ ? *driveRoot_ : LocalFiles::systemDriveRoot();
}

void HeadlessPlatform::playWave(const std::string& path) {
    // A folder or an empty file has nothing to play: silent, as in the game.
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec)) return;
    const auto size = std::filesystem::file_size(path, ec);
    if (ec || size == 0) return;
    const std::string name = std::filesystem::path(path).filename().string();
    out_ << "sound " << sys::soundNumber(name) << '\n';
}

void HeadlessPlatform::openDocument(const std::string& path) {
    out_ << "open " << std::filesystem::path(path).filename().string() << '\n';
}

}  // namespace zd::drive
