#include "ui/forms/MessageWindows.h"

namespace zd::ui {

namespace {

void frameless(Window& w, int width, int height) {
    w.titleBar = false;
    w.closeBox = false;
    w.inTaskbar = false;
    w.Width = width;
    w.Height = height;
    w.Left = (w.toolkit().screenWidth() - width) / 2;
    w.Top = (w.toolkit().screenHeight() - height) / 2;
}

void title(Label& l, int left, int top, int width, int height, Font font) {
    l.Move(left, top, width, height);
    l.ForeColor = Color{224, 224, 224};
    l.font = std::move(font);
    l.Alignment = Align::Center;
}

void text(Label& l, PictureBox& panel, int left, int top, int width, int height, Color color,
          bool transparent) {
    l.container = &panel;
    l.Move(left, top, width, height);
    l.ForeColor = color;
    l.BackColor = Color{255, 255, 255};
    l.transparent = transparent;
    l.font = Font{"Arial", 9.75, true};
    l.Alignment = Align::Center;
}

void closeSymbol(Image& img, int left, int top, Window& w) {
    img.Move(left, top, 315, 315);
    img.picture = w.toolkit().pictures().make("meldung", "close", 32, 32, "(design)");
    img.Stretch = true;
    img.handCursor = true;
    img.ToolTipText = "schließen";
}

void clickArea(Label& l, int left, int top, int width, int height, const char* tip) {
    l.Move(left, top, width, height);
    l.handCursor = true;
    l.ToolTipText = tip;
}

}  // namespace

FrmMsgJa::FrmMsgJa(Toolkit& tk)
    : Window(tk, "frmMsgJa"),
      lblName(add<Label>("lblName")),
      Image1(add<Image>("Image1")),
      Picture1(add<PictureBox>("Picture1")),
      lblMeldung(add<Label>("lblMeldung")),
      lblTitel(add<Label>("lblTitel")),
      lblNein(add<Label>("lblNein")),
      lblJa(add<Label>("lblJa")) {
    frameless(*this, 5880, 3540);
    picture = design("meldung", "msg_ja_background", 392, 237);
    title(lblName, 930, 180, 3915, 315, Font{"Arial", 12, true});
    closeSymbol(Image1, 5460, 60, *this);
    Picture1.Move(60, 750, 5745, 2025);
    Picture1.border = true;
    text(lblMeldung, Picture1, 120, 30, 5475, 825, Color{0, 0, 255}, false);
    text(lblTitel, Picture1, 60, 900, 5505, 1035, Color{255, 0, 255}, false);
    clickArea(lblNein, 480, 2910, 2205, 375, "Fenster schließen ohne Bestätigung");
    clickArea(lblJa, 3330, 2880, 2175, 435, "Bestätigen");
}

FrmMsgOk::FrmMsgOk(Toolkit& tk)
    : Window(tk, "frmMsgOk"),
      lblName(add<Label>("lblName")),
      Image2(add<Image>("Image2")),
      Picture1(add<PictureBox>("Picture1")),
      lblMeldung(add<Label>("lblMeldung")),
      lblTitel(add<Label>("lblTitel")),
      lblOk(add<Label>("lblOk")) {
    frameless(*this, 5805, 3420);
    picture = design("meldung", "msg_ok_background", 392, 237);
    title(lblName, 960, 180, 4155, 435, Font{"Arial", 14.25, false});
    closeSymbol(Image2, 5370, 90, *this);
    Picture1.Move(60, 780, 5655, 2025);
    Picture1.border = true;
    text(lblMeldung, Picture1, 30, 60, 5445, 825, Color{0, 0, 255}, false);
    text(lblTitel, Picture1, 30, 930, 5505, 1005, Color{192, 0, 192}, true);
    clickArea(lblOk, 1800, 2910, 2175, 405, "Fenster schließen");
}

}  // namespace zd::ui
