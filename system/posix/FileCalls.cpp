#include "system/posix/FileCalls.h"

#include <cstdio>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace zd::sys {

int FileCalls::open(const char* path, int flags, mode_t mode) {
    return ::open(path, flags, mode);
}
ssize_t FileCalls::read(int fd, void* buffer, size_t size) {
    return ::read(fd, buffer, size);
}
ssize_t FileCalls::write(int fd, const void* buffer, size_t size) {
    return ::write(fd, buffer, size);
}
int FileCalls::fsync(int fd) {
    return ::fsync(fd);
}
int FileCalls::close(int fd) {
    return ::close(fd);
}
int FileCalls::rename(const char* from, const char* to) {
    return std::rename(from, to);
}
int FileCalls::unlink(const char* path) {
    return ::unlink(path);
}
int FileCalls::flock(int fd, int operation) {
    return ::flock(fd, operation);
}

}  // namespace zd::sys
