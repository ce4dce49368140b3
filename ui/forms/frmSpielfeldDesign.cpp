#include "ui/forms/frmSpielfeldDesign.h"

namespace zd::ui {

namespace {

constexpr Color kPale{226, 230, 242};
constexpr Color kBlue{0, 0, 255};

Font arial(double points) {
    return Font{"Arial", points, true};
}

}  // namespace

Label& FrmSpielfeld::makeLabel1(int index, int left, int top, Color color) {
    Label& l = add(Label1, "Label1", index);
    l.Move(left, top, 2115, 825);
    l.Caption = "Zifferndach";
    l.ForeColor = color;
    l.font = arial(14.25);
    l.Alignment = Align::Center;
    return l;
}

Image& FrmSpielfeld::makeImage(const char* name, int left, int top, int width, int height,
                               Picture look) {
    Image& img = add<Image>(name);
    img.Move(left, top, width, height);
    img.picture = std::move(look);
    return img;
}

Image& FrmSpielfeld::makeButton(const char* name, int left, int top, int width, const char* element,
                                int widthPx, const char* tip) {
    Image& img = makeImage(name, left, top, width, 630, design("spielfeld", element, widthPx, 42));
    img.handCursor = true;
    img.ToolTipText = tip;
    return img;
}

FrmSpielfeld::FrmSpielfeld(Toolkit& tk)
    : Window(tk, "frmSpielfeld"),
      lblHilfe(makeImage("lblHilfe", 330, 1170, 1440, 630, design("bilder", "btn_hilfe", 96, 42))),
      lblAllgemein(
          makeImage("lblAllgemein", 330, 1860, 1440, 630, design("bilder", "btn_info", 96, 42))),
      Image2(
          makeImage("Image2", 150, 2820, 2865, 630, design("spielfeld", "plate_andrea", 191, 42))),
      Image3(
          makeImage("Image3", 150, 3450, 2865, 630, design("spielfeld", "plate_thomas", 191, 42))),
      Image4(makeImage("Image4", 150, 4080, 2865, 630,
                       design("spielfeld", "plate_victoria", 191, 42))),
      Image5(
          makeImage("Image5", 180, 4710, 2865, 630, design("spielfeld", "plate_spieler", 191, 42))),
      imgNeu(makeButton("imgNeu", 60, 5400, 2985, "btn_neu", 199, "Neues Spiel beginnen")),
      imgStart(makeImage("imgStart", 3150, 5490, 495, 360,
                         design("bilder", "arrow_left_yellow", 33, 24))),
      imgEnde(makeButton("imgEnde", 120, 6060, 2115, "btn_ende", 141, "Spiel beenden")),
      Line1(add<Line>("Line1")),
      lblGewonnen(add<Label>("lblGewonnen")),
      imgAuswahlTreffen(makeImage("imgAuswahlTreffen", 2520, 2280, 495, 360,
                                  design("bilder", "arrow_right_yellow", 33, 24))),
      imgNeuerWurf(makeImage("imgNeuerWurf", 3120, 4560, 495, 360,
                             design("bilder", "arrow_right_yellow", 33, 24))),
      imgWuerfeln(makeButton("imgWuerfeln", 3660, 4440, 2865, "btn_wuerfeln", 191, "Würfeln")),
      imgNaechsterLevel(makeButton("imgNaechsterLevel", 3630, 4440, 2865, "btn_naechster_level",
                                   191, "Nächsten Level spielen")),
      lblInfo(add<Label>("lblInfo")),
      imgBeste(makeButton("imgBeste", 3600, 6060, 2865, "btn_beste", 191, "Beste Spieler")),
      Picture1(add<PictureBox>("Picture1")),
      lblAndrea(add<Label>("lblAndrea")),
      lblThomas(add<Label>("lblThomas")),
      lblVictoria(add<Label>("lblVictoria")),
      lstSummen(add<ListBox>("lstSummen")),
      lstErgebnis(add<ListBox>("lstErgebnis")),
      timStart(add<Timer>("timStart")),
      timDrehen(add<Timer>("timDrehen")),
      timZeit(add<Timer>("timZeit")),
      timComputerDrehe(add<Timer>("timComputerDrehe")),
      timComputerStopp(add<Timer>("timComputerStopp")),
      mnuMenue1(addMenu("mnuMenue1", -1, "&Spiel               ", nullptr)),
      mnuMenue2(addMenu("mnuMenue2", -1, "&Optionen               ", nullptr)),
      mnuSound(addMenu("mnuSound", -1, "Sound", &mnuMenue2)),
      mnuMenue3(addMenu("mnuMenue3", -1, "&Informationen", nullptr)) {
    Caption = "Form1";
    frameWithTitle(11760, 6750, true);
    // Centred on the screen when first shown.
    Left = (tk.screenWidth() - Width) / 2;
    Top = (tk.screenHeight() - Height) / 2;
    closeBox = true;
    BackColor = kPale;
    picture = design("spielfeld", "background", 650, 450);
    icon = design("spielfeld", "icon", 32, 32);

    // Two copies of the title, slightly apart, give it a two-coloured edge.
    makeLabel1(0, 1200, 210, kBlue);
    makeLabel1(1, 1230, 180, Color{255, 255, 128});

    lblHilfe.ToolTipText = "Spielanleitung";
    lblAllgemein.ToolTipText = "Allgemeine Informationen";

    // Credit digits, tens left of ones, at the right end of each plate.
    const int digitLeft[8] = {2550, 2310, 2550, 2310, 2520, 2310, 2550, 2310};
    const int digitTop[4] = {4830, 2940, 3570, 4200};
    for (int i = 0; i < 8; ++i) {
        Image& d = add(imgDiggi, "imgDiggi", i);
        d.Move(digitLeft[i], digitTop[i / 2], 210, 420);
        d.picture = design("digital", "digit_green_blank", 14, 28);
    }

    Line1.X1 = 6780;
    Line1.Y1 = 270;
    Line1.X2 = 6780;
    Line1.Y2 = 6420;
    Line1.BorderColor = kBlue;
    Line1.BorderWidth = 2;

    lblGewonnen.Move(3570, 90, 2685, 855);
    lblGewonnen.ForeColor = Color{255, 0, 0};
    lblGewonnen.font = arial(12);
    lblGewonnen.Alignment = Align::Center;

    const int placeLeft[4] = {4230, 5340, 4290, 3240};
    for (int i = 0; i <= 3; ++i) {
        Image& die = add(imgWurf, "imgWurf", i);
        die.Move(placeLeft[i], i == 0 ? 3210 : 1140, 1035, 990);
        die.picture = design("bilder", "die_0", 69, 66);
    }
    const int choiceLeft[4] = {0, 5580, 4560, 3510};
    for (int i = 1; i <= 3; ++i) {
        Image& choice = add(imgAuswahl, "imgAuswahl", i);
        choice.Move(choiceLeft[i], 2220, 600, 615);
        choice.picture = design("spielfeld", "choice", 40, 41);
        choice.Visible = false;
        choice.handCursor = true;
        choice.ToolTipText = "Anzahl wählen";
    }

    lblInfo.Move(3390, 5280, 3105, 615);
    lblInfo.ForeColor = kBlue;
    lblInfo.font = arial(11.25);
    lblInfo.Alignment = Align::Center;

    // The board panel is larger than the window shows; its right part,
    // from 5040 on, keeps the working controls out of sight.
    Picture1.Move(6810, 0, 10185, 7995);
    Picture1.picture = design("spielfeld", "panel", 675, 702);
    Picture1.BackColor = kPale;

    const char* names[3] = {"Andrea", "Thomas", "Victoria"};
    const int nameLeft[3] = {1920, 2100, 2040};
    const int nameTop[3] = {210, 2310, 4290};
    const int nameHeight[3] = {405, 345, 345};
    for (int i = 0; i < 3; ++i) {
        Label& l = add(Label2, "Label2", i);
        l.container = &Picture1;
        l.Move(nameLeft[i], nameTop[i], 1545, nameHeight[i]);
        l.Caption = names[i];
        l.ForeColor = Color{64, 64, 64};
        l.font = arial(14.25);
        l.Alignment = Align::Center;
    }

    // Stored design places; SetzeSpielwerte lines these up before the
    // window is first seen.
    struct Place {
        int left, top;
    };
    const Place spinning[3] = {{0, 780}, {60, 2850}, {90, 4740}};
    for (int i = 0; i < 3; ++i) {
        Image& die = add(imgWurf, "imgWurf", 4 + i);
        die.container = &Picture1;
        die.Move(spinning[i].left, spinning[i].top, 1035, 990);
        die.picture = design("bilder", "die_0", 69, 66);
    }
    const Place rows[3][3] = {{{3690, 810}, {2190, 810}, {1110, 780}},
                              {{3360, 2730}, {2370, 2730}, {1320, 2760}},
                              {{3300, 4860}, {2310, 4890}, {1350, 4920}}};
    ControlArray<Image>* boards[3] = {&imgAndrea, &imgThomas, &imgVictoria};
    const char* boardNames[3] = {"imgAndrea", "imgThomas", "imgVictoria"};
    for (int p = 0; p < 3; ++p) {
        for (int i = 2; i >= 0; --i) {
            Image& die = add(*boards[p], boardNames[p], i);
            die.container = &Picture1;
            die.Move(rows[p][i].left, rows[p][i].top, 1035, 990);
            die.picture = design("bilder", "die_0", 69, 66);
        }
    }
    const Place frames[3] = {{1050, 660}, {1080, 2700}, {1140, 4740}};
    for (int i = 0; i < 3; ++i) {
        Shape& s = add(Shape1, "Shape1", i);
        s.container = &Picture1;
        s.Move(frames[i].left, frames[i].top, 3285, 1155);
        s.BorderColor = kBlue;
        s.BorderWidth = 2;
    }

    Label* throwTexts[3] = {&lblAndrea, &lblThomas, &lblVictoria};
    const Place textPlace[3] = {{570, 1890}, {600, 4020}, {600, 5970}};
    const int textSize[3][2] = {{2895, 405}, {3675, 405}, {3765, 495}};
    for (int i = 0; i < 3; ++i) {
        Label& l = *throwTexts[i];
        l.container = &Picture1;
        l.Move(textPlace[i].left, textPlace[i].top, textSize[i][0], textSize[i][1]);
        l.ForeColor = Color{0, 0, 192};
        l.font = arial(11.25);
    }

    const Place results[4] = {{5070, 240}, {5160, 1410}, {5040, 2430}, {5040, 3240}};
    for (int i = 0; i < 4; ++i) {
        Label& l = add(lblErgebnis, "lblErgebnis", i);
        l.container = &Picture1;
        l.Move(results[i].left, results[i].top, 2655, 435);
        l.Caption = "Label1";
    }
    lstSummen.container = &Picture1;
    lstSummen.Move(5490, 5190, 705, 1230);
    lstErgebnis.container = &Picture1;
    lstErgebnis.Move(6600, 5160, 675, 1230);
    lstErgebnis.Sorted = true;
    timComputerDrehe.container = &Picture1;
    timComputerStopp.container = &Picture1;

    MenuItem& neu = addMenu("mnuSpiel", 1, "&Neues Spiel", &mnuMenue1);
    mnuSpiel.put(1, neu);
    mnuSpiel.put(2, addMenu("mnuSpiel", 2, "-", &mnuMenue1));
    MenuItem& beenden = addMenu("mnuSpiel", 3, "b&eenden", &mnuMenue1);
    beenden.Shortcut = "Ctrl+E";
    mnuSpiel.put(3, beenden);
    MenuItem& an = addMenu("mnuSoundan", 1, "an", &mnuSound);
    an.Checked = true;
    mnuSoundan.put(1, an);
    mnuSoundan.put(2, addMenu("mnuSoundan", 2, "aus", &mnuSound));
    MenuItem& anleitung = addMenu("mnuInfo", 1, "&Spielanleitung", &mnuMenue3);
    anleitung.Shortcut = "F1";
    mnuInfo.put(1, anleitung);
    mnuInfo.put(2, addMenu("mnuInfo", 2, "zur Anwendung...", &mnuMenue3));
    mnuInfo.put(3, addMenu("mnuInfo", 3, "-", &mnuMenue3));
    mnuInfo.put(4, addMenu("mnuInfo", 4, "&Beste Spieler...", &mnuMenue3));

    // The keyboard's way round the buttons: the left column from the top,
    // then the board. Of buttons that appear together the best-list offer
    // comes first, as it is easily missed and the next level waits anyway.
    focusOrder = {&lblHilfe,      &lblAllgemein,  &imgNeu,      &imgEnde,           &imgAuswahl[3],
                  &imgAuswahl[2], &imgAuswahl[1], &imgWuerfeln, &imgNaechsterLevel, &imgBeste};
    focusDefaults = {&imgNeu,        &imgWuerfeln, &imgAuswahl[3],    &imgAuswahl[2],
                     &imgAuswahl[1], &imgBeste,    &imgNaechsterLevel};
    arrowRows = {{&imgAuswahl[3], &imgAuswahl[2], &imgAuswahl[1]}};
}

}  // namespace zd::ui
