#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include "system/Platform.h"

namespace zd::sys {

namespace fs = std::filesystem;

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

bool LocalFiles::deleteFile(const std::string& path) {
    std::error_code ec;
    return fs::remove(path, ec) && !ec;
}

std::optional<std::string> LocalFiles::readFile(const std::string& path, int& error) {
    std::error_code ec;
    if (fs::is_directory(path, ec)) {
        error = EISDIR;
        return std::nullopt;
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        error = errno != 0 ? errno : ENOENT;
        // A missing folder on the way is another failure than a missing file.
        if (error == ENOENT && pathState(path) == PathState::OtherFailure) error = ENOTDIR;
        return std::nullopt;
    }
    std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    if (in.bad()) {
        error = EIO;
        return std::nullopt;
    }
    return bytes;
}

bool LocalFiles::replaceFile(const std::string& path, const std::string& bytes, int& error) {
    const std::string temporary = path + ".neu";
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        if (!out) {
            error = errno != 0 ? errno : EIO;
            return false;
        }
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        out.flush();
        if (!out) {
            error = errno != 0 ? errno : EIO;
            std::error_code ignored;
            fs::remove(temporary, ignored);
            return false;
        }
    }
    std::error_code ec;
    fs::rename(temporary, path, ec);
    if (ec) {
        error = ec.value();
        fs::remove(temporary, ec);
        return false;
    }
    return true;
}

}  // namespace zd::sys
