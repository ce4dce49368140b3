// The file helpers and the best list's code pages, on a real disk through
// the system's own calls.
#include "Files.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "RecordingCalls.h"
#include "best/CodePage.h"
#include "system/Dateien.h"

namespace zd::test {
namespace {

namespace fs = std::filesystem;

// A name in a folder that is missing is the system's own case: see the
// tests of each system.
TEST_F(Files, ExistenceIsFalseOnlyForTheEmptyNameAndForMissingFilesInExistingFolders) {
    EXPECT_TRUE(sys::ExistiertDatei(platform, at("empty.txt")));
    EXPECT_TRUE(sys::ExistiertDatei(platform, at("folder")));
    EXPECT_FALSE(sys::ExistiertDatei(platform, at("missing.txt")));
    EXPECT_FALSE(sys::ExistiertDatei(platform, at("folder/missing.txt")));
    EXPECT_FALSE(sys::ExistiertDatei(platform, ""));
}

TEST_F(Files, PathsGetExactlyOneClosingSeparator) {
    const std::string trenner(1, fs::path::preferred_separator);
    EXPECT_EQ(sys::PfadMitTrenner("data"), "data" + trenner);
    EXPECT_EQ(sys::PfadMitTrenner("data" + trenner), "data" + trenner);
    EXPECT_EQ(sys::PfadMitTrenner(""), trenner);
}

std::string contents(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

TEST_F(Files, ASaveIsFlushedRenamedAndClearsOnlyWhatEarlierSavesLeft) {
    RecordingCalls calls;
    drive::HeadlessPlatform counted{out, "", "", true, &calls};
    std::ofstream(at("list.txt.neu")) << "a file of the user's";
    fs::create_directory(at("list.txt.tmp"));
    std::ofstream(at("list.txt.~12345")) << "a file of the user's";
    std::ofstream(at("list.txt.~654321")) << "left by a save that was cut off";
    int error = 0;
    ASSERT_TRUE(counted.replaceFile(at("list.txt"), "old\r\n", error));
    EXPECT_EQ(contents(at("list.txt")), "old\r\n");
    EXPECT_GE(calls.count["flush"], 1);
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
    for (const std::string call : {"write", "flush", "close", "rename"}) {
        SCOPED_TRACE(call);
        RecordingCalls calls;
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
    RecordingCalls calls;
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
}  // namespace zd::test
