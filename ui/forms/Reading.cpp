#include "ui/forms/Reading.h"

#include <algorithm>
#include <optional>

#include "ui/forms/Banks.h"
#include "ui/forms/MessageWindows.h"
#include "ui/forms/frmBesteDesign.h"
#include "ui/forms/frmSpielfeldDesign.h"

namespace zd::ui {

namespace {

const char* const kPlaceNames[4] = {"", "Einer", "Zehner", "Hunderter"};

template <class W>
const W* bank(const Window& w, std::string_view name) {
    return dynamic_cast<const W*>(w.toolkit().loaded(name));
}

// What a die picture shows: 1 to 6, nothing (0) or a die in flight.
constexpr int kSpinning = -1;
int faceOf(const Picture& picture, const FrmBilder* bilder) {
    if (!bilder || !picture) return 0;
    for (int i = 1; i <= 6; ++i) {
        if (sameObject(picture, bilder->imgWurf[i].picture)) return i;
    }
    for (int i = 0; i <= 3; ++i) {
        if (sameObject(picture, bilder->imgDreh[i].picture)) return kSpinning;
    }
    return 0;
}

std::optional<int> digitOf(const Picture& picture, const FrmDigital* digital) {
    if (!digital || !picture) return std::nullopt;
    for (int d = 0; d <= 9; ++d) {
        if (sameObject(picture, digital->imgDiggi[d].picture)) return d;
    }
    return std::nullopt;
}

// A caption as one line: its line ends become blanks, none at either end.
std::string oneLine(const std::string& caption) {
    std::string out;
    bool blank = false;
    for (char c : caption) {
        if (c == '\r' || c == '\n' || c == ' ') {
            blank = !out.empty();
            continue;
        }
        if (blank) out += ' ';
        blank = false;
        out += c;
    }
    return out;
}

// A caption as a name: its blanks as they stand, none at either end.
std::string trimmed(const std::string& caption) {
    const auto first = caption.find_first_not_of(" \r\n");
    if (first == std::string::npos) return {};
    return caption.substr(first, caption.find_last_not_of(" \r\n") - first + 1);
}

class Reader {
public:
    explicit Reader(const Window& w) : focus_(w.activeControl()) {}

    Element& add(std::string key, Role role, std::string name, Control* control) {
        Element& e = r.elements.emplace_back();
        e.key = std::move(key);
        e.role = role;
        e.name = std::move(name);
        e.control = control;
        e.shown = control ? control->shown() : true;
        e.focused = control && control == focus_;
        return e;
    }
    // A label that shows its caption; an empty one shows nothing.
    Element& text(Label& label, const std::string& key = {}) {
        Element& e =
            add(key.empty() ? label.path() : key, Role::Text, oneLine(label.Caption), &label);
        e.shown = e.shown && !e.name.empty();
        return e;
    }
    // A picture or label that acts when clicked, named by what it shows.
    Element& button(Control& c, std::string name) {
        Element& e = add(c.path(), Role::Button, std::move(name), &c);
        if (c.ToolTipText != e.name) e.description = c.ToolTipText;
        e.pressable = static_cast<bool>(c.Click);
        return e;
    }

