#pragma once

#include <cstdint>
#include <string>

#include "game/program/Programm.h"

namespace zd {

// The list of the five best players: the file, the offer of a place, and
// the window that shows the list and takes the name.

std::string BesteDatei(Programm& p);
void SchreibeBesteStandard(Programm& p);
void LeseBeste(Programm& p);
void SpeichereBeste(Programm& p);

void PruefeBestmarke(Programm& p);
void TrageBesteEin(Programm& p, std::int16_t& platz);

void bindeBeste(Programm& p, ui::FrmBeste& f);

// Points as written in the list: a whole number of 0 or more, blanks round
// it allowed. Anything else, a missing row included, counts as 0.
std::int32_t Punktzahl(const std::string& text);

}  // namespace zd
