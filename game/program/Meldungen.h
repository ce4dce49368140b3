#pragma once

#include <string>

#include "game/program/Programm.h"

namespace zd {

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

// The event routines of the two message windows.
void bindeMeldungen(Programm& p);

}  // namespace zd
