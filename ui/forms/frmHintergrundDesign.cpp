#include "ui/forms/frmHintergrundDesign.h"

namespace zd::ui {

FrmHintergrund::FrmHintergrund(Toolkit& tk)
    : Window(tk, "frmHintergrund"), Image1(add<Image>("Image1")) {
    titleBar = false;
    closeBox = false;
    inTaskbar = false;
    BackColor = Color{224, 224, 224};
    Move(0, 0, 13920, 10695);
    Image1.Move(960, 510, 12195, 8295);
    Image1.picture = design("hintergrund", "backdrop", 643, 647);
    Image1.Stretch = true;
}

}  // namespace zd::ui
