// The window that shows the best list and takes the new name.
#include <string>

#include "best/modBeste.h"
#include "game/program/Messages.h"
#include "system/Dateien.h"

namespace zd {

namespace {

constexpr int kRows = 5;
constexpr int kColumns = 7;

class FrmBesteRoutines {
public:
    FrmBesteRoutines(Program& p, ui::FrmBeste& f) : p_(p), f_(f) {}

    void Form_Load() {
        OrdneZeilen();
        for (int i = 0; i < kRows * kColumns; ++i) {
            f_.imgDiggi[i].picture = p_.frmDigital().imgDiggi[10].picture;
        }
        LeseBeste(p_);
    }

    void Form_Activate() {
        ZeigePunkte();
        f_.lblClear.Visible = false;
        if (!p_.g.NeuerEintrag) {
            for (int i = 0; i < f_.lstName.ListCount(); ++i) {
                if (f_.lstName.List(i) != "Niemand") f_.lblClear.Visible = true;
            }
        }
        for (int i = 0; i < kRows; ++i) {
            f_.txtSpieler[i].Text = f_.lstName.List(i);
            f_.txtSpieler[i + kRows].Text = f_.lstPunkte.List(i);
        }
        SperreEingabe();
        if (p_.g.NeuerEintrag) {
            f_.cmdClear.Visible = false;
            ui::TextBox& eintrag = f_.txtSpieler[p_.g.EintragPlatz];
            eintrag.Locked = false;
            eintrag.TabStop = true;
            eintrag.SelStart = 0;
            eintrag.SelLength = ui::characterCount(eintrag.Text);
            eintrag.SetFocus();
        }
    }

    void cmdEnde_Click() {
        f_.lstName.Clear();
        f_.lstPunkte.Clear();
        for (int i = 0; i < kRows; ++i) {
            // The file keeps one value a line: a line break in a name becomes a blank.
            f_.lstName.AddItem(withoutLineBreaks(f_.txtSpieler[i].Text));
            f_.lstPunkte.AddItem(f_.txtSpieler[i + kRows].Text);
        }
        if (p_.g.NeuerEintrag) {
            ui::TextBox& eintrag = f_.txtSpieler[p_.g.EintragPlatz];
            if (eintrag.Text.empty()) {
                eintrag.Text = "Spieler";
                f_.lstName.setList(p_.g.EintragPlatz, "Spieler");
            }
            SpeichereBeste(p_);
        }
        p_.tk.hide(f_);
    }

    void lblClear_Click() {
        p_.g.NeuerEintrag = false;
        cmdClear_Click();
    }

    void cmdClear_Click() {
        bool nurNiemand = true;
        for (int i = 0; i < kRows; ++i) {
            if (f_.txtSpieler[i].Text != "Niemand") nurNiemand = false;
        }
        if (!nurNiemand &&
            askYesNo(p_, 2,
                     std::string(CRLF) + "Bist Du sicher," + CRLF +
                         "dass Du alle Einträge löschen möchtest?",
                     std::string(CRLF) + "»Einträge löschen« bestätigen", centred())) {
            const std::string datei = BesteDatei(p_);
            if (sys::ExistiertDatei(p_.platform, datei)) p_.platform.deleteFile(datei);
            SchreibeBesteStandard(p_);
            LeseBeste(p_);
            f_.cmdClear.Visible = false;
        }
        p_.tk.hide(f_);
    }

private:
    void OrdneZeilen() {
        f_.txtSpieler[0].Move(1300, 750);
        int y = 750;
        for (int i = 1; i < kRows; ++i) {
            y = f_.txtSpieler[0].Height + y + 90;
            f_.txtSpieler[i].Height = f_.txtSpieler[i - 1].Height;
            f_.txtSpieler[i].Width = f_.txtSpieler[i - 1].Width;
            f_.txtSpieler[i].Move(1300, y);
        }
        for (int k = kColumns; k < kRows * kColumns; k += kColumns) {
            const ui::Image& oben = f_.imgDiggi[k - kColumns];
            f_.imgDiggi[k].Move(oben.Left, oben.Height + oben.Top + 90);
        }
        for (int c = 1; c < kColumns; ++c) {
            for (int zeile = 0; zeile < kRows; ++zeile) {
                const int n = kColumns * zeile + c;
                f_.imgDiggi[n].Move(f_.imgDiggi[n - 1].Left - f_.imgDiggi[n].Width,
                                    f_.imgDiggi[n - 1].Top);
            }
        }
    }

    // Digits are taken from the text by position, not by arithmetic.
    void ZeigePunkte() {
        ui::FrmDigital& d = p_.frmDigital();
        for (int zeile = 0; zeile < kRows; ++zeile) {
            // Blanks round a hand-edited number are not part of it.
            std::string s = f_.lstPunkte.List(zeile);
            s.erase(0, s.find_first_not_of(' '));
            s.erase(s.find_last_not_of(' ') + 1);
            const std::int32_t n = pointsOf(s);
            const int bild = kColumns * zeile;
            if (n == 0) continue;
            const int places = n < 10        ? 1
                               : n < 100     ? 2
                               : n < 1000    ? 3
                               : n < 10000   ? 4
                               : n < 100000  ? 5
                               : n < 1000000 ? 6
                                             : 7;
            if (places == 1) {
                f_.imgDiggi[bild].picture = d.imgDiggi[n].picture;
                continue;
            }
            for (int k = 0; k < places; ++k) {
                // Ziffer(0) is the last character, Ziffer(k) character d - k.
                const int position = k == 0 ? static_cast<int>(s.size()) : places - k;
                const char c = position >= 1 && position <= static_cast<int>(s.size())
                                   ? s[static_cast<std::size_t>(position - 1)]
                                   : ' ';
                const int ziffer = c >= '0' && c <= '9' ? c - '0' : 10;
                f_.imgDiggi[bild + k].picture = d.imgDiggi[ziffer].picture;
            }
        }
    }

    void SperreEingabe() {
        for (int i = 0; i < 2 * kRows; ++i) {
            f_.txtSpieler[i].TabStop = false;
            f_.txtSpieler[i].Locked = true;
        }
    }

    static std::string withoutLineBreaks(std::string text) {
        for (char& c : text) {
            if (c == '\r' || c == '\n') c = ' ';
        }
        return text;
    }

    Program& p_;
    ui::FrmBeste& f_;
};

}  // namespace

void bindFrmBeste(Program& p, ui::FrmBeste& f) {
    auto b = std::make_shared<FrmBesteRoutines>(p, f);
    f.Form_Load = [b] { b->Form_Load(); };
    f.Form_Activate = [b] { b->Form_Activate(); };
    f.cmdEnde.Click = [b] { b->cmdEnde_Click(); };
    f.lblClear.Click = [b] { b->lblClear_Click(); };
    f.cmdClear.Click = [b] { b->cmdClear_Click(); };
}

}  // namespace zd
