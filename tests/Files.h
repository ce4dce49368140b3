#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

#include "front/drive/HeadlessPlatform.h"

namespace zd::test {

// A scratch folder of this process's own, holding an empty file and a
// folder, and the driver's platform to reach it through the system's calls.
class Files : public ::testing::Test {
protected:
    Files()
        : dir(std::filesystem::temp_directory_path() / ("zd-files-" + std::to_string(::getpid()))) {
        std::filesystem::remove_all(dir);
        std::filesystem::create_directories(dir / "folder");
        std::ofstream(dir / "empty.txt").flush();
    }
    ~Files() override { std::filesystem::remove_all(dir); }
    std::string at(const std::string& name) { return (dir / name).string(); }

    std::filesystem::path dir;
    std::ostringstream out;
    drive::HeadlessPlatform platform{out, "", "", true};
};

}  // namespace zd::test
