#include "system/FileRules.h"

#include <algorithm>
#include <system_error>

namespace zd::sys::rules {

namespace fs = std::filesystem;

namespace {

constexpr const char* kTemporaryMark = ".~";
constexpr std::size_t kDigits = 6;

}  // namespace

std::string temporaryName(const std::string& path, std::minstd_rand& names) {
    std::string digits = std::to_string(names() % 1000000);
    digits.insert(0, kDigits - digits.size(), '0');
    return path + kTemporaryMark + digits;
}

std::vector<fs::path> leftoversOf(const std::string& path) {
    const fs::path file(path);
    const std::string prefix = file.filename().string() + kTemporaryMark;
    std::vector<fs::path> found;
    std::error_code ec;
    for (fs::directory_iterator it(file.has_parent_path() ? file.parent_path() : ".", ec), end;
         !ec && it != end; it.increment(ec)) {
        const std::string name = it->path().filename().string();
        if (name.size() == prefix.size() + kDigits && name.compare(0, prefix.size(), prefix) == 0 &&
            std::all_of(name.begin() + static_cast<long>(prefix.size()), name.end(),
                        [](char c) { return c >= '0' && c <= '9'; })) {
            found.push_back(it->path());
        }
    }
    return found;
}

std::size_t LineEnds::take(const char* chunk, std::size_t size) {
    if (complete()) return 0;
    for (std::size_t i = 0; i < size; ++i) {
        const char c = chunk[i];
        const bool secondHalfOfCrLf = c == '\n' && afterCr_;
        afterCr_ = c == '\r';
        if ((c == '\r' || c == '\n') && !secondHalfOfCrLf && ++ends_ == wanted_) return i + 1;
    }
    return size;
}

}  // namespace zd::sys::rules
