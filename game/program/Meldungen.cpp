// The two message windows and the sequence every message keeps.
#include <string>

#include "game/program/Meldungen.h"
#include "system/Dateien.h"
#include "system/Sound.h"

namespace zd {

namespace {

std::string Titelzeile(Programm& p) {
    return "Zifferndach  Vers.: " + p.tk.App.version();
}

void Platziere(Programm& p, ui::Window& w, Platz platz) {
    ui::FrmSpielfeld& feld = p.frmSpielfeld();
    if (platz.mittig) {
        w.Move(feld.Left + (feld.Width - w.Width) / 2, feld.Top + (feld.Height - w.Height) / 2);
    } else {
        w.Move(feld.Left + platz.links, feld.Top + platz.oben);
    }
}

// Dragging by the free surface or the title line, with the left button.
void Ziehbar(Programm& p, ui::Window& w, ui::Label& titel) {
    auto ziehe = [&p, &w](int button) {
        if (button == 1) p.tk.dragWindow(w);
    };
    w.Form_MouseMove = ziehe;
    titel.MouseMove = ziehe;
}

void Antworte(Programm& p, ui::Window& w, int antwort) {
    p.g.MsgAntwort = antwort;
    p.tk.unload(w);
}

}  // namespace

Platz Mittig() { return Platz{}; }

Platz NebenSpielfeld(int dx, int dy) { return Platz{false, dx, dy}; }

void OeffneDokument(Programm& p, const std::string& datei) {
    const std::string pfad = sys::PfadMitTrenner(p.tk.App.Path) + datei;
    if (sys::ExistiertDatei(p.platform, pfad)) p.platform.openDocument(pfad);
}

void ZeigeMsgOk(Programm& p, int sound, const std::string& meldung, const std::string& titel,
                Platz platz) {
    sys::SpieleSound(p.platform, sound, p.g.SoundAn);
    ui::FrmMsgOk& w = p.frmMsgOk();
    w.lblMeldung.Caption = meldung;
    w.lblTitel.Caption = titel;
    Platziere(p, w, platz);
    p.tk.showModal(w);
}

bool FrageMsgJa(Programm& p, int sound, const std::string& meldung, const std::string& titel,
                Platz platz) {
    sys::SpieleSound(p.platform, sound, p.g.SoundAn);
    ui::FrmMsgJa& w = p.frmMsgJa();
    w.lblMeldung.Caption = meldung;
    w.lblTitel.Caption = titel;
    Platziere(p, w, platz);
    p.tk.showModal(w);
    return p.g.MsgAntwort == 1;
}

void bindeMeldungen(Programm& p) {
    p.ereignisse.msgJa = [&p](ui::FrmMsgJa& w) {
        w.Form_Activate = [&p, &w] { w.lblName.Caption = Titelzeile(p); };
        w.lblJa.Click = [&p, &w] { Antworte(p, w, 1); };
        w.lblNein.Click = [&p, &w] { Antworte(p, w, 2); };
        w.Image1.Click = [&p, &w] { Antworte(p, w, 3); };
        w.Form_KeyDown = [&p, &w](int key) {
            switch (key) {
                case 74: Antworte(p, w, 1); break;
                case 78: Antworte(p, w, 2); break;
                case 27: Antworte(p, w, 3); break;
                case 112: OeffneDokument(p, "Meldefenster.pdf"); break;
                default: break;
            }
        };
        Ziehbar(p, w, w.lblName);
    };
    p.ereignisse.msgOk = [&p](ui::FrmMsgOk& w) {
        w.Form_Activate = [&p, &w] { w.lblName.Caption = Titelzeile(p); };
        w.lblOk.Click = [&p, &w] { p.tk.unload(w); };
        w.Image2.Click = [&p, &w] { p.tk.unload(w); };
        w.Form_KeyDown = [&p, &w](int key) {
            if (key == 27) p.tk.unload(w);
            if (key == 112) OeffneDokument(p, "Meldefenster.pdf");
        };
        Ziehbar(p, w, w.lblName);
    };
}

}  // namespace zd
