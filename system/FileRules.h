#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

// What the file layers of every system do alike, whatever calls they make.
namespace zd::sys::rules {

// How long a save waits for another running copy of the game to finish its
// own; saving takes milliseconds, so this is only reached by a hung copy.
inline constexpr auto kLockPatience = std::chrono::seconds(5);
inline constexpr auto kLockPoll = std::chrono::milliseconds(10);

// The new file of a replace is named after the old one, with ".~" and six
// digits; nothing else is ever named so.
std::string temporaryName(const std::string& path, std::minstd_rand& names);

// The new files that replaces of `path`, cut off by a crash or a power
// loss, left in its folder.
std::vector<std::filesystem::path> leftoversOf(const std::string& path);

// Follows a file read in chunks to the end of its `lines`-th line, which
// ends at CR LF, CR or LF.
class LineEnds {
public:
    explicit LineEnds(int lines) : wanted_(lines) {}

    // How many bytes of the chunk belong to the lines asked for: all of
    // them, until the last line end is in it.
    std::size_t take(const char* chunk, std::size_t size);
    bool complete() const { return ends_ >= wanted_; }

private:
    int wanted_;
    int ends_ = 0;
    bool afterCr_ = false;
};

}  // namespace zd::sys::rules
