#pragma once

#include "ui/model/Toolkit.h"

namespace zd::ui {

// The screen-filling backdrop behind the playing field.
class FrmHintergrund : public Window {
public:
    explicit FrmHintergrund(Toolkit& tk);

    Image& Image1;
};

}  // namespace zd::ui
