#pragma once

#include <string>

#include "game/program/Messages.h"
#include "game/program/Program.h"

namespace zd {

// Start-up and the board
void LeereSpielfeld(Program& p);
void SetzeSpielwerte(Program& p);

// The computer players
void SpielzugAndrea(Program& p);
void SpielzugThomas(Program& p);
void SpielzugVictoria(Program& p);
bool BestmarkeGeschlagen(Program& p);

// Rounds and credit
void RundeAuswerten(Program& p);
void ZeigeGuthaben(Program& p);
void NaechsteRunde(Program& p);
void SpielendeMelden(Program& p);

// What a die counts on a place: 0 ones, 1 tens, 2 hundreds (the human
// player's places are numbered from 1, one higher).
constexpr int placeValue(int place) {
    return place == 0 ? 1 : place == 1 ? 10 : 100;
}

// A place is free when it holds the very picture of the bank's blank die.
bool isFree(Program& p, const ui::Image& place);

// The spin of the computer player in AktiverComputer, which is set first.
void startComputerSpin(ui::FrmSpielfeld& f);

// Event routines of the windows
void bindFrmSpielfeld(Program& p, ui::FrmSpielfeld& f);
void bindMenus(Program& p, ui::FrmSpielfeld& f);
void bindFrmHintergrund(Program& p, ui::FrmHintergrund& f);

}  // namespace zd
