// zifferndach-drive: plays the program from a script, headless, with a
// virtual clock.
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <random>
#include <sstream>
#include <string>

#include "front/drive/Driver.h"
#include "system/Process.h"

namespace {

namespace fs = std::filesystem;

int usage() {
    std::cerr << "usage: zifferndach-drive [--program-dir DIR]\n"
                 "                         [--drive-root DIR | --no-drive | --system]\n"
                 "                         [--no-sound-device] [--dice \"N N ...\"] [SCRIPT]\n";
    return 2;
}

// A drive root of our own, for this user only, removed again at exit.
class TemporaryRoot {
public:
    TemporaryRoot() {
        std::error_code ec;
        const fs::path temporary = fs::temp_directory_path(ec);
        std::random_device seed;
        for (int attempt = 0; attempt < 100 && !ec && path_.empty(); ++attempt) {
            const fs::path candidate = temporary / ("zifferndach-" + std::to_string(seed()));
            if (fs::create_directory(candidate, ec)) {
                fs::permissions(candidate, fs::perms::owner_all, ec);
                path_ = candidate.string();
            }
        }
    }
    ~TemporaryRoot() {
        std::error_code ignored;
        if (!path_.empty()) fs::remove_all(path_, ignored);
    }
    TemporaryRoot(const TemporaryRoot&) = delete;
    TemporaryRoot& operator=(const TemporaryRoot&) = delete;
    const std::string& path() const { return path_; }

private:
    std::string path_;
};

}  // namespace

int main(int argc, char** argv) {
    zd::sys::binaryStandardStreams();
    zd::drive::HarnessOptions options;
    options.programDir = zd::sys::ownProgramFolder();
    bool noDrive = false;
    bool systemDrive = false;
    std::optional<std::string> driveRoot;
    std::string scriptPath;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        auto value = [&]() -> std::string {
            if (i + 1 >= argc) std::exit(usage());
            return argv[++i];
        };
        if (arg == "--program-dir") {
            options.programDir = value();
        } else if (arg == "--drive-root") {
            driveRoot = value();
        } else if (arg == "--no-drive") {
            noDrive = true;
        } else if (arg == "--system") {
            systemDrive = true;
        } else if (arg == "--no-sound-device") {
            options.soundDevice = false;
        } else if (arg == "--dice") {
            std::istringstream in(value());
            std::vector<int> dice;
            std::string word;
            while (in >> word) {
                if (word.size() != 1 || word[0] < '1' || word[0] > '6') {
                    std::cerr << "error: --dice takes numbers from 1 to 6\n";
                    return 2;
                }
                dice.push_back(word[0] - '0');
            }
            options.dice = dice;
        } else if ((arg.empty() || arg[0] != '-' || arg == "-") && scriptPath.empty()) {
            scriptPath = arg;
        } else {
            return usage();
        }
    }
    if ((noDrive ? 1 : 0) + (driveRoot ? 1 : 0) + (systemDrive ? 1 : 0) > 1) return usage();

    std::optional<TemporaryRoot> temporary;
    if (noDrive) {
        options.driveRoot = std::string();
    } else if (systemDrive) {
        options.driveRoot = std::nullopt;  // the system's own
    } else {
        options.driveRoot = driveRoot ? *driveRoot : temporary.emplace().path();
    }

    std::ifstream file;
    if (!scriptPath.empty() && scriptPath != "-") {
        file.open(scriptPath, std::ios::binary);
        if (!file) {
            std::cerr << "error: cannot read " << scriptPath << '\n';
            return 2;
        }
    }
    std::istream& script = file.is_open() ? static_cast<std::istream&>(file) : std::cin;
    int code = 0;
    try {
        zd::drive::Driver driver(options, script, std::cout, std::cerr);
        code = driver.run();
    } catch (const std::exception& e) {
        // Not the script's doing: the driver itself could not go on.
        std::cout.flush();
        std::cerr << "error: " << e.what() << '\n';
        code = 3;
    }
    std::cout.flush();
    return code;
}
