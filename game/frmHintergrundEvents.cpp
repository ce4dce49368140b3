// The full-screen table behind the playing field, which never covers it.
#include "game/Routines.h"

namespace zd {

void bindFrmHintergrund(Program& p, ui::FrmHintergrund& f) {
    f.Form_Load = [&p, &f] {
        f.Move(0, 0, p.tk.screenWidth(), p.tk.screenHeight());
        f.Image1.Move(0, 0);
        f.Image1.Width = f.Width;
        f.Image1.Height = f.Height;
    };
    f.Form_Activate = [&p] { p.tk.show(p.frmSpielfeld()); };
    f.Form_Click = [] {};
}

}  // namespace zd
