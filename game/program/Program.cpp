#include "game/program/Program.h"

#include <memory>

#include "game/program/ProjectInfo.h"

namespace zd {

namespace {

template <class Form>
ui::Toolkit::Factory factory(std::function<void(Form&)>& bind) {
    return [&bind](ui::Toolkit& tk) {
        auto form = std::make_unique<Form>(tk);
        if (bind) bind(*form);
        return form;
    };
}

template <class Form>
ui::Toolkit::Factory plain() {
    return [](ui::Toolkit& tk) { return std::make_unique<Form>(tk); };
}

}  // namespace

Program::Program(ui::EventLoop& loop, sys::Platform& system, int screenWidthTwips,
                 int screenHeightTwips)
    : tk(loop, screenWidthTwips, screenHeightTwips), platform(system) {
    tk.App.Major = kVersionMajor;
    tk.App.Minor = kVersionMinor;
    tk.App.Revision = kVersionPatch;
    tk.App.Path = system.programFolder();
    tk.define("frmSpielfeld", factory(routines.spielfeld));
    tk.define("frmBeste", factory(routines.beste));
    tk.define("frmMsgOk", factory(routines.msgOk));
    tk.define("frmMsgJa", factory(routines.msgJa));
    tk.define("frmHintergrund", factory(routines.hintergrund));
    tk.define("frmBilder", plain<ui::FrmBilder>());
    tk.define("frmDigital", plain<ui::FrmDigital>());
}

}  // namespace zd
