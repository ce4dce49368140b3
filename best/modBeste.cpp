// The best list's file, and the offer of a place in it.
#include "best/modBeste.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "best/CodePage.h"
#include "game/program/Messages.h"
#include "system/Dateien.h"

namespace zd {

namespace {

constexpr int kEntries = 5;

// The list's ten lines: the names of places 0 to 4, then their points.
constexpr std::size_t nameLine(int place) {
    return static_cast<std::size_t>(place);
}
constexpr std::size_t pointsLine(int place) {
    return static_cast<std::size_t>(place) + kEntries;
}
constexpr int kLines = 2 * kEntries;

// The file's ten lines: five names, then their five points.
using ListLines = std::array<std::string, kLines>;

// Failure numbers as the player sees them, after the classic file errors.
int failureNumber(int error) {
    switch (error) {
        case ENOENT:
            return 53;  // file not found
        case ENOTDIR:
            return 76;  // path not found
        case EACCES:
        case EPERM:
            return 70;  // permission denied
        case EISDIR:
            return 75;  // path/file access error
        case ENOSPC:
            return 61;  // disk full
        default:
            return 57;  // device I/O error
    }
}

constexpr int kPastEndOfFile = 62;  // input past end of file

// Two running copies of the game save one after the other, never at once.
std::unique_ptr<sys::FileLock> lockList(Program& p) {
    int error = 0;
    return p.platform.lockFile(BesteDatei(p) + ".lock", error);
}

bool writeList(Program& p, const ListLines& lines, int& error) {
    std::string text;
    for (const std::string& line : lines) text += line + CRLF;
    return p.platform.replaceFile(BesteDatei(p), toFileText(text), error);
}

// Reads the next line; a line ends at CR LF, CR or LF, and the last one
// may have no end at all.
bool nextLine(const std::string& text, std::size_t& pos, std::string& line) {
    if (pos >= text.size()) return false;
    const std::size_t end = text.find_first_of("\r\n", pos);
    if (end == std::string::npos) {
        line = text.substr(pos);
        pos = text.size();
        return true;
    }
    line = text.substr(pos, end - pos);
    pos = end + 1;
    if (text[end] == '\r' && pos < text.size() && text[pos] == '\n') ++pos;
    return true;
}

// The file's first ten lines, fewer when it ends early; nothing when it
// cannot be read, with the failure number for the player in `nummer`.
std::optional<std::vector<std::string>> readList(Program& p, int& nummer) {
    int error = 0;
    const auto bytes = p.platform.readLines(BesteDatei(p), kLines, error);
    if (!bytes) {
        nummer = failureNumber(error);
        return std::nullopt;
    }
    const std::string text = fromFileText(*bytes);
    std::vector<std::string> lines;
    std::size_t pos = 0;
    std::string line;
    while (static_cast<int>(lines.size()) < kLines && nextLine(text, pos, line)) {
        lines.push_back(line);
    }
    return lines;
}

// The ten lines as one list, or nothing when the file ended early.
std::optional<ListLines> whole(const std::vector<std::string>& lines) {
    if (lines.size() != kLines) return std::nullopt;
    ListLines list;
    std::copy(lines.begin(), lines.end(), list.begin());
    return list;
}

ListLines inListBoxes(ui::FrmBeste& f) {
    ListLines lines;
    for (int i = 0; i < f.lstName.ListCount() && i < kEntries; ++i) {
        lines[nameLine(i)] = f.lstName.List(i);
        lines[pointsLine(i)] = f.lstPunkte.List(i);
    }
    return lines;
}

void showInListBoxes(ui::FrmBeste& f, const ListLines& lines) {
    f.lstName.Clear();
    f.lstPunkte.Clear();
    for (int i = 0; i < kEntries; ++i) {
        f.lstName.AddItem(lines[nameLine(i)]);
        f.lstPunkte.AddItem(lines[pointsLine(i)]);
    }
}

// `list` with the entry put in at the first place whose points it beats,
// the last entry dropped; nothing when it beats none.
std::optional<ListLines> withEntry(const ListLines& list, const std::string& name,
                                   const std::string& punkte) {
    for (int platz = 0; platz < kEntries; ++platz) {
        if (pointsOf(punkte) <= pointsOf(list[pointsLine(platz)])) {
            continue;
        }
        ListLines merged = list;
        for (int i = kEntries - 1; i > platz; --i) {
            merged[nameLine(i)] = list[nameLine(i - 1)];
            merged[pointsLine(i)] = list[pointsLine(i - 1)];
        }
        merged[nameLine(platz)] = name;
        merged[pointsLine(platz)] = punkte;
        return merged;
    }
    return std::nullopt;
}

void tellReadFailure(Program& p, int nummer) {
    showMessage(p, 3,
                std::string(CRLF) + "Die Daten für »Beste Spieler«" + CRLF +
                    "konnten nicht gelesen werden!",
                std::string(CRLF) + "Fehlernummer: " + std::to_string(nummer), centred());
}

void tellSaveFailure(Program& p) {
    showMessage(p, 2,
                std::string(CRLF) + "Die Werte für »Beste Spieler«" + CRLF +
                    "konnten nicht gespeichert werden.",
                std::string(CRLF) + CRLF + "Fehler beim Speichern", centred());
}

void tellNoPlace(Program& p) {
    showMessage(p, 4,
                std::string("Ein Eintrag in die Liste der »Besten Spieler«") + CRLF +
                    "ist leider nicht möglich!",
                std::string(CRLF) + "Mehr Erfolg beim nächsten Spiel.", centred());
}

}  // namespace

std::int32_t pointsOf(const std::string& text) {
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

std::string BesteDatei(Program& p) {
    const std::string ordner = p.g.FestplatteGefunden ? p.g.DatenPfad : p.tk.App.Path;
    return sys::PfadMitTrenner(ordner) + "zifdach.txt";
}

void SchreibeBesteStandard(Program& p) {
    ListLines lines;
    for (int i = 0; i < kEntries; ++i) {
        lines[nameLine(i)] = "Niemand";
        lines[pointsLine(i)] = std::to_string(26 - 2 * i);
    }
    // A failure here is reported by the reading that follows.
    const auto lock = lockList(p);
    int error = 0;
    if (lock) writeList(p, lines, error);
}

void LeseBeste(Program& p) {
    ui::FrmBeste& f = p.frmBeste();
    f.lstName.Clear();
    f.lstPunkte.Clear();
    p.bestListSeen.reset();
    int nummer = 0;
    const auto lines = readList(p, nummer);
    if (!lines) {
        tellReadFailure(p, nummer);
        return;
    }
    for (std::size_t i = 0; i < lines->size(); ++i) {
        (i < kEntries ? f.lstName : f.lstPunkte).AddItem((*lines)[i]);
    }
    p.bestListSeen = whole(*lines);
    if (!p.bestListSeen) tellReadFailure(p, kPastEndOfFile);
}

void SpeichereBeste(Program& p) {
    ui::FrmBeste& f = p.frmBeste();
    ListLines list = inListBoxes(f);
    enum class Outcome { Saved, Failed, NoPlace } outcome = Outcome::Failed;
    if (const auto lock = lockList(p)) {
        // Another copy of the game may have saved since this one read the
        // list: then this copy's entry goes into that list, by the same rule
        // as any new entry, instead of writing an older list over it.
        int nummer = 0;
        const auto lines = readList(p, nummer);
        const auto onDisk = lines ? whole(*lines) : std::nullopt;
        const int platz = p.g.EintragPlatz;
        if (onDisk && *onDisk != p.bestListSeen && p.g.NeuerEintrag && platz >= 0 &&
            platz < kEntries) {
            const auto merged = withEntry(*onDisk, list[nameLine(platz)], list[pointsLine(platz)]);
            outcome = merged ? Outcome::Saved : Outcome::NoPlace;
            list = merged ? *merged : *onDisk;
        }
        int error = 0;
        if (outcome != Outcome::NoPlace) {
            outcome = writeList(p, list, error) ? Outcome::Saved : Outcome::Failed;
        }
    }
    // The lock is given back before the player is spoken to.
    if (outcome == Outcome::Failed) {
        tellSaveFailure(p);
        return;
    }
    showInListBoxes(f, list);
    p.bestListSeen = list;
    if (outcome == Outcome::NoPlace) tellNoPlace(p);
}

void PruefeBestmarke(Program& p) {
    SharedVariables& g = p.g;
    g.NeuerEintrag = false;
    g.EintragPlatz = -1;
    ui::FrmBeste& f = p.frmBeste();
    for (int i = 0; i < kEntries; ++i) {
        // Equal points do not pass an entry.
        if (g.SpielerPunkte > pointsOf(f.lstPunkte.List(i))) {
            g.EintragPlatz = static_cast<std::int16_t>(i);
            break;
        }
    }
    if (g.EintragPlatz == -1) {
        tellNoPlace(p);
        p.frmSpielfeld().ExternesEnde();
    } else if (askYesNo(
                   p, 5, std::string("Sehr gut!!") + CRLF + "Du hast eine neue Bestmarke erreicht.",
                   "Möchtest Du dich in die Liste der »Besten Spieler« eintragen?", centred())) {
        g.NeuerEintrag = true;
    } else {
        p.frmSpielfeld().ExternesEnde();
    }
    if (g.NeuerEintrag) TrageBesteEin(p, g.EintragPlatz);
}

void TrageBesteEin(Program& p, std::int16_t platz) {
    ui::FrmBeste& f = p.frmBeste();
    std::array<std::string, kEntries> punkte;
    std::array<std::string, kEntries> namen;
    for (int i = 0; i < kEntries; ++i) {
        punkte[static_cast<std::size_t>(i)] = f.lstPunkte.List(i);
        namen[static_cast<std::size_t>(i)] = f.lstName.List(i);
    }
    f.lstName.Clear();
    f.lstPunkte.Clear();
    for (int i = 0; i < kEntries; ++i) {
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
