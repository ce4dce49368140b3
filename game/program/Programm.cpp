#include "game/program/Programm.h"

#include <charconv>
#include <limits>
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

std::optional<long long> wholeNumber(const std::string& text) {
    long long value = 0;
    const char* end = text.data() + text.size();
    auto [ptr, ec] = std::from_chars(text.data(), end, value);
    if (ec != std::errc() || ptr != end) return std::nullopt;
    return value;
}

std::optional<bool> truth(const std::string& text) {
    if (text == "True") return true;
    if (text == "False") return false;
    return std::nullopt;
}

std::string unprintable(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, 4, "\\r\\n") == 0) {
            out += "\r\n";
            i += 3;
        } else {
            out += text[i];
        }
    }
    return out;
}

// One shared variable, seen as a row of elements with the given first index.
struct Ansicht {
    enum class Art { Zahl, Wahr, Text } art;
    int erster = 0;
    int anzahl = 1;
    std::function<std::string(int)> lies;
    std::function<bool(int, const std::string&)> schreib;
};

// Numbers outside [kleinste, groesste] are refused: by default those the
// type cannot hold, for an index those its arrays cannot take.
template <class T>
Ansicht zahl(T* werte, int erster, int anzahl,
             long long kleinste = std::numeric_limits<T>::min(),
             long long groesste = std::numeric_limits<T>::max()) {
    return {Ansicht::Art::Zahl, erster, anzahl,
            [werte](int i) { return std::to_string(werte[i]); },
            [werte, kleinste, groesste](int i, const std::string& v) {
                auto n = wholeNumber(v);
                if (!n || *n < kleinste || *n > groesste) return false;
                werte[i] = static_cast<T>(*n);
                return true;
            }};
}

Ansicht wahr(bool* werte, int erster, int anzahl) {
    return {Ansicht::Art::Wahr, erster, anzahl,
            [werte](int i) { return ui::printableBool(werte[i]); },
            [werte](int i, const std::string& v) {
                auto b = truth(v);
                if (!b) return false;
                werte[i] = *b;
                return true;
            }};
}

Ansicht text(std::string* werte, int erster, int anzahl) {
    return {Ansicht::Art::Text, erster, anzahl,
            [werte](int i) { return ui::printableText(werte[i]); },
            [werte](int i, const std::string& v) {
                werte[i] = unprintable(v);
                return true;
            }};
}

std::optional<Ansicht> ansicht(Gemeinsam& g, const std::string& name) {
    if (name == "Ergebnis") return zahl(g.Ergebnis.data(), 0, 4);
    if (name == "Guthaben") return zahl(g.Guthaben.data(), 0, 4);
    if (name == "Gewinner") return wahr(g.Gewinner.data(), 0, 4);
    if (name == "SpielerName") return text(g.SpielerName.data(), 0, 4);
    if (name == "WurfNummer") return zahl(&g.WurfNummer, 0, 1);
    // The spinning computer player, 1 to 3, and 0 before the first spin.
    if (name == "AktiverComputer") return zahl(&g.AktiverComputer, 0, 1, 0, 3);
    if (name == "Belegt") return wahr(g.Belegt.data() + 1, 1, 3);
    if (name == "SpielerPunkte") return zahl(&g.SpielerPunkte, 0, 1);
    if (name == "Bestmarke") return zahl(&g.Bestmarke, 0, 1);
    if (name == "MsgAntwort") return zahl(&g.MsgAntwort, 0, 1);
    if (name == "FestplatteGefunden") return wahr(&g.FestplatteGefunden, 0, 1);
    if (name == "DatenPfad") return text(&g.DatenPfad, 0, 1);
    if (name == "SoundAn") return wahr(&g.SoundAn, 0, 1);
    // A place of the list, 0 to 4, or -1 for none.
    if (name == "EintragPlatz") return zahl(&g.EintragPlatz, 0, 1, -1, 4);
    if (name == "NeuerEintrag") return wahr(&g.NeuerEintrag, 0, 1);
    return std::nullopt;
}

// Element of a row: arrays need an index in range, single values none.
std::optional<int> element(const Ansicht& a, std::optional<int> index, bool array) {
    if (!array) return index ? std::nullopt : std::optional<int>(0);
    if (!index || *index < a.erster || *index >= a.erster + a.anzahl) return std::nullopt;
    return *index - a.erster;
}

bool isArray(const std::string& name) {
    return name == "Ergebnis" || name == "Guthaben" || name == "Gewinner" ||
           name == "SpielerName" || name == "Belegt";
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

std::optional<std::string> Programm::printVariable(const std::string& name,
                                                   std::optional<int> index) {
    auto a = ansicht(g, name);
    if (!a) return std::nullopt;
    auto i = element(*a, index, isArray(name));
    if (!i) return std::nullopt;
    return a->lies(*i);
}

bool Programm::setVariable(const std::string& name, std::optional<int> index,
                           const std::string& value) {
    auto a = ansicht(g, name);
    if (!a) return false;
    auto i = element(*a, index, isArray(name));
    if (!i) return false;
    const Gemeinsam vorher = g;
    if (!a->schreib(*i, value)) return false;
    // An entry being made always has its place.
    if (g.NeuerEintrag && g.EintragPlatz < 0) {
        g = vorher;
        return false;
    }
    return true;
}

}  // namespace zd
