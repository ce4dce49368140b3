#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <thread>

#include "system/Platform.h"

namespace zd::sys {

namespace fs = std::filesystem;

namespace {

// How long a save waits for another running copy of the game to finish its
// own; saving takes milliseconds, so this is only reached by a hung copy.
constexpr auto kLockPatience = std::chrono::seconds(5);
constexpr auto kLockPoll = std::chrono::milliseconds(10);

constexpr const char* kTemporaryMark = ".~";

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

}  // namespace

LocalFiles::LocalFiles(FileCalls* calls)
    : calls_(calls ? calls : &system_), names_(std::random_device{}()) {}

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
bool LocalFiles::deleteFile(const std::string& path) { return calls_->unlink(path.c_str()) == 0; }

std::optional<std::string> LocalFiles::readLines(const std::string& path, int lines, int& error) {
    const int fd = calls_->open(path.c_str(), O_RDONLY | O_CLOEXEC, 0);
    if (fd < 0) {
        error = errno;
        // A missing folder on the way is another failure than a missing file.
        if (error == ENOENT && pathState(path) == PathState::OtherFailure) error = ENOTDIR;
        return std::nullopt;
    }
    std::string bytes;
    int ends = 0;
    bool afterCr = false;
    char buffer[16384];
    while (ends < lines) {
        const ssize_t got = calls_->read(fd, buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) {
            error = errno;  // a folder fails here, with EISDIR
            calls_->close(fd);
            return std::nullopt;
        }
        if (got == 0) break;
        std::size_t keep = static_cast<std::size_t>(got);
        for (std::size_t i = 0; i < static_cast<std::size_t>(got); ++i) {
            const char c = buffer[i];
            const bool secondHalfOfCrLf = c == '\n' && afterCr;
            afterCr = c == '\r';
            if ((c == '\r' || c == '\n') && !secondHalfOfCrLf && ++ends == lines) {
                keep = i + 1;
                break;
            }
        }
        bytes.append(buffer, keep);
    }
    calls_->close(fd);
    return bytes;
}

bool LocalFiles::writeAll(int fd, const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = calls_->write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            if (n == 0) errno = EIO;
            return false;
        }
        done += static_cast<std::size_t>(n);
    }
    return true;
}

bool LocalFiles::syncFolderOf(const std::string& path) {
    fs::path folder = fs::path(path).parent_path();
    if (folder.empty()) folder = ".";
    const int fd = calls_->open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0);
    if (fd < 0) return false;
    // Some file systems cannot flush a folder and say so with EINVAL; the
    // rename is then as safe as they can make it.
    const bool synced = calls_->fsync(fd) == 0 || errno == EINVAL;
    const int syncErrno = errno;
    calls_->close(fd);
    errno = syncErrno;
    return synced;
}

// The new file of a replace is named after the old one, with ".~" and six
// digits; nothing else is ever named so.
std::string LocalFiles::temporaryName(const std::string& path) {
    std::string digits = std::to_string(names_() % 1000000);
    digits.insert(0, 6 - digits.size(), '0');
    return path + kTemporaryMark + digits;
}

void LocalFiles::removeLeftovers(const std::string& path) {
    const fs::path file(path);
    const std::string prefix = file.filename().string() + kTemporaryMark;
    std::error_code ec;
    for (fs::directory_iterator it(file.has_parent_path() ? file.parent_path() : ".", ec), end;
         !ec && it != end; it.increment(ec)) {
        const std::string name = it->path().filename().string();
        if (name.size() == prefix.size() + 6 && name.compare(0, prefix.size(), prefix) == 0 &&
            std::all_of(name.begin() + static_cast<long>(prefix.size()), name.end(),
                        [](char c) { return c >= '0' && c <= '9'; })) {
            calls_->unlink(it->path().c_str());
        }
    }
}

bool LocalFiles::replaceFile(const std::string& path, const std::string& bytes, int& error) {
    removeLeftovers(path);
    // A name of this save's own: another copy of the game, or anything a
    // user keeps beside the list, is never overwritten.
    std::string temporary;
    int fd = -1;
    for (int attempt = 0; attempt < 100 && fd < 0; ++attempt) {
        temporary = temporaryName(path);
        fd = calls_->open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd < 0 && errno != EEXIST) break;
    }
    if (fd < 0) {
        error = errno;
        return false;
    }
    bool ok = writeAll(fd, bytes) && calls_->fsync(fd) == 0;
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
    if (!syncFolderOf(path)) {
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
    const auto giveUp = std::chrono::steady_clock::now() + kLockPatience;
    while (calls_->flock(fd, LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || std::chrono::steady_clock::now() > giveUp) {
            error = errno;
            calls_->close(fd);
            return nullptr;
        }
        std::this_thread::sleep_for(kLockPoll);
    }
    return std::make_unique<HeldLock>(*calls_, fd);
}

}  // namespace zd::sys
