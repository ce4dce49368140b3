#pragma once

#include <memory>
#include <random>
#include <string>

#include "system/Platform.h"

namespace zd::sys {

// The system's own calls under the files, one to one, so that a test can
// count them or make one of them fail: POSIX or Win32, as built.
class FileCalls;

// Folders and files on the local disk through the system's own calls, and
// the system's own answer to where the data folder goes; the platforms of
// the game and of the headless driver share it. Built for the system the
// program runs on.
class LocalFiles : public Platform {
public:
    // Goes through `calls` when given instead of the system itself.
    explicit LocalFiles(FileCalls* calls = nullptr);
    ~LocalFiles() override;
    LocalFiles(const LocalFiles&) = delete;
    LocalFiles& operator=(const LocalFiles&) = delete;

    // On Windows the drive of the Windows folder, "C:"; elsewhere the
    // user's data folder (XDG_DATA_HOME, else ~/.local/share), made if
    // missing. Empty when there is none.
    std::string systemDriveRoot() override;

    PathState pathState(const std::string& path) override;
    bool createFolder(const std::string& path) override;
    bool deleteFile(const std::string& path) override;
    std::optional<std::string> readLines(const std::string& path, int lines, int& error) override;
    bool replaceFile(const std::string& path, const std::string& bytes, int& error) override;
    std::unique_ptr<FileLock> lockFile(const std::string& path, int& error) override;

protected:
    FileCalls& calls() { return *calls_; }

private:
    std::unique_ptr<FileCalls> system_;
    FileCalls* calls_;
    std::minstd_rand names_;
};

}  // namespace zd::sys