    Reading r;

private:
    const Control* focus_;
};

std::string placeText(const char* place, int face, const char* between = ": ",
                      const char* none = "frei") {
    return std::string(place) + between +
           (face > 0            ? std::to_string(face)
            : face == kSpinning ? "rollt"
                                : none);
}

void readSpielfeld(const FrmSpielfeld& f, Reader& rd) {
    const auto* bilder = bank<FrmBilder>(f, "frmBilder");
    const auto* digital = bank<FrmDigital>(f, "frmDigital");

    rd.text(f.Label1[0], "title");
    // These two turn green while the mouse holds them down.
    rd.button(f.lblHilfe, "Hilfe").pressed =
        bilder && sameObject(f.lblHilfe.picture, bilder->cmdHilfeGruen.picture);
    rd.button(f.lblAllgemein, "Info").pressed =
        bilder && sameObject(f.lblAllgemein.picture, bilder->cmdallgemeinGruen.picture);

    // The plates in the order they stand, each with its two digits.
    struct Plate {
        const char* name;
        Image& image;
        int player;
    };
    const Plate plates[4] = {{"Andrea", f.Image2, 1},
                             {"Thomas", f.Image3, 2},
                             {"Victoria", f.Image4, 3},
                             {"Spieler", f.Image5, 0}};
    for (const Plate& plate : plates) {
        const auto tens = digitOf(f.imgDiggi[2 * plate.player + 1].picture, digital);
        const auto ones = digitOf(f.imgDiggi[2 * plate.player].picture, digital);
        std::string name = plate.name;
        if (ones)
            name += ": Guthaben " + (tens ? std::to_string(*tens) : "") + std::to_string(*ones);
        rd.add("credit(" + std::to_string(plate.player) + ")", Role::Text, name, &plate.image);
    }

    rd.button(f.imgNeu, "Neues Spiel");
    rd.button(f.imgEnde, "Beenden");
    for (int i = 3; i >= 1; --i) {
        const int face = faceOf(f.imgWurf[i].picture, bilder);
        rd.add(f.imgWurf[i].path(), Role::Graphic, placeText(kPlaceNames[i], face), &f.imgWurf[i]);
    }
    for (int i = 3; i >= 1; --i) rd.button(f.imgAuswahl[i], kPlaceNames[i]);
    const int thrown = faceOf(f.imgWurf[0].picture, bilder);
    rd.add(f.imgWurf[0].path(), Role::Graphic, placeText("Wurf", thrown, ": ", "leer"),
           &f.imgWurf[0])
        .news = thrown > 0;
    // The player's number, once the three places make one.
    std::string own;
    for (int i = 3; i >= 1; --i) {
        const int face = faceOf(f.imgWurf[i].picture, bilder);
        if (face > 0) own += std::to_string(face);
    }
    Element& ownBoard = rd.add("board(0)", Role::Text, "Spieler: " + own, &f.imgWurf[3]);
    ownBoard.shown = ownBoard.shown && own.size() == 3;
    ownBoard.news = true;
    rd.button(f.imgWuerfeln, "Würfeln");
    rd.button(f.imgNaechsterLevel, "Nächster Level");
    rd.text(f.lblInfo);
    rd.button(f.imgBeste, "Beste Spieler");

    // A computer player's board: what was thrown, then the places, and the
    // number once all three are taken.
    struct Board {
        const char* name;
        const ControlArray<Image>& places;
        Label& thrown;
    };
    const Board boards[3] = {{"Andrea", f.imgAndrea, f.lblAndrea},
                             {"Thomas", f.imgThomas, f.lblThomas},
                             {"Victoria", f.imgVictoria, f.lblVictoria}};
    for (int b = 0; b < 3; ++b) {
        std::string number;
        std::string places;
        for (int i = 2; i >= 0; --i) {
            const int face = faceOf(boards[b].places[i].picture, bilder);
            number += face > 0 ? std::to_string(face) : "";
            places += (i < 2 ? ", " : "") + placeText(kPlaceNames[i + 1], face, " ");
        }
        Element& said = rd.text(boards[b].thrown);
        said.news = true;
        said.change = places;
        const bool full = number.size() == 3;
        Element& e =
            rd.add("board(" + std::to_string(b + 1) + ")", Role::Text,
                   std::string(boards[b].name) + ": " + (full ? number : places), &f.Shape1[b]);
        e.news = full;
    }
    rd.text(f.lblGewonnen).news = true;
}

template <class M>
void readMessage(const M& m, Reader& rd,
                 std::initializer_list<std::pair<Label*, const char*>> answers, Image& close) {
    rd.r.message = true;
    rd.r.name = trimmed(m.lblName.Caption);
    if (rd.r.name.empty()) rd.r.name = "Zifferndach";
    const std::string meldung = oneLine(m.lblMeldung.Caption);
    const std::string titel = oneLine(m.lblTitel.Caption);
    rd.r.description = meldung + (meldung.empty() || titel.empty() ? "" : " ") + titel;
    rd.text(m.lblMeldung);
    rd.text(m.lblTitel);
    for (const auto& [label, name] : answers) rd.button(*label, name);
    rd.button(close, "Schließen");
}

void readBeste(const FrmBeste& f, Reader& rd) {
    const auto* digital = bank<FrmDigital>(f, "frmDigital");
    rd.r.name = trimmed(f.Caption);
    rd.text(f.Label1);
    rd.text(f.Label2);
    for (int row = 0; row < 5; ++row) {
        const std::string place = "Platz " + std::to_string(row + 1);
        Element& box =
            rd.add(f.txtSpieler[row].path(), Role::EditableText, place, &f.txtSpieler[row]);
        box.description = "Name des Spielers";
        // The points as the digits show them, leading blanks left out.
        std::string points;
        for (int column = 5; column >= 0; --column) {
            const auto d = digitOf(f.imgDiggi[7 * row + column].picture, digital);
            if (d && (*d != 0 || !points.empty() || column == 0)) points += std::to_string(*d);
        }
        rd.add("points(" + std::to_string(row + 1) + ")", Role::Text,
               place + ": " + (points.empty() ? "keine" : points) + " Punkte",
               &f.imgDiggi[7 * row]);
    }
    rd.button(f.lblClear, "Einträge löschen");
    rd.button(f.cmdEnde, "OK");
}

}  // namespace

const Element* Reading::find(std::string_view key) const {
    auto it = std::find_if(elements.begin(), elements.end(),
                           [&](const Element& e) { return e.key == key; });
    return it == elements.end() ? nullptr : &*it;
}

Reading read(const Window& window) {
    Reader rd(window);
    rd.r.name = trimmed(window.Caption);
    if (const auto* f = dynamic_cast<const FrmSpielfeld*>(&window)) {
        readSpielfeld(*f, rd);
    } else if (const auto* ja = dynamic_cast<const FrmMsgJa*>(&window)) {
        readMessage(*ja, rd, {{&ja->lblJa, "Ja"}, {&ja->lblNein, "Nein"}}, ja->Image1);
    } else if (const auto* ok = dynamic_cast<const FrmMsgOk*>(&window)) {
        readMessage(*ok, rd, {{&ok->lblOk, "OK"}}, ok->Image2);
    } else if (const auto* beste = dynamic_cast<const FrmBeste*>(&window)) {
        readBeste(*beste, rd);
    }
    if (rd.r.name.empty()) rd.r.name = "Zifferndach";
    return std::move(rd.r);
}

std::vector<std::string> news(const Reading* before, const Reading& after) {
    std::vector<std::string> out;
    if (!before && after.message) out.push_back(after.description);
    for (const Element& e : after.elements) {
        if (!e.news || !e.shown || e.name.empty()) continue;
        const Element* was = before ? before->find(e.key) : nullptr;
        if (was && was->news && was->shown && was->name == e.name && was->change == e.change) {
            continue;
        }
        out.push_back(e.name);
    }
    return out;
}

}  // namespace zd::ui
