// The end of a round, the credit, and the seams between rounds and games.
#include <string>

#include "best/modBeste.h"
#include "game/Routines.h"

namespace zd {

namespace {

// The end of a round's test for credits run out, which may end the game.
void checkGameEnd(Program& p) {
    const SharedVariables& g = p.g;
    if (g.SpielerPunkte <= 0) SpielendeMelden(p);
    // Read after the step above, which may have started a new game.
    bool computerAus = false;
    for (int i = 1; i <= 3; ++i) {
        if (g.Guthaben[i] <= 0) computerAus = true;
    }
    if (computerAus) SpielendeMelden(p);
}

}  // namespace

void RundeAuswerten(Program& p) {
    ui::FrmSpielfeld& f = p.frmSpielfeld();
    SharedVariables& g = p.g;
    int gewinner = 0;
    f.lstErgebnis.Clear();
    for (int i = 0; i <= 3; ++i) f.lstErgebnis.AddItem(f.lblErgebnis[i].Caption);
    // The sorted list box holds three-digit numbers, whose text order is
    // their number order.
    const std::int32_t hoechste = pointsOf(f.lstErgebnis.List(3));
    const std::int32_t zweite = pointsOf(f.lstErgebnis.List(2));
    if (hoechste != zweite) {
        for (int i = 0; i <= 3; ++i) {
            if (pointsOf(f.lblErgebnis[i].Caption) == hoechste) gewinner = i;
        }
        f.lblGewonnen.Caption =
            g.SpielerName[gewinner] + " hat mit " + std::to_string(hoechste) + " gewonnen!";
        for (int i = 0; i <= 3; ++i) g.Guthaben[i] += i == gewinner ? 3 : -1;
    }
    f.imgNaechsterLevel.Visible = true;
    f.imgNeuerWurf.picture = p.frmBilder().imgPfeilrechts[1].picture;
    f.lblInfo.Caption = "Klicke auf »Nächster Level«";
    for (int i = 0; i <= 3; ++i) {
        g.Gewinner[i] = false;
        g.Ergebnis[i] = 0;
    }
    g.Gewinner[gewinner] = true;
    g.SpielerPunkte = g.Guthaben[0];
    if (BestmarkeGeschlagen(p)) f.imgBeste.Visible = true;
    ZeigeGuthaben(p);
    // Only a window the player opened can stand open now, since the game's
    // own messages come when no round runs. It is left to finish first.
    if (p.tk.topModal()) {
        p.spielendeWartet = true;
        p.tk.whenIdle([&p] {
            p.spielendeWartet = false;
            checkGameEnd(p);
        });
        return;
    }
    checkGameEnd(p);
}

void ZeigeGuthaben(Program& p) {
    ui::FrmSpielfeld& f = p.frmSpielfeld();
    ui::FrmDigital& d = p.frmDigital();
    for (int i = 0; i <= 7; ++i) f.imgDiggi[i].picture = d.imgDiggi[10].picture;
    for (int i = 0; i <= 3; ++i) {
        const int basis = 2 * i;
        const std::int32_t v = p.g.Guthaben[i];
        if (v >= 0 && v <= 9) {
            f.imgDiggi[basis].picture = d.imgDiggi[v].picture;
        } else if (v >= 10) {
            const std::string text = std::to_string(v);
            f.imgDiggi[basis + 1].picture = d.imgDiggi[text.front() - '0'].picture;
            f.imgDiggi[basis].picture = d.imgDiggi[text.back() - '0'].picture;
        }
    }
}

void NaechsteRunde(Program& p) {
    ui::FrmSpielfeld& f = p.frmSpielfeld();
    ui::FrmBilder& b = p.frmBilder();
    SharedVariables& g = p.g;
    f.imgWurf[0].picture = b.imgWurf[0].picture;
    for (int i = 1; i <= 3; ++i) {
        g.Belegt[i] = false;
        f.imgWurf[i].picture = b.imgWurf[0].picture;
    }
    for (int j = 0; j <= 2; ++j) {
        f.imgAndrea[j].picture = b.imgWurf[0].picture;
        f.imgThomas[j].picture = b.imgWurf[0].picture;
        f.imgVictoria[j].picture = b.imgWurf[0].picture;
    }
    f.lblAndrea.Caption = "";
    f.lblThomas.Caption = "";
    f.lblVictoria.Caption = "";
    int beginner = 0;
    for (int i = 0; i <= 3; ++i) {
        if (g.Gewinner[i]) beginner = i;
    }
    g.WurfNummer = 0;
    if (beginner == 0) {
        f.ZeigeWuerfeln();
    } else {
        g.AktiverComputer = static_cast<std::int16_t>(beginner);
    }
    f.lblGewonnen.Caption = g.SpielerName[beginner] + " beginnt die neue Spielrunde";
    if (beginner != 0) startComputerSpin(f);
}

void SpielendeMelden(Program& p) {
    SharedVariables& g = p.g;
    const bool spielerAus = g.SpielerPunkte <= 0;
    std::string meldung = std::string(CRLF) + "Das Spiel ist beendet" + CRLF;
    if (spielerAus) {
        meldung += "Du hast kein Guthaben mehr!";
    } else {
        // Of several players out in the same round, the last one is named.
        int aus = 1;
        for (int i = 1; i <= 3; ++i) {
            if (g.Guthaben[i] <= 0) aus = i;
        }
        meldung += g.SpielerName[aus] + " hast kein Guthaben mehr!";
    }
    showMessage(p, 3, meldung, std::string(CRLF) + "Spielende.", centred());
    if (spielerAus) {
        p.frmSpielfeld().ExternesEnde();
    } else {
        PruefeBestmarke(p);
    }
}

}  // namespace zd
