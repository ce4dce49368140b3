#pragma once

#include "ui/model/Toolkit.h"

namespace zd::ui {

// The picture banks: never shown; their controls are a table of pictures,
// and the reference that the free-place test compares against.
class FrmBilder : public Window {
public:
    explicit FrmBilder(Toolkit& tk);

    ControlArray<Image> imgWurf;         // 0 the blank die, 1-6 the faces
    ControlArray<Image> imgDreh;         // spin frames; 3 is never read
    ControlArray<Image> imgPfeilLinks;   // 0 yellow, 1 red, 2 no picture
    ControlArray<Image> imgPfeilrechts;  // 0 red, 1 yellow, 2 no picture
    Image& cmdHilfeAuswahl;
    Image& cmdHilfeGruen;
    Image& cmdBeschreibungenAuswahl;
    Image& cmdallgemeinGruen;

private:
    Image& bank(const char* name, int index, const char* element, int widthPx, int heightPx);
};

class FrmDigital : public Window {
public:
    explicit FrmDigital(Toolkit& tk);

    ControlArray<Image> imgDiggi;  // green digits, 10 the blank digit
    ControlArray<Image> imgRot;    // the same in red, never read
};

}  // namespace zd::ui
