#include "game/program/Programm.h"

#include <memory>

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

Programm::Programm(ui::EventLoop& loop, sys::Platform& platform, int screenWidthTwips,
                   int screenHeightTwips)
    : tk(loop, screenWidthTwips, screenHeightTwips), platform(platform) {
    tk.App.Path = platform.programFolder();
    tk.define("frmSpielfeld", factory(ereignisse.spielfeld));
    tk.define("frmBeste", factory(ereignisse.beste));
    tk.define("frmMsgOk", factory(ereignisse.msgOk));
    tk.define("frmMsgJa", factory(ereignisse.msgJa));
    tk.define("frmHintergrund", factory(ereignisse.hintergrund));
    tk.define("frmBilder", plain<ui::FrmBilder>());
    tk.define("frmDigital", plain<ui::FrmDigital>());
}

}  // namespace zd
