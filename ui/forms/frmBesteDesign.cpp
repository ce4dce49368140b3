#include "ui/forms/frmBesteDesign.h"

namespace zd::ui {

namespace {

constexpr Color kBlue{0, 0, 255};

void heading(Label& l, int left, int top, int width, int height, const char* caption) {
    l.Move(left, top, width, height);
    l.Caption = caption;
    l.ForeColor = kBlue;
    l.font = Font{"MS Sans Serif", 12, true};
}

void rule(Line& l, int x1, int y1, int x2, int y2) {
    l.X1 = x1;
    l.Y1 = y1;
    l.X2 = x2;
    l.Y2 = y2;
}

}  // namespace

FrmBeste::FrmBeste(Toolkit& tk)
    : Window(tk, "frmBeste"),
      Label1(add<Label>("Label1")),
      Label2(add<Label>("Label2")),
      Line1(add<Line>("Line1")),
      Line2(add<Line>("Line2")),
      lblClear(add<Image>("lblClear")),
      cmdEnde(add<Image>("cmdEnde")),
      lstName(add<ListBox>("lstName")),
      lstPunkte(add<ListBox>("lstPunkte")),
      cmdClear(add<CommandButton>("cmdClear")) {
    Caption = "Beste Spieler ";
    frameWithTitle(5100, 4845, false);
    Left = (tk.screenWidth() - Width) / 2;
    Top = (tk.screenHeight() - Height) / 2;
    inTaskbar = false;
    picture = design("beste", "background", 650, 450);
    BackColor = Color{224, 224, 224};

    heading(Label1, 1110, 180, 2355, 375, "Name des Spielers");
    heading(Label2, 3720, 180, 1245, 285, "Punkte");
    rule(Line1, 1290, 600, 5040, 600);
    rule(Line2, 3600, 120, 3600, 3330);

    for (int i = 0; i < 10; ++i) {
        TextBox& box = add(txtSpieler, "txtSpieler", i);
        if (i < 5) {
            box.Move(1300, 750, 2205, 405);
            box.font = Font{"Arial", 12, true};
        } else {
            // Points as text, beside the list boxes.
            box.Move(8610 + 60 * (i - 5), 360 + 532 * (i - 5), 1245, 315);
            box.Alignment = Align::Right;
            box.border = false;
        }
    }
    for (int i = 0; i < 35; ++i) {
        Image& d = add(imgDiggi, "imgDiggi", i);
        d.Move(4830, 720, 210, 420);
        d.picture = design("digital", "digit_green_blank", 14, 28);
        // A row shows at most six digits.
        d.Visible = i % 7 != 6;
    }

    lblClear.Move(930, 3570, 2205, 525);
    lblClear.picture = design("beste", "btn_clear", 147, 35);
    lblClear.handCursor = true;
    lblClear.ToolTipText = "Einträge zurücksetzen";
    cmdEnde.Move(930, 4200, 2145, 495);
    cmdEnde.picture = design("beste", "btn_ok", 143, 33);
    cmdEnde.handCursor = true;
    cmdEnde.ToolTipText = "Fenster schließen";

    lstName.Move(8940, 90, 825, 2205);
    lstPunkte.Move(9150, 60, 825, 2205);
    cmdClear.Move(8550, 3660, 2205, 495);
    cmdClear.Caption = "&Alle Einträge löschen";
    cmdClear.ToolTipText = "Rücksetzen aller Namen und Punkte";

    // The name boxes take the focus only while one is open for typing.
    for (int i = 0; i < 5; ++i) focusOrder.push_back(&txtSpieler[i]);
    focusOrder.push_back(&lblClear);
    focusOrder.push_back(&cmdEnde);
    focusDefaults = {&cmdEnde};
}

}  // namespace zd::ui
