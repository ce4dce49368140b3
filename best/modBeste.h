#pragma once

#include <cstdint>
#include <string>

#include "game/program/Program.h"

namespace zd {

// The list of the five best players: the file, the offer of a place, and
// the window that shows the list and takes the name.

std::string BesteDatei(Program& p);
void SchreibeBesteStandard(Program& p);
void LeseBeste(Program& p);
void SpeichereBeste(Program& p);

void PruefeBestmarke(Program& p);
void TrageBesteEin(Program& p, std::int16_t platz);

void bindFrmBeste(Program& p, ui::FrmBeste& f);

// Points as written in the list: a whole number of 0 or more, blanks round
// it allowed. Anything else, a missing row included, counts as 0.
std::int32_t pointsOf(const std::string& text);

}  // namespace zd
