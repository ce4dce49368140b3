#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "game/program/Die.h"
#include "system/Platform.h"
#include "ui/forms/Banks.h"
#include "ui/forms/MessageWindows.h"
#include "ui/forms/frmBesteDesign.h"
#include "ui/forms/frmHintergrundDesign.h"
#include "ui/forms/frmSpielfeldDesign.h"
#include "ui/model/Toolkit.h"

namespace zd {

// The shared variables of the game, all 0, False or empty at start.
struct SharedVariables {
    std::array<std::int32_t, 4> Ergebnis{};
    std::array<std::int32_t, 4> Guthaben{};
    std::array<bool, 4> Gewinner{};
    std::array<std::string, 4> SpielerName{};
    std::int16_t WurfNummer = 0;
    std::int16_t AktiverComputer = 0;
    std::array<bool, 4> Belegt{};  // places 1 to 3 of the human player
    std::int32_t SpielerPunkte = 0;
    std::int32_t Bestmarke = 0;
    std::int32_t MsgAntwort = 0;
    bool FestplatteGefunden = false;
    std::string DatenPfad;
    bool SoundAn = false;
    std::int16_t EintragPlatz = 0;
    bool NeuerEintrag = false;

    // Each variable with its name and the index of its first element, for
    // whoever reaches them by name (the driver); one list, kept beside them.
    template <class Visit>
    void forEach(Visit&& visit) {
        visit("Ergebnis", Ergebnis, 0);
        visit("Guthaben", Guthaben, 0);
        visit("Gewinner", Gewinner, 0);
        visit("SpielerName", SpielerName, 0);
        visit("WurfNummer", WurfNummer, 0);
        visit("AktiverComputer", AktiverComputer, 0);
        visit("Belegt", Belegt, 1);
        visit("SpielerPunkte", SpielerPunkte, 0);
        visit("Bestmarke", Bestmarke, 0);
        visit("MsgAntwort", MsgAntwort, 0);
        visit("FestplatteGefunden", FestplatteGefunden, 0);
        visit("DatenPfad", DatenPfad, 0);
        visit("SoundAn", SoundAn, 0);
        visit("EintragPlatz", EintragPlatz, 0);
        visit("NeuerEintrag", NeuerEintrag, 0);
    }
};

// Event routines per window, bound when the window is made.
struct EventRoutines {
    std::function<void(ui::FrmSpielfeld&)> spielfeld;
    std::function<void(ui::FrmBeste&)> beste;
    std::function<void(ui::FrmMsgOk&)> msgOk;
    std::function<void(ui::FrmMsgJa&)> msgJa;
    std::function<void(ui::FrmHintergrund&)> hintergrund;
};

// One running program: its windows, its shared variables, its die and the
// platform it runs on. Nothing of it is global, so one process can hold many.
class Program {
public:
    Program(ui::EventLoop& loop, sys::Platform& system, int screenWidthTwips,
            int screenHeightTwips);

    ui::FrmSpielfeld& frmSpielfeld() { return tk.use<ui::FrmSpielfeld>("frmSpielfeld"); }
    ui::FrmBilder& frmBilder() { return tk.use<ui::FrmBilder>("frmBilder"); }
    ui::FrmDigital& frmDigital() { return tk.use<ui::FrmDigital>("frmDigital"); }
    ui::FrmBeste& frmBeste() { return tk.use<ui::FrmBeste>("frmBeste"); }
    ui::FrmMsgOk& frmMsgOk() { return tk.use<ui::FrmMsgOk>("frmMsgOk"); }
    ui::FrmMsgJa& frmMsgJa() { return tk.use<ui::FrmMsgJa>("frmMsgJa"); }
    ui::FrmHintergrund& frmHintergrund() { return tk.use<ui::FrmHintergrund>("frmHintergrund"); }

    ui::Toolkit tk;
    sys::Platform& platform;
    SharedVariables g;
    // A round that ends while a window the player opened stands open (a
    // question, the information, the list, the best-list offer) is evaluated
    // at once, but whether it ended the game is told only when that window,
    // and every window that followed from it, has gone.
    bool spielendeWartet = false;
    // The best list as this copy last read or wrote it, so that a save can
    // tell whether another running copy has saved since; unknown after a
    // failed read.
    std::optional<std::array<std::string, 10>> bestListSeen;
    Die die;
    EventRoutines routines;
};

}  // namespace zd
