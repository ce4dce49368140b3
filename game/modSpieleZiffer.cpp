// The computer players: one placement rule, three players.
#include <string>

#include "game/Routinen.h"

namespace zd {

namespace {

enum Stelle { Einer = 0, Zehner = 1, Hunderter = 2 };

struct Reihenfolge {
    Stelle stellen[3];
};

// The places tried, by the die alone, with one exception for a 5 while the
// human player is at his second throw.
Reihenfolge Vorzug(int wurf, int wurfNummer) {
    switch (wurf) {
        case 1:
        case 2: return {{Einer, Zehner, Hunderter}};
        case 3:
        case 4: return {{Zehner, Einer, Hunderter}};
        case 5:
            if (wurfNummer == 2) return {{Hunderter, Zehner, Einer}};
            return {{Zehner, Einer, Hunderter}};
        default: return {{Hunderter, Zehner, Einer}};
    }
}

struct Computerspieler {
    int k;
    ui::ControlArray<ui::Image>& plaetze;
    ui::Label& text;
    const char* name;
};

// Throws, places by the rule, and says what was thrown.
void Setze(Programm& p, const Computerspieler& c) {
    ui::FrmSpielfeld& f = p.frmSpielfeld();
    ui::FrmBilder& b = p.frmBilder();
    f.imgWuerfeln.Visible = false;
    const int w = ZufallsWurf(p.wuerfel);
    c.text.Caption = std::string(c.name) + " würfelt eine " + std::to_string(w);
    for (Stelle s : Vorzug(w, p.g.WurfNummer).stellen) {
        ui::Image& platz = c.plaetze[s];
        if (!ui::sameObject(platz.picture, b.imgWurf[0].picture)) continue;
        platz.picture = b.imgWurf[w].picture;
        p.g.Ergebnis[c.k] += w * (s == Einer ? 1 : s == Zehner ? 10 : 100);
        break;
    }
    f.lblErgebnis[c.k].Caption = std::to_string(p.g.Ergebnis[c.k]);
}

bool RundeVorbei(Programm& p, int naechster) {
    return p.g.WurfNummer >= 3 && p.g.Gewinner[naechster];
}

void GibWeiter(Programm& p, int naechster) {
    p.g.AktiverComputer = static_cast<std::int16_t>(naechster);
    StarteComputerDrehen(p.frmSpielfeld());
}

}  // namespace

void SpielzugAndrea(Programm& p) {
    ui::FrmSpielfeld& f = p.frmSpielfeld();
    Setze(p, {1, f.imgAndrea, f.lblAndrea, "Andrea"});
    if (RundeVorbei(p, 2)) {
        RundeAuswerten(p);
    } else {
        GibWeiter(p, 2);
    }
}

void SpielzugThomas(Programm& p) {
    ui::FrmSpielfeld& f = p.frmSpielfeld();
    Setze(p, {2, f.imgThomas, f.lblThomas, "Thomas"});
    if (RundeVorbei(p, 3)) {
        RundeAuswerten(p);
    } else {
        GibWeiter(p, 3);
    }
}

void SpielzugVictoria(Programm& p) {
    ui::FrmSpielfeld& f = p.frmSpielfeld();
    Setze(p, {3, f.imgVictoria, f.lblVictoria, "Victoria"});
    if (RundeVorbei(p, 0)) {
        RundeAuswerten(p);
    } else {
        f.ZeigeWuerfeln();
    }
}

bool BestmarkeGeschlagen(Programm& p) { return p.g.SpielerPunkte > p.g.Bestmarke; }

}  // namespace zd
