// The computer players: one placement rule, three players.
#include <string>

#include "game/Routines.h"

namespace zd {

namespace {

enum Place { Ones = 0, Tens = 1, Hundreds = 2 };

struct PlaceOrder {
    Place places[3];
};

// The places tried, by the die alone, with one exception for a 5 while the
// human player is at his second throw.
PlaceOrder preferredPlaces(int wurf, int wurfNummer) {
    switch (wurf) {
        case 1:
        case 2:
            return {{Ones, Tens, Hundreds}};
        case 3:
        case 4:
            return {{Tens, Ones, Hundreds}};
        case 5:
            if (wurfNummer == 2) return {{Hundreds, Tens, Ones}};
            return {{Tens, Ones, Hundreds}};
        default:
            return {{Hundreds, Tens, Ones}};
    }
}

struct ComputerPlayer {
    int k;
    ui::ControlArray<ui::Image>& places;
    ui::Label& text;
    const char* name;
};

// Throws, places by the rule, and says what was thrown.
void throwAndPlace(Program& p, const ComputerPlayer& c) {
    ui::FrmSpielfeld& f = p.frmSpielfeld();
    ui::FrmBilder& b = p.frmBilder();
    f.imgWuerfeln.Visible = false;
    const int w = ZufallsWurf(p.die);
    c.text.Caption = std::string(c.name) + " würfelt eine " + std::to_string(w);
    for (Place s : preferredPlaces(w, p.g.WurfNummer).places) {
        ui::Image& place = c.places[s];
        if (!isFree(p, place)) continue;
        place.picture = b.imgWurf[w].picture;
        p.g.Ergebnis[c.k] += w * placeValue(s);
        break;
    }
    f.lblErgebnis[c.k].Caption = std::to_string(p.g.Ergebnis[c.k]);
}

// After a computer player's throw: the round ends once everybody has thrown
// three times and the next in turn is the round's first thrower; otherwise the
// next computer player spins, or, after Victoria, the human player throws.
void passTurnOrEvaluate(Program& p, int next) {
    if (p.g.WurfNummer >= 3 && p.g.Gewinner[next]) {
        RundeAuswerten(p);
    } else if (next == 0) {
        p.frmSpielfeld().ZeigeWuerfeln();
    } else {
        p.g.AktiverComputer = static_cast<std::int16_t>(next);
        startComputerSpin(p.frmSpielfeld());
    }
}

}  // namespace

void SpielzugAndrea(Program& p) {
    ui::FrmSpielfeld& f = p.frmSpielfeld();
    throwAndPlace(p, {1, f.imgAndrea, f.lblAndrea, "Andrea"});
    passTurnOrEvaluate(p, 2);
}

void SpielzugThomas(Program& p) {
    ui::FrmSpielfeld& f = p.frmSpielfeld();
    throwAndPlace(p, {2, f.imgThomas, f.lblThomas, "Thomas"});
    passTurnOrEvaluate(p, 3);
}

void SpielzugVictoria(Program& p) {
    ui::FrmSpielfeld& f = p.frmSpielfeld();
    throwAndPlace(p, {3, f.imgVictoria, f.lblVictoria, "Victoria"});
    passTurnOrEvaluate(p, 0);
}

bool BestmarkeGeschlagen(Program& p) {
    return p.g.SpielerPunkte > p.g.Bestmarke;
}

}  // namespace zd
