#pragma once

#include <string>

#include "game/program/Program.h"

namespace zd {

// The message sequence every caller keeps: sound, the two captions, the
// place, the modal show. Positions are those of the message window's top
// left corner, from the playing field's; `centred` centres it on the field.
struct Placement {
    bool centred = true;
    int left = 0;
    int top = 0;
};
Placement centred();
Placement besideField(int dx, int dy);
void showMessage(Program& p, int sound, const std::string& meldung, const std::string& titel,
                 Placement placement);
// Returns True when the answer is Ja; MsgAntwort keeps the answer itself.
bool askYesNo(Program& p, int sound, const std::string& meldung, const std::string& titel,
              Placement placement);

void openDocument(Program& p, const std::string& datei);

inline constexpr const char* CRLF = "\r\n";

// The event routines of the two message windows.
void bindMessageWindows(Program& p);

}  // namespace zd
