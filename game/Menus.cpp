// The menu bar, the Hilfe and Info buttons, and the sound switch.
#include <string>

#include "best/modBeste.h"
#include "game/Routines.h"
#include "game/program/ProjectInfo.h"

namespace zd {

namespace {

void lblHilfe_Click(Program& p) {
    openDocument(p, "Zifferndach.pdf");
}

void lblAllgemein_Click(Program& p) {
    // Sound 7 names no file: the information comes up silently.
    showMessage(p, 7, std::string("Programmierung:") + CRLF + kAuthors + CRLF + kHomepage,
                std::string("Grafik:") + CRLF + kAuthors + CRLF + kHomepage,
                besideField(-100, -100));
}

void mnuSoundan_Click(Program& p, ui::FrmSpielfeld& f, int index) {
    p.g.SoundAn = false;
    f.mnuSoundan[1].Checked = false;
    f.mnuSoundan[2].Checked = false;
    f.mnuSoundan[index].Checked = true;
    if (index == 1) p.g.SoundAn = true;
}

}  // namespace

void bindMenus(Program& p, ui::FrmSpielfeld& f) {
    for (int i = 1; i <= 2; ++i) f.mnuSoundan[i].Click = [&p, &f, i] { mnuSoundan_Click(p, f, i); };
    f.mnuInfo[1].Click = [&p] { lblHilfe_Click(p); };
    f.mnuInfo[2].Click = [&p] { lblAllgemein_Click(p); };
    f.mnuInfo[4].Click = [&p, &f] {
        p.g.NeuerEintrag = false;
        ui::FrmBeste& beste = p.frmBeste();
        beste.Move(f.Left - 100, f.Top - 100);
        p.tk.showModal(beste);
    };
    f.lblHilfe.Click = [&p] { lblHilfe_Click(p); };
    f.lblAllgemein.Click = [&p] { lblAllgemein_Click(p); };
    f.lblHilfe.MouseDown = [&p, &f] { f.lblHilfe.picture = p.frmBilder().cmdHilfeGruen.picture; };
    f.lblHilfe.MouseUp = [&p, &f] { f.lblHilfe.picture = p.frmBilder().cmdHilfeAuswahl.picture; };
    f.lblAllgemein.MouseDown = [&p, &f] {
        f.lblAllgemein.picture = p.frmBilder().cmdallgemeinGruen.picture;
    };
    f.lblAllgemein.MouseUp = [&p, &f] {
        f.lblAllgemein.picture = p.frmBilder().cmdBeschreibungenAuswahl.picture;
    };
}

}  // namespace zd
