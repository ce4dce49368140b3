// The program's entry, and the two subs that prepare the board.
#include "best/modBeste.h"
#include "game/Routines.h"
#include "game/Start.h"
#include "system/Dateien.h"
#include "system/Sound.h"

namespace zd {

namespace {

void LegeDatenOrdnerAn(Program& p, const std::string& ordner) {
    if (p.platform.createFolder(ordner)) return;
    showMessage(p, 3,
                std::string(CRLF) + "Das Anlegen des Ordners für die Daten ist fehlgeschlagen!",
                std::string(CRLF) + "Die Daten für die Stastitik" + CRLF +
                    "können nicht gespeichert werden!",
                centred());
}

}  // namespace

void bindEventRoutines(Program& p) {
    p.routines.spielfeld = [&p](ui::FrmSpielfeld& f) {
        bindFrmSpielfeld(p, f);
        bindMenus(p, f);
    };
    p.routines.hintergrund = [&p](ui::FrmHintergrund& f) { bindFrmHintergrund(p, f); };
    p.routines.beste = [&p](ui::FrmBeste& f) { bindFrmBeste(p, f); };
    bindMessageWindows(p);
}

void Main(Program& p) {
    SharedVariables& g = p.g;
    g.FestplatteGefunden = false;
    g.SoundAn = true;
    const std::string laufwerk = p.platform.systemDriveRoot();
    if (!laufwerk.empty()) {
        g.FestplatteGefunden = true;
        g.DatenPfad = sys::PfadMitTrenner(laufwerk) + "wuerfelhof";
        if (!sys::ExistiertDatei(p.platform, g.DatenPfad)) {
            LegeDatenOrdnerAn(p, std::string(g.DatenPfad));
        }
    } else {
        // Centring on the playing field loads it, though it is not seen yet.
        showMessage(
            p, 3, std::string(CRLF) + "Die Festplatte auf Ihrem System wurde nicht erkannt!",
            std::string(CRLF) + "Ein Speichern von Daten ist leider nicht möglich", centred());
    }
    p.frmSpielfeld();
    p.frmDigital();
    if (!sys::ExistiertDatei(p.platform, BesteDatei(p))) SchreibeBesteStandard(p);
    LeseBeste(p);
    g.Bestmarke = pointsOf(p.frmBeste().lstPunkte.List(4));
    LeereSpielfeld(p);
    SetzeSpielwerte(p);
    p.tk.show(p.frmHintergrund());
    p.tk.show(p.frmSpielfeld());
}

void LeereSpielfeld(Program& p) {
    ui::FrmSpielfeld& f = p.frmSpielfeld();
    ui::FrmBilder& b = p.frmBilder();
    p.g.WurfNummer = 0;
    f.imgBeste.Visible = false;
    for (int i = 0; i <= 7; ++i) f.imgDiggi[i].picture = p.frmDigital().imgDiggi[10].picture;
    f.lblAndrea.Caption = "";
    f.lblThomas.Caption = "";
    f.lblVictoria.Caption = "";
    for (int i = 1; i <= 3; ++i) p.g.Belegt[i] = false;
    for (int i = 0; i <= 2; ++i) {
        f.imgAndrea[i].picture = b.imgWurf[0].picture;
        f.imgThomas[i].picture = b.imgWurf[0].picture;
        f.imgVictoria[i].picture = b.imgWurf[0].picture;
    }
}

void SetzeSpielwerte(Program& p) {
    ui::FrmSpielfeld& f = p.frmSpielfeld();
    SharedVariables& g = p.g;
    g.SpielerName = {"Spieler", "Andrea", "Thomas", "Victoria"};
    f.lstSummen.Clear();
    for (int i = 0; i <= 3; ++i) {
        g.Ergebnis[i] = 0;
        g.Guthaben[i] = 12;
        f.lstSummen.AddItem(std::to_string(g.Guthaben[i]));
        g.Gewinner[i] = false;
    }

    // Line up the computer players' dice from the positions as they stand.
    f.imgWurf[5].Left = f.imgWurf[4].Left;
    f.imgWurf[6].Left = f.imgWurf[4].Left;
    f.imgAndrea[2].Top = f.imgWurf[4].Top;
    f.imgThomas[2].Top = f.imgWurf[5].Top;
    f.imgVictoria[2].Top = f.imgWurf[6].Top;
    f.imgThomas[2].Left = f.imgAndrea[2].Left;
    f.imgVictoria[2].Left = f.imgAndrea[2].Left;
    for (int i = 1; i >= 0; --i) {
        for (ui::ControlArray<ui::Image>* reihe : {&f.imgAndrea, &f.imgThomas, &f.imgVictoria}) {
            (*reihe)[i].Top = (*reihe)[i + 1].Top;
            (*reihe)[i].Left = (*reihe)[i + 1].Left + 1050;
        }
    }
    for (int i = 4; i <= 6; ++i) f.imgWurf[i].Visible = false;
    ui::ControlArray<ui::Image>* reihen[3] = {&f.imgAndrea, &f.imgThomas, &f.imgVictoria};
    for (int i = 0; i <= 2; ++i) {
        f.Shape1[i].Left = (*reihen[i])[2].Left - 70;
        f.Shape1[i].Top = (*reihen[i])[2].Top - 50;
    }

    ZeigeGuthaben(p);
    g.Gewinner[0] = true;
    f.imgNaechsterLevel.Visible = false;
}

}  // namespace zd
