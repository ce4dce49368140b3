#pragma once

#include <cerrno>
#include <map>
#include <string>

#include "system/posix/FileCalls.h"

namespace zd::test {

// The system calls of the list's file, counted by what they do, with one of
// them made to fail with EIO from the moment `failing` names it.
class RecordingCalls : public sys::FileCalls {
public:
    std::string failing;  // "write", "flush", "close", "rename" or nothing
    std::map<std::string, int> count;
    std::size_t bytesRead = 0;

    ssize_t read(int fd, void* buffer, size_t size) override {
        const ssize_t n = FileCalls::read(fd, buffer, size);
        if (n > 0) bytesRead += static_cast<std::size_t>(n);
        return n;
    }
    ssize_t write(int fd, const void* buffer, size_t size) override {
        return fail("write") ? -1 : FileCalls::write(fd, buffer, size);
    }
    int fsync(int fd) override { return fail("flush") ? -1 : FileCalls::fsync(fd); }
    int close(int fd) override {
        const int closed = FileCalls::close(fd);  // the file is closed even when it reports failure
        return fail("close") ? -1 : closed;
    }
    int rename(const char* from, const char* to) override {
        return fail("rename") ? -1 : FileCalls::rename(from, to);
    }

private:
    bool fail(const std::string& call) {
        ++count[call];
        if (call != failing) return false;
        errno = EIO;
        return true;
    }
};

}  // namespace zd::test
