#include "front/drive/PlayerBot.h"

#include <filesystem>
#include <stdexcept>

#include <unistd.h>

#include "game/Start.h"

namespace zd::drive {

std::string freshFolder(const std::string& name) {
    const auto folder =
        std::filesystem::temp_directory_path() / (name + "-" + std::to_string(::getpid()));
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    return folder.string();
}

namespace {

HarnessOptions botOptions(std::optional<std::string> driveRoot, sys::FileCalls* calls,
                          const std::string& programFolder) {
    HarnessOptions options;
    options.programDir = programFolder;
    options.driveRoot = std::move(driveRoot);
    options.calls = calls;
    return options;
}

}  // namespace

PlayerBot::PlayerBot(const std::string& programFolder, std::optional<std::string> driveRoot,
                     sys::FileCalls* calls)
    : harness_(botOptions(std::move(driveRoot), calls, programFolder), events_) {
    harness_.answer = [this] { return answer(); };
    harness_.start();
}

PlayerBot::~PlayerBot() = default;

int PlayerBot::boardNumber(int player) {
    ui::FrmSpielfeld& f = program().frmSpielfeld();
    ui::FrmBilder& b = program().frmBilder();
    auto face = [&b](const ui::Image& place) {
        for (int i = 1; i <= 6; ++i) {
            if (ui::sameObject(place.picture, b.imgWurf[i].picture)) return i;
        }
        return 0;
    };
    if (player == 0) return 100 * face(f.imgWurf[3]) + 10 * face(f.imgWurf[2]) + face(f.imgWurf[1]);
    ui::ControlArray<ui::Image>* boards[4] = {nullptr, &f.imgAndrea, &f.imgThomas, &f.imgVictoria};
    ui::ControlArray<ui::Image>& board = *boards[player];
    return 100 * face(board[2]) + 10 * face(board[1]) + face(board[0]);
}

void PlayerBot::noteRoundEnd() {
    if (checked_) return;
    checked_ = true;
    ++rounds_;
    if (roundEnded) roundEnded();
}

bool PlayerBot::answer() {
    ui::Toolkit& tk = program().tk;
    ui::Window* top = tk.topModal();
    if (!top) throw std::logic_error("asked to answer with no window open");
    const std::string name = top->name();
    if (name == "frmMsgOk") {
        messages_.push_back(program().frmMsgOk().lblMeldung.Caption +
                            program().frmMsgOk().lblTitel.Caption);
        // The end of a game is told while the round is still on the board.
        if (program().frmMsgOk().lblTitel.Caption == "\r\nSpielende.") {
            gameEnded_ = true;
            noteRoundEnd();
        }
        return tk.click(program().frmMsgOk().lblOk);
    }
    if (name == "frmMsgJa") {
        ui::FrmMsgJa& w = program().frmMsgJa();
        const bool newGameQuestion = w.lblTitel.Caption == "\r\n»Neues Spiel« bestätigen";
        if (newGameQuestion) {
            if (!newGame()) return tk.click(w.lblNein);
            ++games_;
        }
        return tk.click(w.lblJa);
    }
    if (name == "frmBeste") return tk.click(program().frmBeste().cmdEnde);
    throw std::logic_error("no answer for " + name);
}

void PlayerBot::play(long rounds) {
    ui::Toolkit& tk = program().tk;
    ui::FrmSpielfeld& f = program().frmSpielfeld();
    if (f.imgNeu.Visible) tk.click(f.imgNeu);
    while (rounds_ < rounds && !tk.ended()) {
        if (f.imgNaechsterLevel.Visible) {
            gameEnded_ = false;
            noteRoundEnd();
            if (rounds_ >= rounds) break;
            checked_ = false;
            tk.click(f.imgNaechsterLevel);
            continue;
        }
        if (f.imgWuerfeln.Visible) {
            tk.click(f.imgWuerfeln);
            continue;
        }
        bool placed = false;
        for (int i = 1; i <= 3 && !placed; ++i) {
            if (f.imgAuswahl[i].Visible) placed = tk.click(f.imgAuswahl[i]);
        }
        if (placed) continue;
        const auto due = tk.timers().nextDue();
        if (!due) throw std::logic_error("the game stands still");
        harness_.clock().FastForwardBy(*due - harness_.clock().now());
        if (checked_ && !f.imgNaechsterLevel.Visible) checked_ = false;
    }
}

}  // namespace zd::drive
