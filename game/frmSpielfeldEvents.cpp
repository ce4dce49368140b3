// The event routines of the playing field: the human player's turn, the
// computer players' clockwork, and the steps from game to game.
#include <string>

#include "best/modBeste.h"
#include "game/Routines.h"
#include "system/Sound.h"

namespace zd {

namespace {

void startTimer(ui::Timer& t, int ms) {
    t.Enabled = true;
    t.Interval = ms;
}

void stopTimer(ui::Timer& t) {
    t.Enabled = false;
    t.Interval = 0;
}

class FieldEvents {
public:
    FieldEvents(Program& p, ui::FrmSpielfeld& f) : p_(p), g_(p.g), f_(f) {}

    void Form_Load() {
        startTimer(f_.timStart, 400);
        f_.lblInfo.Caption = "Klicke auf »Neues Spiel«";
        f_.lblGewonnen.Caption = "";
        blankDigits();
        f_.Caption = "Zifferndach  Vers: " + p_.tk.App.version();
        for (int i = 0; i <= 3; ++i) f_.imgWurf[i].picture = bank().imgWurf[0].picture;
        f_.imgAuswahlTreffen.picture = bank().imgPfeilLinks[2].picture;
        f_.imgNeuerWurf.picture = bank().imgPfeilLinks[2].picture;
        f_.imgWuerfeln.Visible = false;
    }

    // Whenever the field becomes the active window the credits go blank,
    // until the next ZeigeGuthaben draws them.
    void Form_Activate() { blankDigits(); }

    void Form_Unload() {
        stopTimer(f_.timComputerDrehe);
        stopTimer(f_.timComputerStopp);
        stopTimer(f_.timDrehen);
        p_.tk.end();
    }

    void imgNeu_Click() {
        f_.mnuSpiel[1].Enabled = false;
        stopTimer(f_.timStart);
        f_.imgStart.picture = bank().imgPfeilLinks[2].picture;
        f_.imgNeu.Visible = false;
        ZeigeWuerfeln();
        ZeigeGuthaben(p_);
    }

    void ZeigeWuerfeln() {
        f_.imgNeuerWurf.picture = bank().imgPfeilrechts[1].picture;
        f_.imgWuerfeln.Visible = true;
        f_.lblInfo.Caption = "Klicke auf »Würfeln«";
    }

    void imgWuerfeln_Click() {
        f_.lblInfo.Caption = "";
        f_.imgWuerfeln.Visible = false;
        f_.imgNeuerWurf.picture = bank().imgPfeilrechts[2].picture;
        startTimer(f_.timZeit, 700);
        startTimer(f_.timDrehen, 30);
    }

    void SpielerDrehen() {
        f_.DrehBild = (f_.DrehBild + 1) % 3;
        f_.imgWurf[0].picture = bank().imgDreh[f_.DrehBild].picture;
    }

    void timZeit_Timer() {
        stopTimer(f_.timDrehen);
        stopTimer(f_.timZeit);
        WurfAuswerten();
    }

    void WurfAuswerten() {
        ui::FrmBilder& b = bank();
        f_.lblGewonnen.Caption = "";
        f_.imgNeuerWurf.picture = b.imgPfeilrechts[2].picture;
        f_.imgWuerfeln.Visible = false;
        f_.Wurf = ZufallsWurf(p_.die);
        g_.WurfNummer = static_cast<std::int16_t>(g_.WurfNummer + 1);
        f_.imgWurf[0].picture = b.imgWurf[f_.Wurf].picture;
        f_.lblAndrea.Caption = "";
        f_.lblThomas.Caption = "";
        f_.lblVictoria.Caption = "";
        for (int i = 1; i <= 3; ++i) f_.imgAuswahl[i].Visible = false;

        if (g_.WurfNummer == 1 || g_.WurfNummer == 2) {
            for (int i = 1; i <= 3; ++i) {
                if (!isFree(p_, f_.imgWurf[i])) continue;
                f_.imgAuswahl[i].Visible = true;
                f_.lblInfo.Caption = "Treffe eine Auswahl";
                if (g_.Belegt[i]) f_.imgAuswahl[i].Visible = false;
                f_.imgAuswahlTreffen.picture = b.imgPfeilrechts[1].picture;
            }
            return;
        }

        // The third throw goes to the one place left, with no question.
        int platz = 1;
        while (platz < 3 && !isFree(p_, f_.imgWurf[platz])) ++platz;
        g_.Ergebnis[0] += placeValue(platz - 1) * f_.Wurf;
        f_.lblErgebnis[0].Caption = std::to_string(g_.Ergebnis[0]);
        f_.imgWurf[platz].picture = b.imgWurf[f_.Wurf].picture;
        if (g_.Gewinner[1]) {
            RundeAuswerten(p_);
        } else {
            g_.AktiverComputer = 1;
            startComputerSpin(f_);
        }
    }

    void imgAuswahl_Click(int index) {
        ui::FrmBilder& b = bank();
        f_.imgWurf[0].picture = b.imgWurf[0].picture;
        f_.imgAuswahlTreffen.picture = b.imgPfeilrechts[2].picture;
        g_.Belegt[index] = true;
        g_.Ergebnis[0] += f_.Wurf * placeValue(index - 1);
        f_.lblErgebnis[0].Caption = std::to_string(g_.Ergebnis[0]);
        f_.imgWurf[index].picture = b.imgWurf[f_.Wurf].picture;
        for (int i = 1; i <= 3; ++i) f_.imgAuswahl[i].Visible = false;
        f_.imgWuerfeln.Visible = false;
        f_.lblInfo.Caption = "";
        g_.AktiverComputer = 1;
        startComputerSpin(f_);
    }

