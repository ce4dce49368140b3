#include "system/LocalFiles.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>

#include "system/FileRules.h"
#include "system/posix/FileCalls.h"

namespace zd::sys {

namespace fs = std::filesystem;

namespace {

class HeldLock : public FileLock {
public:
    HeldLock(FileCalls& calls, int fd) : calls_(calls), fd_(fd) {}
    ~HeldLock() override { calls_.close(fd_); }  // closing drops the lock
    HeldLock(const HeldLock&) = delete;
    HeldLock& operator=(const HeldLock&) = delete;

private:
    FileCalls& calls_;
    int fd_;
};

bool writeAll(FileCalls& calls, int fd, const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = calls.write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            if (n == 0) errno = EIO;
            return false;
        }
        done += static_cast<std::size_t>(n);
    }
    return true;
}

bool syncFolderOf(FileCalls& calls, const std::string& path) {
    fs::path folder = fs::path(path).parent_path();
    if (folder.empty()) folder = ".";
    const int fd = calls.open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0);
    if (fd < 0) return false;
    // Some file systems cannot flush a folder and say so with EINVAL; the
    // rename is then as safe as they can make it.
    const bool synced = calls.fsync(fd) == 0 || errno == EINVAL;
    const int syncErrno = errno;
    calls.close(fd);
    errno = syncErrno;
    return synced;
}

// XDG_DATA_HOME counts only as an absolute path, as the XDG rules say.
fs::path userDataFolder() {
    const char* dataHome = std::getenv("XDG_DATA_HOME");
    if (dataHome && fs::path(dataHome).is_absolute()) return dataHome;
    const char* home = std::getenv("HOME");
    if (home && *home) return fs::path(home) / ".local" / "share";
    return {};
}

}  // namespace

LocalFiles::LocalFiles(FileCalls* calls)
    : system_(std::make_unique<FileCalls>()),
      calls_(calls ? calls : system_.get()),
      names_(std::random_device{}()) {}

LocalFiles::~LocalFiles() = default;

std::string LocalFiles::systemDriveRoot() {
    const fs::path folder = userDataFolder();
    std::error_code ec;
    if (folder.empty() || (!fs::create_directories(folder, ec) && !fs::is_directory(folder, ec))) {
        return {};
    }
    return folder.string();
}

PathState LocalFiles::pathState(const std::string& path) {
    std::error_code ec;
    const fs::path p(path);
    (void)fs::status(p, ec);
    if (!ec) return PathState::Exists;
    if (ec != std::errc::no_such_file_or_directory) return PathState::OtherFailure;
    // Missing from a folder that exists is "not found"; a missing folder on
    // the way is another failure.
    fs::path parent = p.parent_path();
    if (parent.empty()) parent = ".";
    std::error_code parentEc;
    return fs::is_directory(parent, parentEc) ? PathState::NotFound : PathState::OtherFailure;
}

bool LocalFiles::createFolder(const std::string& path) {
    std::error_code ec;
    return fs::create_directory(path, ec) && !ec;
}

// Files only: a folder of that name stays.
bool LocalFiles::deleteFile(const std::string& path) {
    return calls_->unlink(path.c_str()) == 0;
}

std::optional<std::string> LocalFiles::readLines(const std::string& path, int lines, int& error) {
    const int fd = calls_->open(path.c_str(), O_RDONLY | O_CLOEXEC, 0);
    if (fd < 0) {
        error = errno;
        // A missing folder on the way is another failure than a missing file.
        if (error == ENOENT && pathState(path) == PathState::OtherFailure) error = ENOTDIR;
        return std::nullopt;
    }
    std::string bytes;
    rules::LineEnds ends(lines);
    char buffer[16384];
    while (!ends.complete()) {
        const ssize_t got = calls_->read(fd, buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) {
            error = errno;  // a folder fails here, with EISDIR
            calls_->close(fd);
            return std::nullopt;
        }
        if (got == 0) break;
        bytes.append(buffer, ends.take(buffer, static_cast<std::size_t>(got)));
    }
    calls_->close(fd);
    return bytes;
}

bool LocalFiles::replaceFile(const std::string& path, const std::string& bytes, int& error) {
    for (const fs::path& leftover : rules::leftoversOf(path)) calls_->unlink(leftover.c_str());
    // A name of this save's own: another copy of the game, or anything a
    // user keeps beside the list, is never overwritten.
    std::string temporary;
    int fd = -1;
    for (int attempt = 0; attempt < 100 && fd < 0; ++attempt) {
        temporary = rules::temporaryName(path, names_);
        fd = calls_->open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd < 0 && errno != EEXIST) break;
    }
    if (fd < 0) {
        error = errno;
        return false;
    }
    bool ok = writeAll(*calls_, fd, bytes) && calls_->fsync(fd) == 0;
    int failure = ok ? 0 : errno;
    // close() may report a write that failed late; such a file never
    // replaces the list.
    if (calls_->close(fd) != 0 && ok) {
        ok = false;
        failure = errno;
    }
    if (ok && calls_->rename(temporary.c_str(), path.c_str()) != 0) {
        ok = false;
        failure = errno;
    }
    if (!ok) {
        calls_->unlink(temporary.c_str());
        error = failure != 0 ? failure : EIO;
        return false;
    }
    if (!syncFolderOf(*calls_, path)) {
        // The new list is in place but may not survive a power loss.
        error = errno != 0 ? errno : EIO;
        return false;
    }
    return true;
}

std::unique_ptr<FileLock> LocalFiles::lockFile(const std::string& path, int& error) {
    const int fd = calls_->open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (fd < 0) {
        error = errno;
        return nullptr;
    }
    const auto giveUp = std::chrono::steady_clock::now() + rules::kLockPatience;
    while (calls_->flock(fd, LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || std::chrono::steady_clock::now() > giveUp) {
            error = errno;
            calls_->close(fd);
            return nullptr;
        }
        std::this_thread::sleep_for(rules::kLockPoll);
    }
    return std::make_unique<HeldLock>(*calls_, fd);
}

}  // namespace zd::sys
