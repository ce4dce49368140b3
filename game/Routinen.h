#pragma once

#include <string>

#include "game/Programm.h"

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
void bindeMeldungen(Programm& p);
void bindeHintergrund(Programm& p, ui::FrmHintergrund& f);

// The message sequence every caller keeps: sound, the two captions, the
// place, the modal show. Positions are those of the message window's top
// left corner; `mittig` centres it on the playing field.
struct Platz {
    bool mittig = true;
    int links = 0;
    int oben = 0;
};
Platz Mittig();
Platz NebenSpielfeld(int dx, int dy);
void ZeigeMsgOk(Programm& p, int sound, const std::string& meldung, const std::string& titel,
                Platz platz);
// Returns True when the answer is Ja; MsgAntwort keeps the answer itself.
bool FrageMsgJa(Programm& p, int sound, const std::string& meldung, const std::string& titel,
                Platz platz);

void OeffneDokument(Programm& p, const std::string& datei);

inline constexpr const char* CRLF = "\r\n";

}  // namespace zd
