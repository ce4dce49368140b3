// The two message windows and the sequence every message keeps.
#include "game/program/Messages.h"

#include <string>

#include "system/Dateien.h"
#include "system/Sound.h"
#include "ui/model/KeyCodes.h"

namespace zd {

namespace {

std::string titleLine(Program& p) {
    return "Zifferndach  Vers.: " + p.tk.App.version();
}

void place(Program& p, ui::Window& w, Placement placement) {
    ui::FrmSpielfeld& feld = p.frmSpielfeld();
    if (placement.centred) {
        w.Move(feld.Left + (feld.Width - w.Width) / 2, feld.Top + (feld.Height - w.Height) / 2);
    } else {
        w.Move(feld.Left + placement.left, feld.Top + placement.top);
    }
}

// Dragging by the free surface or the title line, with the left button.
void makeDraggable(Program& p, ui::Window& w, ui::Label& titel) {
    auto draw = [&p, &w](int button) {
        if (button == 1) p.tk.dragWindow(w);
    };
    w.Form_MouseMove = draw;
    titel.MouseMove = draw;
}

void answerWith(Program& p, ui::Window& w, int antwort) {
    p.g.MsgAntwort = antwort;
    p.tk.unload(w);
}

}  // namespace

Placement centred() {
    return Placement{};
}

Placement besideField(int dx, int dy) {
    return Placement{false, dx, dy};
}

void openDocument(Program& p, const std::string& datei) {
    const std::string pfad = sys::PfadMitTrenner(p.tk.App.Path) + datei;
    if (sys::ExistiertDatei(p.platform, pfad)) p.platform.openDocument(pfad);
}

namespace {

// The sequence itself, the same for both windows.
template <class MessageWindow>
void present(Program& p, MessageWindow& w, int sound, const std::string& meldung,
             const std::string& titel, Placement placement) {
    sys::SpieleSound(p.platform, sound, p.g.SoundAn);
    w.lblMeldung.Caption = meldung;
    w.lblTitel.Caption = titel;
    place(p, w, placement);
    p.tk.showModal(w);
}

}  // namespace

void showMessage(Program& p, int sound, const std::string& meldung, const std::string& titel,
                 Placement placement) {
    present(p, p.frmMsgOk(), sound, meldung, titel, placement);
}

bool askYesNo(Program& p, int sound, const std::string& meldung, const std::string& titel,
              Placement placement) {
    present(p, p.frmMsgJa(), sound, meldung, titel, placement);
    return p.g.MsgAntwort == 1;
}

void bindMessageWindows(Program& p) {
    p.routines.msgJa = [&p](ui::FrmMsgJa& w) {
        w.Form_Activate = [&p, &w] { w.lblName.Caption = titleLine(p); };
        w.lblJa.Click = [&p, &w] { answerWith(p, w, 1); };
        w.lblNein.Click = [&p, &w] { answerWith(p, w, 2); };
        w.Image1.Click = [&p, &w] { answerWith(p, w, 3); };
        w.Form_KeyDown = [&p, &w](int key) {
            switch (key) {
                case 'J':
                    answerWith(p, w, 1);
                    break;
                case 'N':
                    answerWith(p, w, 2);
                    break;
                case ui::kKeyEscape:
                    answerWith(p, w, 3);
                    break;
                case ui::kKeyF1:
                    openDocument(p, "Meldefenster.pdf");
                    break;
                default:
                    break;
            }
        };
        makeDraggable(p, w, w.lblName);
    };
    p.routines.msgOk = [&p](ui::FrmMsgOk& w) {
        w.Form_Activate = [&p, &w] { w.lblName.Caption = titleLine(p); };
        w.lblOk.Click = [&p, &w] { p.tk.unload(w); };
        w.Image2.Click = [&p, &w] { p.tk.unload(w); };
        w.Form_KeyDown = [&p, &w](int key) {
            if (key == ui::kKeyEscape) p.tk.unload(w);
            if (key == ui::kKeyF1) openDocument(p, "Meldefenster.pdf");
        };
        makeDraggable(p, w, w.lblName);
    };
}

}  // namespace zd
