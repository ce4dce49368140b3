#pragma once

#include "ui/model/Toolkit.h"

namespace zd::ui {

// The program's own frameless message windows: frmMsgOk tells, frmMsgJa asks.
class FrmMsgJa : public Window {
public:
    explicit FrmMsgJa(Toolkit& tk);

    Label& lblName;
    Image& Image1;
    PictureBox& Picture1;
    Label& lblMeldung;
    Label& lblTitel;
    Label& lblNein;
    Label& lblJa;
};

class FrmMsgOk : public Window {
public:
    explicit FrmMsgOk(Toolkit& tk);

    Label& lblName;
    Image& Image2;
    PictureBox& Picture1;
    Label& lblMeldung;
    Label& lblTitel;
    Label& lblOk;
};

}  // namespace zd::ui
