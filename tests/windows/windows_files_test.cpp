// What the Win32 calls themselves do under the game: the existence test by
// OpenFile's error code, a folder made one level deep, DeleteFileA that
// leaves folders, the lock as other handles see it, and the data folder
// when the Windows folder cannot be found.
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "Files.h"
#include "RecordingCalls.h"
#include "front/drive/PlayerBot.h"
#include "system/Dateien.h"
#include "system/windows/WindowsPlatform.h"

namespace zd::test {

using drive::PlayerBot;
namespace {

namespace fs = std::filesystem;

bool underWine() {
    const HMODULE ntdll = GetModuleHandleA("ntdll.dll");
    return ntdll && GetProcAddress(ntdll, "wine_get_version");
}

TEST_F(Files, OpenFileCountsAFolderAndEveryOtherFailureButNotFoundAsExisting) {
    RecordingCalls calls;
    drive::HeadlessPlatform counted{out, "", "", true, &calls};
    EXPECT_TRUE(sys::ExistiertDatei(counted, at("folder")));
    EXPECT_TRUE(sys::ExistiertDatei(counted, at("empty.txt")));
    EXPECT_FALSE(sys::ExistiertDatei(counted, at("folder\\missing.txt")));
    EXPECT_EQ(calls.count["exists"], 3);
    EXPECT_FALSE(sys::ExistiertDatei(counted, ""));
    EXPECT_EQ(calls.count["exists"], 3) << "the empty name is answered without a system call";

    // Windows reports a missing folder on the way with code 3, so the name
    // counts as existing; wine reports code 2, "not found", as for a
    // missing file.
    const std::string inMissingFolder = at("no-such-folder\\missing.txt");
    if (underWine()) {
        EXPECT_FALSE(sys::ExistiertDatei(counted, inMissingFolder))
            << "wine now answers as Windows does: the wine case can go";
        RecordProperty("wine_differs", "OpenFile gives code 2, not 3, in a missing folder");
    } else {
        EXPECT_TRUE(sys::ExistiertDatei(counted, inMissingFolder));
    }
}

TEST_F(Files, AFolderIsMadeOneLevelDeepAndNotDeletedAsAFile) {
    EXPECT_FALSE(platform.createFolder(at("new\\deeper")));
    EXPECT_FALSE(fs::exists(at("new")));
    EXPECT_TRUE(platform.createFolder(at("new")));
    EXPECT_FALSE(platform.createFolder(at("new"))) << "it exists already";

    EXPECT_FALSE(platform.deleteFile(at("new")));
    EXPECT_TRUE(fs::is_directory(at("new")));
    EXPECT_TRUE(platform.deleteFile(at("empty.txt")));
    EXPECT_FALSE(fs::exists(at("empty.txt")));
}

TEST_F(Files, TheLockShutsOutEveryOtherHandleUntilItGoes) {
    int error = 0;
    auto lock = platform.lockFile(at("list.lock"), error);
    ASSERT_TRUE(lock);
    const HANDLE other = CreateFileA(at("list.lock").c_str(), GENERIC_READ | GENERIC_WRITE,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                     nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(other, INVALID_HANDLE_VALUE);
    auto tryLock = [other] {
        OVERLAPPED whole{};
        return LockFileEx(other, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                          &whole) != 0;
    };
    EXPECT_FALSE(tryLock());
    lock.reset();
    EXPECT_TRUE(tryLock());
    CloseHandle(other);
    EXPECT_FALSE(platform.lockFile(at("folder"), error));
}

TEST_F(Files, TheDataFolderIsOnTheDriveOfTheWindowsFolder) {
    drive::HeadlessPlatform system{out, "", std::nullopt, true};  // as with --system
    const std::string drive = system.systemDriveRoot();
    ASSERT_EQ(drive.size(), 2u);
    EXPECT_EQ(drive[1], ':');
}

TEST_F(Files, WithoutTheWindowsFolderThePlayerIsToldAndTheListLiesBesideTheProgram) {
    RecordingCalls calls;
    calls.failing = "windows folder";
    fs::create_directory(at("program"));
    PlayerBot bot(at("program"), std::nullopt, &calls);
    ASSERT_FALSE(bot.messages().empty());
    EXPECT_EQ(bot.messages()[0],
              "\r\nDie Festplatte auf Ihrem System wurde nicht erkannt!"
              "\r\nEin Speichern von Daten ist leider nicht möglich");
    EXPECT_EQ(fs::file_size(at("program\\zifdach.txt")), 65u);
}

TEST(WindowsPlatform, TheProgramsFolderIsThatOfItsFile) {
    sys::WindowsPlatform platform;
    EXPECT_TRUE(fs::equivalent(platform.programFolder(), ZD_PROGRAM_DIR));
}

}  // namespace
}  // namespace zd::test
