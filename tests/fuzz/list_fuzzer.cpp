// Any bytes at all as the best list's file: the start must come through,
// leave at most five entries, and a mark of 0 or more.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <unistd.h>

#include "front/drive/Harness.h"

namespace {

namespace fs = std::filesystem;

// The drive root of this process's runs, made once.
const fs::path& driveRoot() {
    static const fs::path root = [] {
        const fs::path r = fs::temp_directory_path() / ("zd-fuzz-" + std::to_string(::getpid()));
        fs::create_directories(r / "wuerfelhof");
        return r;
    }();
    return root;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::ofstream(driveRoot() / "wuerfelhof" / "zifdach.txt", std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    std::ostringstream events;
    zd::drive::HarnessOptions options;
    options.driveRoot = driveRoot().string();
    options.soundDevice = false;
    zd::drive::Harness harness(options, events);
    zd::Program& p = harness.program();
    harness.answer = [&p] { return p.tk.click(p.frmMsgOk().lblOk); };
    harness.start();
    if (!p.frmSpielfeld().visible() || p.frmBeste().lstPunkte.ListCount() > 5 ||
        p.g.Bestmarke < 0) {
        __builtin_trap();
    }
    return 0;
}
