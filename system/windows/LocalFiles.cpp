#include "system/LocalFiles.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <system_error>
#include <thread>

#include "system/FileRules.h"
#include "system/windows/FileCalls.h"

namespace zd::sys {

namespace fs = std::filesystem;

namespace {

// OpenFile's code for a name missing from a folder that exists.
constexpr WORD kNotFound = ERROR_FILE_NOT_FOUND;
constexpr DWORD kChunk = 16384;

// The platform speaks in C errno values on every system.
int errnoOf(DWORD code, const std::string& path) {
    switch (code) {
        case ERROR_FILE_NOT_FOUND:
            return ENOENT;
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
        case ERROR_INVALID_DRIVE:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
            return ENOTDIR;
        case ERROR_ACCESS_DENIED: {
            // Opening a folder as a file is refused as if it were locked.
            std::error_code ec;
            return fs::is_directory(path, ec) ? EISDIR : EACCES;
        }
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_WRITE_PROTECT:
            return EACCES;
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return EEXIST;
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            return ENOSPC;
        default:
            return EIO;
    }
}

class HeldLock : public FileLock {
public:
    HeldLock(FileCalls& calls, HANDLE file) : calls_(calls), file_(file) {}
    // Windows drops the locks of a closed file only when it gets round to
    // it, so the lock is given back first.
    ~HeldLock() override {
        OVERLAPPED whole{};
        calls_.UnlockFileEx(file_, &whole);
        calls_.CloseHandle(file_);
    }
    HeldLock(const HeldLock&) = delete;
    HeldLock& operator=(const HeldLock&) = delete;

private:
    FileCalls& calls_;
    HANDLE file_;
};

bool writeAll(FileCalls& calls, HANDLE file, const std::string& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const DWORD size = static_cast<DWORD>(std::min<std::size_t>(bytes.size() - done, 1 << 20));
        DWORD written = 0;
        if (!calls.WriteFile(file, bytes.data() + done, size, &written)) return false;
        if (written == 0) {
            SetLastError(ERROR_WRITE_FAULT);
            return false;
        }
        done += written;
    }
    return true;
}

}  // namespace

LocalFiles::LocalFiles(FileCalls* calls)
    : system_(std::make_unique<FileCalls>()),
      calls_(calls ? calls : system_.get()),
      names_(std::random_device{}()) {}

LocalFiles::~LocalFiles() = default;

// The first two characters of the Windows folder: its drive letter and the
// colon. The buffer is as long as the game has always had it.
std::string LocalFiles::systemDriveRoot() {
    std::string buffer(200, '\0');
    const UINT n = calls_->GetWindowsDirectoryA(buffer.data(), static_cast<UINT>(buffer.size()));
    return buffer.substr(0, std::min<std::size_t>({n, buffer.size(), 2}));
}

// Only OpenFile's error code counts: a folder, or a name in a folder that
// is missing, gives another code than "not found" and so exists.
PathState LocalFiles::pathState(const std::string& path) {
    OFSTRUCT record{};
    calls_->OpenFile(path.c_str(), &record, OF_EXIST);
    if (record.nErrCode == kNotFound) return PathState::NotFound;
    return record.nErrCode == 0 ? PathState::Exists : PathState::OtherFailure;
}

// One level only, with security attributes that are all zero.
bool LocalFiles::createFolder(const std::string& path) {
    SECURITY_ATTRIBUTES attributes{};
    return calls_->CreateDirectoryA(path.c_str(), &attributes) != 0;
}

// Files only: DeleteFileA leaves a folder of that name.
bool LocalFiles::deleteFile(const std::string& path) {
    return calls_->DeleteFileA(path.c_str()) != 0;
}

std::optional<std::string> LocalFiles::readLines(const std::string& path, int lines, int& error) {
    // Shared for deletion too, so that another copy's save can replace the
    // file while this one reads it.
    const HANDLE file =
        calls_->CreateFileA(path.c_str(), GENERIC_READ,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING);
    if (file == INVALID_HANDLE_VALUE) {
        error = errnoOf(GetLastError(), path);
        return std::nullopt;
    }
    std::string bytes;
    rules::LineEnds ends(lines);
    char buffer[kChunk];
    while (!ends.complete()) {
        DWORD got = 0;
        if (!calls_->ReadFile(file, buffer, kChunk, &got)) {
            error = errnoOf(GetLastError(), path);
            calls_->CloseHandle(file);
            return std::nullopt;
        }
        if (got == 0) break;
        bytes.append(buffer, ends.take(buffer, got));
    }
    calls_->CloseHandle(file);
    return bytes;
}

// The new file is flushed and then moved over the old one; the move is
// written through to the disk before it returns, so the folder needs no
// flush of its own.
bool LocalFiles::replaceFile(const std::string& path, const std::string& bytes, int& error) {
    for (const fs::path& leftover : rules::leftoversOf(path)) {
        calls_->DeleteFileA(leftover.string().c_str());
    }
    // A name of this save's own: another copy of the game, or anything a
    // user keeps beside the list, is never overwritten.
    std::string temporary;
    HANDLE file = INVALID_HANDLE_VALUE;
    for (int attempt = 0; attempt < 100 && file == INVALID_HANDLE_VALUE; ++attempt) {
        temporary = rules::temporaryName(path, names_);
        file = calls_->CreateFileA(temporary.c_str(), GENERIC_WRITE, 0, CREATE_NEW);
        if (file == INVALID_HANDLE_VALUE && GetLastError() != ERROR_FILE_EXISTS) break;
    }
    if (file == INVALID_HANDLE_VALUE) {
        error = errnoOf(GetLastError(), temporary);
        return false;
    }
    bool ok = writeAll(*calls_, file, bytes) && calls_->FlushFileBuffers(file);
    DWORD failure = ok ? 0 : GetLastError();
    if (!calls_->CloseHandle(file) && ok) {
        ok = false;
        failure = GetLastError();
    }
    if (ok && !calls_->MoveFileExA(temporary.c_str(), path.c_str(),
                                   MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        ok = false;
        failure = GetLastError();
    }
    if (!ok) {
        calls_->DeleteFileA(temporary.c_str());
        error = failure != 0 ? errnoOf(failure, path) : EIO;
        return false;
    }
    return true;
}

std::unique_ptr<FileLock> LocalFiles::lockFile(const std::string& path, int& error) {
    const HANDLE file =
        calls_->CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_ALWAYS);
    if (file == INVALID_HANDLE_VALUE) {
        error = errnoOf(GetLastError(), path);
        return nullptr;
    }
    const auto giveUp = std::chrono::steady_clock::now() + rules::kLockPatience;
    OVERLAPPED whole{};
    while (!calls_->LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, &whole)) {
        const DWORD code = GetLastError();
        if (code != ERROR_LOCK_VIOLATION || std::chrono::steady_clock::now() > giveUp) {
            error = errnoOf(code, path);
            calls_->CloseHandle(file);
            return nullptr;
        }
        std::this_thread::sleep_for(rules::kLockPoll);
    }
    return std::make_unique<HeldLock>(*calls_, file);
}

}  // namespace zd::sys
