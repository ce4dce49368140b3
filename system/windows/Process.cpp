#include "system/Process.h"

#include <cstdio>
#include <filesystem>

#include <windows.h>

#include <fcntl.h>
#include <io.h>

namespace zd::sys {

std::string ownProgramFolder() {
    std::string file(MAX_PATH, '\0');
    DWORD n = 0;
    // A path longer than the buffer comes back cut off, filling it.
    while ((n = GetModuleFileNameA(nullptr, file.data(), static_cast<DWORD>(file.size()))) ==
           file.size()) {
        file.resize(file.size() * 2);
    }
    file.resize(n);
    return std::filesystem::path(file).parent_path().string();
}

// The C library of Windows would write a line end as CR LF.
void binaryStandardStreams() {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

}  // namespace zd::sys
