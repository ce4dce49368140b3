#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "front/drive/Harness.h"

namespace zd::drive {

// An empty folder of this process's own under the system's temporary
// folder, so that test runs side by side never share one.
std::string freshFolder(const std::string& name);

// Plays the real program headless with the real die, as a patient player
// would: throws, takes the first free place, goes on to the next level, and
// answers every question with Ja. `roundEnded` is called the moment a round
// has been evaluated, before anything else happens.
class PlayerBot {
public:
    // Files go through `calls` when given; no `driveRoot` is the system's
    // own, as with the driver's --system.
    PlayerBot(const std::string& programFolder, std::optional<std::string> driveRoot,
              sys::FileCalls* calls = nullptr);
    ~PlayerBot();

    // Plays until `rounds` rounds have ended or the program has ended.
    void play(long rounds);

    std::function<void()> roundEnded;
    // Answer to the question of a new game after a game has ended.
    std::function<bool()> newGame = [] { return true; };

    Program& program() { return harness_.program(); }
    // Every frmMsgOk text answered so far, lblMeldung and lblTitel together.
    const std::vector<std::string>& messages() const { return messages_; }
    long rounds() const { return rounds_; }
    // Whether the round last ended also ended the game.
    bool gameEnded() const { return gameEnded_; }
    long games() const { return games_; }

    // The number a player has on the board, read from the dice pictures.
    int boardNumber(int player);

private:
    bool answer();
    void noteRoundEnd();

    std::ostringstream events_;
    drive::Harness harness_;
    long rounds_ = 0;
    long games_ = 1;
    bool checked_ = false;
    bool gameEnded_ = false;
    std::vector<std::string> messages_;
};

}  // namespace zd::drive
