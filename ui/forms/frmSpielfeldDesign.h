#pragma once

#include <functional>

#include "ui/model/Toolkit.h"

namespace zd::ui {

// The playing field: every control at its design-time place and value. What
// the events do is the game's business; it binds them when the window is made.
class FrmSpielfeld : public Window {
public:
    explicit FrmSpielfeld(Toolkit& tk);

    ControlArray<Label> Label1;
    Image& lblHilfe;
    Image& lblAllgemein;
    Image& Image2;
    Image& Image3;
    Image& Image4;
    Image& Image5;
    ControlArray<Image> imgDiggi;
    Image& imgNeu;
    Image& imgStart;
    Image& imgEnde;
    Line& Line1;
    Label& lblGewonnen;
    ControlArray<Image> imgWurf;
    Image& imgAuswahlTreffen;
    ControlArray<Image> imgAuswahl;
    Image& imgNeuerWurf;
    Image& imgWuerfeln;
    Image& imgNaechsterLevel;
    Label& lblInfo;
    Image& imgBeste;

    PictureBox& Picture1;
    ControlArray<Label> Label2;
    ControlArray<Image> imgAndrea;
    ControlArray<Image> imgThomas;
    ControlArray<Image> imgVictoria;
    ControlArray<Shape> Shape1;
    Label& lblAndrea;
    Label& lblThomas;
    Label& lblVictoria;
    ControlArray<Label> lblErgebnis;
    ListBox& lstSummen;
    ListBox& lstErgebnis;

    Timer& timStart;
    Timer& timDrehen;
    Timer& timZeit;
    Timer& timComputerDrehe;
    Timer& timComputerStopp;

    MenuItem& mnuMenue1;
    ControlArray<MenuItem> mnuSpiel;
    MenuItem& mnuMenue2;
    MenuItem& mnuSound;
    ControlArray<MenuItem> mnuSoundan;
    MenuItem& mnuMenue3;
    ControlArray<MenuItem> mnuInfo;

    // Variables of the window, 0 whenever it is made.
    int Wurf = 0;
    int DrehBild = 0;
    int PfeilBild = 0;

    // Public methods; the game gives them their bodies.
    std::function<void()> ExternesEnde;
    std::function<void()> ZeigeWuerfeln;

private:
    Label& makeLabel1(int index, int left, int top, Color color);
    Image& makeImage(const char* name, int left, int top, int width, int height, Picture look);
    Image& makeButton(const char* name, int left, int top, int width, const char* element,
                      int widthPx, const char* tip);
};

}  // namespace zd::ui
