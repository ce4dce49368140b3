#pragma once

#include "ui/model/Toolkit.h"

namespace zd::ui {

// The list of the five best players. Right of the client area (x > 5100) it
// keeps controls that hold data and are never seen.
class FrmBeste : public Window {
public:
    explicit FrmBeste(Toolkit& tk);

    Label& Label1;
    Label& Label2;
    Line& Line1;
    Line& Line2;
    ControlArray<TextBox> txtSpieler;  // 0-4 names, 5-9 their points
    ControlArray<Image> imgDiggi;      // five rows of seven, column 0 the units
    Image& lblClear;
    Image& cmdEnde;
    ListBox& lstName;
    ListBox& lstPunkte;
    CommandButton& cmdClear;
};

}  // namespace zd::ui
