// Damaged or foreign list files: whatever the file holds, the game starts
// and a round can be played.
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "front/drive/PlayerBot.h"

namespace zd::test {

using drive::freshFolder;
using drive::PlayerBot;
namespace {

// All the bytes of a literal, NULs included.
template <std::size_t N>
std::string bytes(const char (&literal)[N]) {
    return std::string(literal, N - 1);
}

TEST(DamagedList, TheGameStartsAndPlaysWhateverTheFileHolds) {
    const std::string tenLines = "A\r\nB\r\nC\r\nD\r\nE\r\n";
    const std::vector<std::string> contents = {
        "",
        bytes("\x89PNG\r\n\x1a\n\0\0\0\rIHDR"),
        bytes("Ni\0mand\r\n\0\r\n\0\r\n\0\r\n\0\r\n1\0\r\n2\r\n3\r\n4\r\n5\r\n"),
        std::string(std::size_t{10} * 1024 * 1024, 'x'),
        tenLines + "-5\r\nabc\r\n99999999999\r\n\r\n1e3\r\n",
        "\xff\xfe\xfd\r\n\xc3\x28\r\n\xe2\x82\r\n\x80\r\n\x81\r\n1\r\n2\r\n3\r\n4\r\n5",
    };
    int index = 0;
    for (const std::string& content : contents) {
        SCOPED_TRACE("file " + std::to_string(index));
        const std::filesystem::path root = freshFolder("zd-damaged-" + std::to_string(index++));
        std::filesystem::create_directories(root / "wuerfelhof");
        std::ofstream(root / "wuerfelhof" / "zifdach.txt", std::ios::binary) << content;

        PlayerBot bot(ZD_PROGRAM_DIR, root.string());
        Program& p = bot.program();
        EXPECT_TRUE(p.frmSpielfeld().visible());
        EXPECT_GE(p.g.Bestmarke, 0);
        EXPECT_LE(p.frmBeste().lstPunkte.ListCount(), 5);
        bot.play(2);
        EXPECT_EQ(bot.rounds(), 2);
        EXPECT_FALSE(p.tk.ended());
        std::filesystem::remove_all(root);
    }
}

}  // namespace
}  // namespace zd::test