    void PfeilBlinken() {
        f_.PfeilBild = (f_.PfeilBild + 1) % 2;
        f_.imgStart.picture = bank().imgPfeilLinks[f_.PfeilBild].picture;
    }

    void ComputerDrehen() {
        ui::Image& wuerfel = f_.imgWurf[g_.AktiverComputer + 3];
        wuerfel.Visible = true;
        f_.DrehBild = (f_.DrehBild + 1) % 3;
        wuerfel.picture = bank().imgDreh[f_.DrehBild].picture;
    }

    void timComputerStopp_Timer() {
        stopTimer(f_.timComputerDrehe);
        stopTimer(f_.timComputerStopp);
        for (int i = 4; i <= 6; ++i) f_.imgWurf[i].Visible = false;
        switch (g_.AktiverComputer) {
            case 1:
                SpielzugAndrea(p_);
                break;
            case 2:
                SpielzugThomas(p_);
                break;
            case 3:
                SpielzugVictoria(p_);
                break;
            default:
                break;
        }
    }

    void imgNaechsterLevel_Click() {
        f_.lblInfo.Caption = "";
        f_.imgNaechsterLevel.Visible = false;
        f_.imgNeuerWurf.picture = bank().imgPfeilrechts[2].picture;
        NaechsteRunde(p_);
    }

    void ExternesEnde() {
        // The best-list button's offer ends here too; a game that ended
        // behind it is told first, and only that telling asks for a new game.
        if (p_.spielendeWartet) return;
        bool ende = false;
        for (int i = 0; i <= 3; ++i) {
            if (g_.Guthaben[i] == 0) ende = true;
        }
        if (!ende) return;
        const bool ja =
            askYesNo(p_, 2,
                     std::string(CRLF) + "Das Spiel ist beendet!" + CRLF +
                         "Möchtest Du ein neues Spiel beginnen?",
                     std::string(CRLF) + "»Neues Spiel« bestätigen", besideField(-500, -500));
        if (!ja) {
            p_.tk.unload(f_);
            return;
        }
        SetzeSpielwerte(p_);
        LeereSpielfeld(p_);
        ZeigeGuthaben(p_);
        NaechsteRunde(p_);
    }

    void imgEnde_Click() {
        if (g_.Guthaben[0] != 0) {
            // The timers run on behind the question; should the game end
            // there, it is told after Nein, and Ja simply ends the program.
            const bool ja =
                askYesNo(p_, 2,
                         std::string(CRLF) + "Bist Du sicher," + CRLF +
                             "dass Du das Spiel beenden möchtest?",
                         std::string(CRLF) + "»Spiel beenden« bestätigen", besideField(1000, 1000));
            if (!ja) return;
        }
        p_.tk.unload(f_);
    }

    void imgBeste_Click() {
        PruefeBestmarke(p_);
        f_.imgBeste.Visible = false;
    }

private:
    ui::FrmBilder& bank() { return p_.frmBilder(); }

    void blankDigits() {
        for (int i = 0; i <= 7; ++i) f_.imgDiggi[i].picture = p_.frmDigital().imgDiggi[10].picture;
    }

    Program& p_;
    SharedVariables& g_;
    ui::FrmSpielfeld& f_;
};

}  // namespace

bool isFree(Program& p, const ui::Image& place) {
    return ui::sameObject(place.picture, p.frmBilder().imgWurf[0].picture);
}

void startComputerSpin(ui::FrmSpielfeld& f) {
    startTimer(f.timComputerDrehe, 30);
    startTimer(f.timComputerStopp, 500);
}

void bindFrmSpielfeld(Program& p, ui::FrmSpielfeld& f) {
    auto s = std::make_shared<FieldEvents>(p, f);
    f.Form_Load = [s] { s->Form_Load(); };
    f.Form_Activate = [s] { s->Form_Activate(); };
    f.Form_Unload = [s] { s->Form_Unload(); };
    f.ZeigeWuerfeln = [s] { s->ZeigeWuerfeln(); };
    f.ExternesEnde = [s] { s->ExternesEnde(); };
    f.imgNeu.Click = [s] { s->imgNeu_Click(); };
    f.imgWuerfeln.Click = [s] { s->imgWuerfeln_Click(); };
    for (int i = 1; i <= 3; ++i) f.imgAuswahl[i].Click = [s, i] { s->imgAuswahl_Click(i); };
    f.imgNaechsterLevel.Click = [s] { s->imgNaechsterLevel_Click(); };
    f.imgEnde.Click = [s] { s->imgEnde_Click(); };
    f.imgBeste.Click = [s] { s->imgBeste_Click(); };
    f.timStart.TimerEvent = [s] { s->PfeilBlinken(); };
    f.timDrehen.TimerEvent = [s] { s->SpielerDrehen(); };
    f.timZeit.TimerEvent = [s] { s->timZeit_Timer(); };
    f.timComputerDrehe.TimerEvent = [s] { s->ComputerDrehen(); };
    f.timComputerStopp.TimerEvent = [s] { s->timComputerStopp_Timer(); };
    f.mnuSpiel[1].Click = [s] { s->imgNeu_Click(); };
    f.mnuSpiel[3].Click = [&p, &f] { p.tk.unload(f); };
}

}  // namespace zd
