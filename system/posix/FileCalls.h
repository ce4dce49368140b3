#pragma once

#include <sys/types.h>

namespace zd::sys {

// The system calls that the list's file goes through, one to one, so that a
// test can count them or make one of them fail. The plain object calls the
// system itself.
class FileCalls {
public:
    virtual ~FileCalls() = default;

    virtual int open(const char* path, int flags, mode_t mode);
    virtual ssize_t read(int fd, void* buffer, size_t size);
    virtual ssize_t write(int fd, const void* buffer, size_t size);
    virtual int fsync(int fd);
    virtual int close(int fd);
    virtual int rename(const char* from, const char* to);
    virtual int unlink(const char* path);
    virtual int flock(int fd, int operation);
};

}  // namespace zd::sys
