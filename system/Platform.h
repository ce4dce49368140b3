#pragma once

#include <memory>
#include <optional>
#include <string>

namespace zd::sys {

enum class PathState { Exists, NotFound, OtherFailure };

// An exclusive lock, held while the object lives. The system drops it when
// the process ends, however it ends, so a crash never leaves it behind.
class FileLock {
public:
    virtual ~FileLock() = default;
};

// The one place that knows the operating system: where data may be kept,
// the program's own folder, sound output, documents and files. A failure
// number (`error`) is a C errno value on every system.
class Platform {
public:
    virtual ~Platform() = default;

    // The root of the drive that holds the system folder, under which the
    // data folder is made; empty when there is none.
    virtual std::string systemDriveRoot() = 0;
    virtual std::string programFolder() = 0;

    // Wave output devices present right now.
    virtual int waveOutputCount() = 0;
    // Starts a wave file and returns at once; silent on any failure.
    virtual void playWave(const std::string& path) = 0;
    // Hands a document to the system's viewer; the outcome is not reported.
    virtual void openDocument(const std::string& path) = 0;

    // NotFound only when the name is missing from a folder that exists.
    virtual PathState pathState(const std::string& path) = 0;
    // Makes one folder; false when that fails.
    virtual bool createFolder(const std::string& path) = 0;
    virtual bool deleteFile(const std::string& path) = 0;
    // The file's bytes up to and including its `lines`-th line end (CR LF,
    // CR or LF), or all of it when it has fewer; what follows is never read,
    // so a huge file costs no more than its first lines. Nothing, with a
    // failure number in `error`, when it cannot be read.
    virtual std::optional<std::string> readLines(const std::string& path, int lines,
                                                 int& error) = 0;
    // Old file or new file, whole, even if the power fails: the bytes go to
    // a new file of a name of its own in the same folder, are flushed to
    // disk, and that file is renamed over `path`; then the folder is
    // flushed. On failure the old file stays as it was and `error` says why.
    // The caller holds the file's lock, so that new files left by a replace
    // that was cut off, by a crash or a power loss, can be cleared away.
    virtual bool replaceFile(const std::string& path, const std::string& bytes, int& error) = 0;
    // Waits a little for an exclusive lock on the file `path`, made if it
    // is missing; nothing, with `error`, when it cannot be had.
    virtual std::unique_ptr<FileLock> lockFile(const std::string& path, int& error) = 0;
};

}  // namespace zd::sys
