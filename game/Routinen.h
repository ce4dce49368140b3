#pragma once

#include <string>

#include "game/program/Meldungen.h"
#include "game/program/Programm.h"

namespace zd {

// Start-up and the board
void LeereSpielfeld(Programm& p);
void SetzeSpielwerte(Programm& p);

// The computer players
void SpielzugAndrea(Programm& p);
void SpielzugThomas(Programm& p);
void SpielzugVictoria(Programm& p);
bool BestmarkeGeschlagen(Programm& p);

// Rounds and credit
void RundeAuswerten(Programm& p);
void ZeigeGuthaben(Programm& p);
void NaechsteRunde(Programm& p);
void SpielendeMelden(Programm& p);

// The spin of the computer player in AktiverComputer, which is set first.
void StarteComputerDrehen(ui::FrmSpielfeld& f);

// Event routines of the windows
void bindeSpielfeld(Programm& p, ui::FrmSpielfeld& f);
void bindeMenue(Programm& p, ui::FrmSpielfeld& f);
void bindeHintergrund(Programm& p, ui::FrmHintergrund& f);

}  // namespace zd
