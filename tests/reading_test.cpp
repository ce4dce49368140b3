// The field put into words, from the model alone: what a screen reader
// finds at each step of a round, and what it is told as it happens.
#include "ui/forms/Reading.h"

#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "PlayerBot.h"
#include "front/drive/Harness.h"

namespace zd::test {
namespace {

using ui::Element;
using ui::Reading;

// Reads every window after every event, as a front end would, and keeps
// what it would announce.
struct Listener : ui::FrontEnd {
    explicit Listener(ui::Toolkit& tk) : tk_(tk) { tk.setFrontEnd(this); }
    ~Listener() override { tk_.setFrontEnd(nullptr); }
    void settled() override {
        std::map<const ui::Window*, Reading> now;
        for (const ui::Window* w : tk_.stacking()) {
            now[w] = ui::read(*w);
            auto was = last_.find(w);
            for (std::string& n : ui::news(was == last_.end() ? nullptr : &was->second, now[w])) {
                told.push_back(std::move(n));
            }
        }
        last_ = std::move(now);
    }
    std::vector<std::string> told;

private:
    ui::Toolkit& tk_;
    std::map<const ui::Window*, Reading> last_;
};

std::vector<std::string> shownNames(const Reading& r, ui::Role role) {
    std::vector<std::string> names;
    for (const Element& e : r.elements) {
        if (e.shown && e.role == role) names.push_back(e.name);
    }
    return names;
}

std::string nameOf(const Reading& r, const std::string& key) {
    const Element* e = r.find(key);
    return e ? e->name : "(no " + key + ")";
}

struct Round : ::testing::Test {
    std::string root = freshFolder("zd-reading");
    std::ostringstream events;
    drive::Harness harness{options(root), events};
    Program& p = harness.program();
    ui::FrmSpielfeld& f = p.frmSpielfeld();
    Listener listener{p.tk};

    ~Round() override { std::filesystem::remove_all(root); }

    static drive::HarnessOptions options(const std::string& root) {
        drive::HarnessOptions o;
        o.programDir = ZD_PROGRAM_DIR;
        o.driveRoot = root;
        // The player throws 6 each time, Andrea 1, Thomas 2 and Victoria 3.
        o.dice = std::vector<int>{6, 1, 2, 3, 6, 1, 2, 3, 6, 1, 2, 3};
        return o;
    }
    void click(ui::Control& c) { ASSERT_TRUE(p.tk.click(c)) << c.path(); }
    void wait(int ms) { harness.clock().FastForwardBy(ms); }
};

TEST_F(Round, TheFieldReadsAsItShowsAndTellsEachThrowNumberAndResult) {
    harness.start();
    Reading r = ui::read(f);
    EXPECT_EQ(r.name, "Zifferndach  Vers: " + p.tk.App.version());
    EXPECT_EQ(shownNames(r, ui::Role::Button),
              (std::vector<std::string>{"Hilfe", "Info", "Neues Spiel", "Beenden"}));
    EXPECT_EQ(r.find("frmSpielfeld.imgNeu")->description, "Neues Spiel beginnen");
    EXPECT_EQ(nameOf(r, "frmSpielfeld.lblInfo"), "Klicke auf »Neues Spiel«");
    EXPECT_EQ(nameOf(r, "credit(1)"), "Andrea");  // the digits are still blank

    click(f.imgNeu);
    click(f.imgWuerfeln);
    wait(700);
    r = ui::read(f);
    EXPECT_EQ(nameOf(r, "credit(1)"), "Andrea: Guthaben 12");
    EXPECT_EQ(nameOf(r, "frmSpielfeld.imgWurf(0)"), "Wurf: 6");
    EXPECT_EQ(
        shownNames(r, ui::Role::Button),
        (std::vector<std::string>{"Hilfe", "Info", "Beenden", "Hunderter", "Zehner", "Einer"}));

    click(f.imgAuswahl[3]);
    EXPECT_EQ(nameOf(ui::read(f), "frmSpielfeld.imgWurf(3)"), "Hunderter: 6");
    wait(1500);
    EXPECT_EQ(nameOf(ui::read(f), "board(1)"), "Andrea: Hunderter frei, Zehner frei, Einer 1");
    click(f.imgWuerfeln);
    wait(700);
    click(f.imgAuswahl[2]);
    wait(1500);
    click(f.imgWuerfeln);
    wait(700 + 1500);

    r = ui::read(f);
    EXPECT_EQ(nameOf(r, "credit(0)"), "Spieler: Guthaben 15");
    EXPECT_EQ(nameOf(r, "credit(3)"), "Victoria: Guthaben 11");
    EXPECT_EQ(shownNames(r, ui::Role::Button).back(), "Nächster Level");
    // The same throw twice in a row is told twice.
    const std::vector<std::string> computers = {"Andrea würfelt eine 1", "Thomas würfelt eine 2",
                                                "Victoria würfelt eine 3"};
    std::vector<std::string> expected = {"Wurf: 6"};
    expected.insert(expected.end(), computers.begin(), computers.end());
    expected.push_back("Wurf: 6");
    expected.insert(expected.end(), computers.begin(), computers.end());
    expected.insert(expected.end(),
                    {"Wurf: 6", "Spieler: 666", "Andrea würfelt eine 1", "Andrea: 111",
                     "Thomas würfelt eine 2", "Thomas: 222", "Victoria würfelt eine 3",
                     "Victoria: 333", "Spieler hat mit 666 gewonnen!"});
    EXPECT_EQ(listener.told, expected);
}

TEST_F(Round, AMessageIsToldWhenItComesUpAndTheListLabelsItsPlaces) {
    harness.start();
    std::vector<Reading> question;
    harness.answer = [&] {
        question.push_back(ui::read(p.frmMsgJa()));
        return p.tk.click(p.frmMsgJa().lblNein);
    };
    click(f.imgEnde);
    ASSERT_EQ(question.size(), 1u);
    EXPECT_TRUE(question[0].message);
    EXPECT_EQ(question[0].description,
              "Bist Du sicher, dass Du das Spiel beenden möchtest? »Spiel beenden« bestätigen");
    EXPECT_EQ(shownNames(question[0], ui::Role::Button),
              (std::vector<std::string>{"Ja", "Nein", "Schließen"}));
    EXPECT_EQ(listener.told, std::vector<std::string>{question[0].description});

    Reading list;
    harness.answer = [&] {
        list = ui::read(p.frmBeste());
        return p.tk.click(p.frmBeste().cmdEnde);
    };
    ASSERT_TRUE(p.tk.menu(f.mnuInfo[4]));
    EXPECT_EQ(list.name, "Beste Spieler");
    EXPECT_EQ(nameOf(list, "frmBeste.txtSpieler(0)"), "Platz 1");
    EXPECT_EQ(nameOf(list, "points(1)"), "Platz 1: 26 Punkte");
    EXPECT_EQ(nameOf(list, "points(5)"), "Platz 5: 18 Punkte");
}

}  // namespace
}  // namespace zd::test
