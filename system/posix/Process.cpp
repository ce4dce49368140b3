#include "system/Process.h"

#include <filesystem>
#include <system_error>

namespace zd::sys {

std::string ownProgramFolder() {
    std::error_code ec;
    return std::filesystem::canonical("/proc/self/exe", ec).parent_path().string();
}

// POSIX streams never translate line ends.
void binaryStandardStreams() {}

}  // namespace zd::sys
