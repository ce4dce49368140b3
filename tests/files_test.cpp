// The file helpers and the best list's code pages, on a real disk.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "RecordingCalls.h"
#include "best/CodePage.h"
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

std::string contents(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

TEST_F(Files, ASaveIsFlushedRenamedAndClearsOnlyWhatEarlierSavesLeft) {
    test::RecordingCalls calls;
    drive::HeadlessPlatform counted{out, "", "", true, &calls};
    std::ofstream(at("list.txt.neu")) << "a file of the user's";
    fs::create_directory(at("list.txt.tmp"));
    std::ofstream(at("list.txt.~12345")) << "a file of the user's";
    std::ofstream(at("list.txt.~654321")) << "left by a save that was cut off";
    int error = 0;
    ASSERT_TRUE(counted.replaceFile(at("list.txt"), "old\r\n", error));
    EXPECT_EQ(contents(at("list.txt")), "old\r\n");
    EXPECT_GE(calls.count["fsync"], 2);  // the file and its folder
    EXPECT_EQ(calls.count["rename"], 1);
    EXPECT_EQ(contents(at("list.txt.neu")), "a file of the user's");
    EXPECT_TRUE(fs::is_directory(at("list.txt.tmp")));
    // Nothing of this save or of an earlier one is left over.
    EXPECT_FALSE(fs::exists(at("list.txt.~654321")));
    EXPECT_TRUE(fs::exists(at("list.txt.~12345")));
    EXPECT_EQ(std::distance(fs::directory_iterator(dir), fs::directory_iterator()), 6);
}

TEST_F(Files, AFailingWriteFlushCloseOrRenameLeavesTheOldListByteForByte) {
    int error = 0;
    ASSERT_TRUE(platform.replaceFile(at("list.txt"), "old\r\n", error));
    for (const std::string call : {"write", "fsync", "close", "rename"}) {
        SCOPED_TRACE(call);
        test::RecordingCalls calls;
        calls.failing = call;
        drive::HeadlessPlatform failing{out, "", "", true, &calls};
        error = 0;
        EXPECT_FALSE(failing.replaceFile(at("list.txt"), "new\r\n", error));
        EXPECT_EQ(error, EIO);
        EXPECT_EQ(contents(at("list.txt")), "old\r\n");
        EXPECT_EQ(std::distance(fs::directory_iterator(dir), fs::directory_iterator()), 3);
    }
}

TEST_F(Files, ReadingStopsAtTheLastLineAskedForButTakesALineWhole) {
    const std::string head = "a\r\nb\rc\nd\n";
    std::ofstream(at("big.txt"), std::ios::binary) << head << std::string(4 << 20, '\n');
    test::RecordingCalls calls;
    drive::HeadlessPlatform counted{out, "", "", true, &calls};
    int error = 0;
    EXPECT_EQ(*counted.readLines(at("big.txt"), 4, error), head);
    EXPECT_LT(calls.bytesRead, 64u << 10);

    const std::string longLine(3 << 20, 'n');
    std::ofstream(at("long.txt"), std::ios::binary) << longLine << "\r\n2\r\n";
    EXPECT_EQ(*counted.readLines(at("long.txt"), 1, error), longLine + "\r");
    EXPECT_EQ(*counted.readLines(at("long.txt"), 10, error), longLine + "\r\n2\r\n");
    EXPECT_FALSE(counted.readLines(at("folder"), 10, error));
    EXPECT_EQ(error, EISDIR);
}

TEST_F(Files, TheLockShutsOutEveryOtherHolderUntilItGoes) {
    int error = 0;
    auto lock = platform.lockFile(at("list.lock"), error);
    ASSERT_TRUE(lock);
    const int other = ::open(at("list.lock").c_str(), O_RDWR);
    EXPECT_NE(::flock(other, LOCK_EX | LOCK_NB), 0);
    lock.reset();
    EXPECT_EQ(::flock(other, LOCK_EX | LOCK_NB), 0);
    ::close(other);
    EXPECT_FALSE(platform.lockFile(at("folder"), error));
}

TEST(CodePage, NamesReadBackAsSavedWhateverTheyHold) {
    for (const std::string name :
         {"Niemand", "Jürgen Größe", "€uro „Zitat“", "Ã¼ber", "日本語", "Ωmega ü", ""}) {
        EXPECT_EQ(fromFileText(toFileText(name)), name) << name;
    }
    // Western names are written in the old single-byte code page.
    EXPECT_EQ(toFileText("Jürgen"), "J\xFCrgen");
    EXPECT_EQ(fromFileText("J\xFCrgen \x80"), "Jürgen €");
}

}  // namespace
}  // namespace zd
