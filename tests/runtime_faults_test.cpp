// What the player's machine may do to the game's files while it runs: the
// save is refused with the message, the game goes on, and no list is lost
// that could be kept.
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "front/drive/PlayerBot.h"

namespace zd::test {

using drive::freshFolder;
using drive::PlayerBot;
namespace {

namespace fs = std::filesystem;

const char* const kSaveFailed = "konnten nicht gespeichert werden.";

// Starts a game, does `fault` to the disk, then earns an entry in the list
// and saves it; returns the messages the player was shown.
std::vector<std::string> saveAfter(const std::function<void(const fs::path&)>& fault,
                                   const fs::path& root) {
    PlayerBot bot(ZD_PROGRAM_DIR, root.string());
    Program& p = bot.program();
    fault(root / "wuerfelhof");
    ui::FrmSpielfeld& f = p.frmSpielfeld();
    p.tk.click(f.imgNeu);
    p.g.SpielerPunkte = 40;
    f.imgBeste.Visible = true;
    // Ja to the offer, OK in the list: the save happens, and may fail.
    p.tk.click(f.imgBeste);
    EXPECT_FALSE(p.tk.ended());
    EXPECT_EQ(p.frmBeste().lstPunkte.List(0), "40");
    bot.play(1);
    EXPECT_EQ(bot.rounds(), 1);
    return bot.messages();
}

bool told(const std::vector<std::string>& messages) {
    for (const std::string& m : messages) {
        if (m.find(kSaveFailed) != std::string::npos) return true;
    }
    return false;
}

TEST(RuntimeFaults, TheDataFolderDeletedOrReplacedByAFile) {
    const fs::path root = freshFolder("zd-fault-folder");
    EXPECT_TRUE(told(saveAfter([](const fs::path& folder) { fs::remove_all(folder); }, root)));
    EXPECT_TRUE(told(saveAfter(
        [](const fs::path& folder) {
            fs::remove_all(folder);
            std::ofstream(folder) << "not a folder";
        },
        root)));
    EXPECT_TRUE(fs::is_regular_file(root / "wuerfelhof"));
    fs::remove_all(root);
}

TEST(RuntimeFaults, TheListFileReplacedByAFolderStaysAndIsNotLost) {
    const fs::path root = freshFolder("zd-fault-list");
    EXPECT_TRUE(told(saveAfter(
        [](const fs::path& folder) {
            fs::remove(folder / "zifdach.txt");
            fs::create_directories(folder / "zifdach.txt" / "keep");
        },
        root)));
    EXPECT_TRUE(fs::exists(root / "wuerfelhof" / "zifdach.txt" / "keep"));
    fs::remove_all(root);
}

}  // namespace
}  // namespace zd::test
