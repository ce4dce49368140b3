#pragma once

#include <optional>
#include <string>

namespace zd::sys {

enum class PathState { Exists, NotFound, OtherFailure };

// The one place that knows the operating system: where data may be kept,
// the program's own folder, sound output, documents and files.
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
    // The whole file, or nothing with a failure number in `error`.
    virtual std::optional<std::string> readFile(const std::string& path, int& error) = 0;
    // Writes beside the old file and replaces it in one step, so that a
    // failure leaves the old file whole. False with a number in `error`.
    virtual bool replaceFile(const std::string& path, const std::string& bytes, int& error) = 0;
};

// Files on the local disk through the standard library; the platforms of the
// game and of the headless driver share it.
class LocalFiles : public Platform {
public:
    PathState pathState(const std::string& path) override;
    bool createFolder(const std::string& path) override;
    bool deleteFile(const std::string& path) override;
    std::optional<std::string> readFile(const std::string& path, int& error) override;
    bool replaceFile(const std::string& path, const std::string& bytes, int& error) override;
};

}  // namespace zd::sys
