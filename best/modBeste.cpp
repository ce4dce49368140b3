// The best list's file, and the offer of a place in it.
#include "best/modBeste.h"

#include <array>
#include <cerrno>
#include <string>

#include "best/Zeichensatz.h"
#include "game/Routinen.h"
#include "system/Dateien.h"

namespace zd {

namespace {

constexpr int kEintraege = 5;

// Failure numbers as the player sees them, after the classic file errors.
int Fehlernummer(int error) {
    switch (error) {
        case ENOENT: return 53;   // file not found
        case ENOTDIR: return 76;  // path not found
        case EACCES:
        case EPERM: return 70;  // permission denied
        case EISDIR: return 75;  // path/file access error
        case ENOSPC: return 61;  // disk full
        default: return 57;  // device I/O error
    }
}

constexpr int kEndeDerDatei = 62;  // input past end of file

bool Schreibe(Programm& p, const std::array<std::string, 2 * kEintraege>& zeilen, int& fehler) {
    std::string text;
    for (const std::string& zeile : zeilen) text += zeile + CRLF;
    return p.platform.replaceFile(BesteDatei(p), AlsDateitext(text), fehler);
}

// Reads the next line; a line ends at CR LF, CR or LF, and the last one
// may have no end at all.
bool NaechsteZeile(const std::string& text, std::size_t& pos, std::string& zeile) {
    if (pos >= text.size()) return false;
    const std::size_t ende = text.find_first_of("\r\n", pos);
    if (ende == std::string::npos) {
        zeile = text.substr(pos);
        pos = text.size();
        return true;
    }
    zeile = text.substr(pos, ende - pos);
    pos = ende + 1;
    if (text[ende] == '\r' && pos < text.size() && text[pos] == '\n') ++pos;
    return true;
}

void MeldeLesefehler(Programm& p, int nummer) {
    ZeigeMsgOk(p, 3,
               std::string(CRLF) + "Die Daten für »Beste Spieler«" + CRLF +
                   "konnten nicht gelesen werden!",
               std::string(CRLF) + "Fehlernummer: " + std::to_string(nummer), Mittig());
}

}  // namespace

std::int32_t Punktzahl(const std::string& text) {
    const std::size_t anfang = text.find_first_not_of(' ');
    if (anfang == std::string::npos) return 0;
    const std::size_t ende = text.find_last_not_of(' ');
    std::int64_t wert = 0;
    for (std::size_t i = anfang; i <= ende; ++i) {
        const char c = text[i];
        if (c < '0' || c > '9') return 0;
        wert = wert * 10 + (c - '0');
        if (wert > INT32_MAX) return 0;
    }
    return static_cast<std::int32_t>(wert);
}

std::string BesteDatei(Programm& p) {
    const std::string ordner = p.g.FestplatteGefunden ? p.g.DatenPfad : p.tk.App.Path;
    return sys::PfadMitTrenner(ordner) + "zifdach.txt";
}

void SchreibeBesteStandard(Programm& p) {
    std::array<std::string, 2 * kEintraege> zeilen;
    for (int i = 0; i < kEintraege; ++i) {
        zeilen[static_cast<std::size_t>(i)] = "Niemand";
        zeilen[static_cast<std::size_t>(i + kEintraege)] = std::to_string(26 - 2 * i);
    }
    int fehler = 0;
    Schreibe(p, zeilen, fehler);  // a failure here is reported by the reading that follows
}

void LeseBeste(Programm& p) {
    ui::FrmBeste& f = p.frmBeste();
    f.lstName.Clear();
    f.lstPunkte.Clear();
    int fehler = 0;
    const auto bytes = p.platform.readFile(BesteDatei(p), fehler);
    if (!bytes) {
        MeldeLesefehler(p, Fehlernummer(fehler));
        return;
    }
    const std::string text = AusDateitext(*bytes);
    std::size_t pos = 0;
    for (int i = 0; i < 2 * kEintraege; ++i) {
        std::string zeile;
        if (!NaechsteZeile(text, pos, zeile)) {
            MeldeLesefehler(p, kEndeDerDatei);
            return;
        }
        (i < kEintraege ? f.lstName : f.lstPunkte).AddItem(zeile);
    }
}

void SpeichereBeste(Programm& p) {
    ui::FrmBeste& f = p.frmBeste();
    std::array<std::string, 2 * kEintraege> zeilen;
    for (int i = 0; i < f.lstName.ListCount() && i < kEintraege; ++i) {
        zeilen[static_cast<std::size_t>(i)] = f.lstName.List(i);
        zeilen[static_cast<std::size_t>(i + kEintraege)] = f.lstPunkte.List(i);
    }
    int fehler = 0;
    if (Schreibe(p, zeilen, fehler)) return;
    ZeigeMsgOk(p, 2,
               std::string(CRLF) + "Die Werte für »Beste Spieler«" + CRLF +
                   "konnten nicht gespeichert werden.",
               std::string(CRLF) + CRLF + "Fehler beim Speichern", Mittig());
}

void PruefeBestmarke(Programm& p) {
    Gemeinsam& g = p.g;
    g.NeuerEintrag = false;
    g.EintragPlatz = -1;
    ui::FrmBeste& f = p.frmBeste();
    for (int i = 0; i < kEintraege; ++i) {
        // Equal points do not pass an entry.
        if (g.SpielerPunkte > Punktzahl(f.lstPunkte.List(i))) {
            g.EintragPlatz = static_cast<std::int16_t>(i);
            break;
        }
    }
    if (g.EintragPlatz == -1) {
        ZeigeMsgOk(p, 4,
                   std::string("Ein Eintrag in die Liste der »Besten Spieler«") + CRLF +
                       "ist leider nicht möglich!",
                   std::string(CRLF) + "Mehr Erfolg beim nächsten Spiel.", Mittig());
        p.frmSpielfeld().ExternesEnde();
    } else if (FrageMsgJa(p, 5,
                          std::string("Sehr gut!!") + CRLF + "Du hast eine neue Bestmarke erreicht.",
                          "Möchtest Du dich in die Liste der »Besten Spieler« eintragen?",
                          Mittig())) {
        g.NeuerEintrag = true;
    } else {
        p.frmSpielfeld().ExternesEnde();
    }
    if (g.NeuerEintrag) TrageBesteEin(p, g.EintragPlatz);
}

void TrageBesteEin(Programm& p, std::int16_t& platz) {
    ui::FrmBeste& f = p.frmBeste();
    std::array<std::string, kEintraege> punkte;
    std::array<std::string, kEintraege> namen;
    for (int i = 0; i < kEintraege; ++i) {
        punkte[static_cast<std::size_t>(i)] = f.lstPunkte.List(i);
        namen[static_cast<std::size_t>(i)] = f.lstName.List(i);
    }
    f.lstName.Clear();
    f.lstPunkte.Clear();
    for (int i = 0; i < kEintraege; ++i) {
        if (i < platz) {
            f.lstPunkte.AddItem(punkte[static_cast<std::size_t>(i)]);
            f.lstName.AddItem(namen[static_cast<std::size_t>(i)]);
        } else if (i == platz) {
            f.lstPunkte.AddItem(std::to_string(p.g.SpielerPunkte));
            f.lstName.AddItem("Spieler");
        } else {
            f.lstPunkte.AddItem(punkte[static_cast<std::size_t>(i - 1)]);
            f.lstName.AddItem(namen[static_cast<std::size_t>(i - 1)]);
        }
    }
    ui::FrmSpielfeld& feld = p.frmSpielfeld();
    f.Move(feld.Left - 100, feld.Top - 100);
    p.tk.showModal(f);
    p.frmSpielfeld().ExternesEnde();
}

}  // namespace zd
