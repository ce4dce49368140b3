// What a screen reader finds in the real Qt windows, on the headless
// harness's clock: names and roles at each step of a round, presses that
// play, and what it is told as things happen.

#include <QAccessible>
#include <QCoreApplication>
#include <QTemporaryDir>
#include <algorithm>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include "front/drive/Harness.h"
#include "front/qt/QtFrontEnd.h"
#include "front/qt/WindowWidget.h"
#include "game/program/Program.h"

namespace {

using Role = QAccessible::Role;

QAccessibleInterface* find(QAccessibleInterface* root, const QString& name, Role role) {
    if (!root) return nullptr;
    if (root->text(QAccessible::Name) == name && root->role() == role) return root;
    for (int i = 0; i < root->childCount(); ++i) {
        if (QAccessibleInterface* found = find(root->child(i), name, role)) return found;
    }
    return nullptr;
}

// The names of the shown objects of a role, in the order a reader lists them.
QStringList shown(QAccessibleInterface* root, Role role) {
    QStringList names;
    for (int i = 0; i < root->childCount(); ++i) {
        QAccessibleInterface* c = root->child(i);
        if (c && c->role() == role && !c->state().invisible) names << c->text(QAccessible::Name);
        if (c) names << shown(c, role);
    }
    return names;
}

struct AccessibleGame : ::testing::Test {
    QTemporaryDir data;
    std::ostringstream events;
    zd::drive::Harness harness{options(data), events};
    zd::Program& p = harness.program();
    zd::ui::FrmSpielfeld& f = p.frmSpielfeld();
    zd::qt::QtFrontEnd frontEnd{p.tk};
    // Each announcement is a new notification at the end of the window's
    // tree; Qt sends its events to nobody on the offscreen platform (the
    // end-to-end test hears those).
    QStringList told;
    QAccessibleInterface* lastHeard = nullptr;

    static zd::drive::HarnessOptions options(const QTemporaryDir& d) {
        zd::drive::HarnessOptions o;
        o.programDir = ZD_PROGRAM_DIR;
        o.driveRoot = d.path().toStdString();
        // The player throws 6 each time, Andrea 1, Thomas 2 and Victoria 3.
        o.dice = std::vector<int>{6, 1, 2, 3, 6, 1, 2, 3, 6, 1, 2, 3};
        return o;
    }
    AccessibleGame() { harness.start(); }

    QAccessibleInterface* window(const zd::ui::Window& w) {
        return QAccessible::queryAccessibleInterface(frontEnd.widgetFor(w));
    }
    void listen() {
        QAccessibleInterface* client = window(f)->child(window(f)->childCount() - 1);
        QAccessibleInterface* newest = client->child(client->childCount() - 1);
        if (newest && newest != lastHeard && newest->role() == QAccessible::Notification) {
            told << newest->text(QAccessible::Name);
            lastHeard = newest;
        }
    }
    // A press by the button's action, which acts once Qt's loop runs.
    void press(const zd::ui::Window& w, const QString& name) {
        QAccessibleInterface* button = find(window(w), name, QAccessible::Button);
        ASSERT_TRUE(button && button->actionInterface()) << name.toStdString();
        button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCoreApplication::processEvents();
        listen();
    }
    // Time passes a computer player's turn at a time.
    void wait(int ms) {
        for (; ms > 0; ms -= 500) {
            harness.clock().FastForwardBy(std::min(ms, 500));
            listen();
        }
    }
};

TEST_F(AccessibleGame, ARoundReadsAsItShowsIsPlayedByPressesAndToldAsItGoes) {
    QAccessibleInterface* field = window(f);
    EXPECT_EQ(field->text(QAccessible::Name).toStdString(), f.Caption);
    EXPECT_EQ(shown(field, QAccessible::Button),
              QStringList({"Hilfe", "Info", "Neues Spiel", "Beenden"}));
    QAccessibleInterface* neu = find(field, "Neues Spiel", QAccessible::Button);
    EXPECT_EQ(neu->text(QAccessible::Description), "Neues Spiel beginnen");
    EXPECT_TRUE(neu->state().focusable);

    press(f, "Neues Spiel");
    EXPECT_TRUE(find(field, "Andrea: Guthaben 12", QAccessible::StaticText));
    // The last throw goes to the place that is left.
    for (const QString place : {"Hunderter", "Zehner", ""}) {
        press(f, "Würfeln");
        wait(700);
        if (place == "Hunderter") {
            EXPECT_TRUE(find(field, "Wurf: 6", QAccessible::Graphic));
            EXPECT_EQ(shown(field, QAccessible::Button),
                      QStringList({"Hilfe", "Info", "Beenden", "Hunderter", "Zehner", "Einer"}));
        }
        if (!place.isEmpty()) press(f, place);
        wait(1500);
    }
    EXPECT_TRUE(find(field, "Hunderter: 6", QAccessible::Graphic));
    EXPECT_TRUE(find(field, "Spieler: Guthaben 15", QAccessible::StaticText));
    EXPECT_EQ(shown(field, QAccessible::Button).last(), "Nächster Level");
    const QStringList turn = {"Andrea würfelt eine 1", "Thomas würfelt eine 2",
                              "Victoria würfelt eine 3"};
    // The same throw twice in a row is told twice.
    EXPECT_EQ(told, QStringList({"Wurf: 6"}) + turn + QStringList({"Wurf: 6"}) + turn +
                        QStringList({"Wurf: 6. Spieler: 666", "Andrea würfelt eine 1. Andrea: 111",
                                     "Thomas würfelt eine 2. Thomas: 222",
                                     "Victoria würfelt eine 3. Victoria: 333. Spieler hat mit "
                                     "666 gewonnen!"}));
}

TEST_F(AccessibleGame, AMessageIsAnAlertReadByItsTextAndTheListLabelsItsPlaces) {
    QString description;
    QStringList answers;
    harness.answer = [&] {
        QAccessibleInterface* msg = window(p.frmMsgJa());
        EXPECT_EQ(msg->role(), QAccessible::AlertMessage);
        description = msg->text(QAccessible::Description);
        answers = shown(msg, QAccessible::Button);
        press(p.frmMsgJa(), "Nein");
        return true;
    };
    press(f, "Beenden");
    EXPECT_EQ(p.g.MsgAntwort, 2);
    EXPECT_EQ(description,
              "Bist Du sicher, dass Du das Spiel beenden möchtest? »Spiel beenden« bestätigen");
    EXPECT_EQ(answers, QStringList({"Ja", "Nein", "Schließen"}));
    EXPECT_TRUE(told.isEmpty());  // the alert's own text is read as it comes up

    QStringList names;
    harness.answer = [&] {
        names = shown(window(p.frmBeste()), QAccessible::EditableText) +
                shown(window(p.frmBeste()), QAccessible::StaticText);
        press(p.frmBeste(), "OK");
        return true;
    };
    ASSERT_TRUE(p.tk.menu(f.mnuInfo[4]));
    EXPECT_TRUE(names.contains("Platz 1")) << names.join(", ").toStdString();
    EXPECT_TRUE(names.contains("Platz 1: 26 Punkte"));
    EXPECT_TRUE(names.contains("Platz 5: 18 Punkte"));
}

}  // namespace
