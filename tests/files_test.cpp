// The file helpers and the best list's code pages, on a real disk.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "best/Zeichensatz.h"
#include "system/Dateien.h"
#include "ui/drive/HeadlessPlatform.h"

namespace zd {
namespace {

namespace fs = std::filesystem;

class Files : public ::testing::Test {
protected:
    Files() : dir(fs::temp_directory_path() / ("zd-files-" + std::to_string(::getpid()))) {
        fs::remove_all(dir);
        fs::create_directories(dir / "folder");
        std::ofstream(dir / "empty.txt").flush();
    }
    ~Files() override { fs::remove_all(dir); }
    std::string at(const std::string& name) { return (dir / name).string(); }

    fs::path dir;
    std::ostringstream out;
    drive::HeadlessPlatform platform{out, "", "", true};
};

TEST_F(Files, ExistenceIsFalseOnlyForTheEmptyNameAndForMissingFilesInExistingFolders) {
    EXPECT_TRUE(sys::ExistiertDatei(platform, at("empty.txt")));
    EXPECT_TRUE(sys::ExistiertDatei(platform, at("folder")));
    EXPECT_FALSE(sys::ExistiertDatei(platform, at("missing.txt")));
    EXPECT_TRUE(sys::ExistiertDatei(platform, at("no-such-folder/missing.txt")));
    EXPECT_TRUE(sys::ExistiertDatei(platform, at("empty.txt/under-a-file")));
    EXPECT_FALSE(sys::ExistiertDatei(platform, ""));
}

TEST_F(Files, PathsGetExactlyOneClosingSeparator) {
    EXPECT_EQ(sys::PfadMitTrenner("/data"), "/data/");
    EXPECT_EQ(sys::PfadMitTrenner("/data/"), "/data/");
    EXPECT_EQ(sys::PfadMitTrenner(""), "/");
}

TEST_F(Files, AFailedReplaceLeavesTheOldFileWhole) {
    int error = 0;
    ASSERT_TRUE(platform.replaceFile(at("list.txt"), "old\r\n", error));
    ASSERT_TRUE(platform.replaceFile(at("list.txt"), "new\r\n", error));
    EXPECT_EQ(*platform.readFile(at("list.txt"), error), "new\r\n");
    // A folder standing where the new file would be written.
    fs::create_directory(at("list.txt.neu"));
    EXPECT_FALSE(platform.replaceFile(at("list.txt"), "lost\r\n", error));
    EXPECT_EQ(*platform.readFile(at("list.txt"), error), "new\r\n");
    EXPECT_FALSE(platform.readFile(at("folder"), error));
}

TEST(CodePage, NamesReadBackAsSavedWhateverTheyHold) {
    for (const std::string name :
         {"Niemand", "Jürgen Größe", "€uro „Zitat“", "Ã¼ber", "日本語", "Ωmega ü", ""}) {
        EXPECT_EQ(AusDateitext(AlsDateitext(name)), name) << name;
    }
    // Western names are written in the old single-byte code page.
    EXPECT_EQ(AlsDateitext("Jürgen"), "J\xFCrgen");
    EXPECT_EQ(AusDateitext("J\xFCrgen \x80"), "Jürgen €");
}

}  // namespace
}  // namespace zd
