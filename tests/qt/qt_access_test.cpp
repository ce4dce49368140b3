// What a screen reader finds in the real Qt windows: the accessible tree,
// its names and roles at each step of a round, presses as clicks, and the
// announcements that are sent as things happen.

#include <QAccessible>
#include <QCoreApplication>
#include <QTemporaryDir>
#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "front/drive/Harness.h"
#include "front/qt/QtFrontEnd.h"
#include "front/qt/WindowWidget.h"
#include "game/program/Program.h"

namespace {

QAccessibleInterface* find(QAccessibleInterface* root, const QString& name,
                           QAccessible::Role role) {
    if (!root) return nullptr;
    if (root->text(QAccessible::Name) == name && root->role() == role) return root;
    for (int i = 0; i < root->childCount(); ++i) {
        if (QAccessibleInterface* found = find(root->child(i), name, role)) return found;
    }
    return nullptr;
}

// The names of the shown children of a role, in the order a reader lists them.
QStringList shown(QAccessibleInterface* root, QAccessible::Role role) {
    QStringList names;
    for (int i = 0; i < root->childCount(); ++i) {
        QAccessibleInterface* c = root->child(i);
        if (c && c->role() == role && !c->state().invisible) names << c->text(QAccessible::Name);
        if (c && c->childCount()) names << shown(c, role);
    }
    return names;
}

struct AccessibleGame : ::testing::Test {
    QTemporaryDir data;
    std::ostringstream events;
    zd::drive::Harness harness{options(data), events};
    zd::Program& p = harness.program();
    zd::qt::QtFrontEnd frontEnd{p.tk};

    static zd::drive::HarnessOptions options(const QTemporaryDir& d) {
        zd::drive::HarnessOptions o;
        o.programDir = ZD_PROGRAM_DIR;
        o.driveRoot = d.path().toStdString();
        o.dice = std::vector<int>{6, 1, 2, 3, 6, 1, 2, 3, 6, 1, 2, 3};
        return o;
    }
    // What a screen reader was told: each announcement appears as a new
    // notification in the window's tree. (Qt sends no events to anyone on
    // the offscreen platform; the end-to-end test hears those.)
    std::vector<QString> told;
    QAccessibleInterface* lastHeard = nullptr;

    AccessibleGame() { harness.start(); }

    void listen(const zd::ui::Window& w) {
        QAccessibleInterface* root = window(w);
        QAccessibleInterface* client = root ? root->child(root->childCount() - 1) : nullptr;
        QAccessibleInterface* newest =
            client && client->childCount() ? client->child(client->childCount() - 1) : nullptr;
        if (newest && newest != lastHeard && newest->role() == QAccessible::Notification) {
            told.push_back(newest->text(QAccessible::Name));
            lastHeard = newest;
        }
    }

    QAccessibleInterface* window(const zd::ui::Window& w) {
        return QAccessible::queryAccessibleInterface(frontEnd.widgetFor(w));
    }
    // A press by the screen reader's action; it acts once Qt's loop runs.
    void press(const zd::ui::Window& w, const QString& name) {
        QAccessibleInterface* button = find(window(w), name, QAccessible::Button);
        ASSERT_NE(button, nullptr) << name.toStdString();
        ASSERT_NE(button->actionInterface(), nullptr);
        ASSERT_TRUE(button->actionInterface()->actionNames().contains(
            QAccessibleActionInterface::pressAction()));
        button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCoreApplication::processEvents();
        listen(p.frmSpielfeld());
    }
    // Time passes a computer player's turn at a time, each one heard.
    void wait(int ms) {
        for (; ms > 0; ms -= 500) {
            harness.clock().FastForwardBy(std::min(ms, 500));
            listen(p.frmSpielfeld());
        }
    }
};

TEST_F(AccessibleGame, TheFieldIsATreeOfNamedControlsThatPressesPlay) {
    zd::ui::FrmSpielfeld& f = p.frmSpielfeld();
    QAccessibleInterface* field = window(f);
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->role(), QAccessible::Window);
    EXPECT_EQ(field->text(QAccessible::Name),
              "Zifferndach  Vers: " + QString::fromStdString(p.tk.App.version()));
    EXPECT_EQ(shown(field, QAccessible::Button),
              QStringList({"Hilfe", "Info", "Neues Spiel", "Beenden"}));
    QAccessibleInterface* wuerfeln = find(field, "Würfeln", QAccessible::Button);
    ASSERT_NE(wuerfeln, nullptr);
    EXPECT_TRUE(wuerfeln->state().invisible);
    QAccessibleInterface* neu = find(field, "Neues Spiel", QAccessible::Button);
    EXPECT_EQ(neu->text(QAccessible::Description), "Neues Spiel beginnen");
    EXPECT_TRUE(neu->state().focusable);
    EXPECT_TRUE(neu->rect().intersects(frontEnd.widgetFor(f)->geometry()));
    EXPECT_NE(find(field, "Klicke auf »Neues Spiel«", QAccessible::StaticText), nullptr);

    press(f, "Neues Spiel");
    EXPECT_FALSE(f.imgNeu.Visible);
    EXPECT_FALSE(wuerfeln->state().invisible);
    EXPECT_NE(find(field, "Andrea: Guthaben 12", QAccessible::StaticText), nullptr);

    press(f, "Würfeln");
    wait(700);
    EXPECT_NE(find(field, "Wurf: 6", QAccessible::Graphic), nullptr);
    EXPECT_EQ(shown(field, QAccessible::Button),
              QStringList({"Hilfe", "Info", "Beenden", "Hunderter", "Zehner", "Einer"}));
    press(f, "Hunderter");
    EXPECT_NE(find(field, "Hunderter: 6", QAccessible::Graphic), nullptr);
    wait(1500);
    press(f, "Würfeln");
    wait(700);
    press(f, "Zehner");
    wait(1500);
    // The last throw goes to the place that is left.
    press(f, "Würfeln");
    wait(700 + 1500);

    EXPECT_NE(find(field, "Spieler hat mit 666 gewonnen!", QAccessible::StaticText), nullptr);
    EXPECT_NE(find(field, "Victoria: 333", QAccessible::StaticText), nullptr);
    EXPECT_EQ(shown(field, QAccessible::Button).last(), "Nächster Level");
    ASSERT_FALSE(told.empty());
    EXPECT_EQ(told.front(), "Wurf: 6");
    EXPECT_EQ(told.back(), "Victoria würfelt eine 3. Victoria: 333. Spieler hat mit 666 gewonnen!");
    // The newest announcement stays in the tree for whoever missed it.
    EXPECT_NE(find(field, told.back(), QAccessible::Notification), nullptr);
}

TEST_F(AccessibleGame, AMessageWindowIsAnAlertWhoseTextIsItsDescription) {
    zd::ui::FrmSpielfeld& f = p.frmSpielfeld();
    QString description;
    QStringList buttons;
    harness.answer = [&] {
        QAccessibleInterface* msg = window(p.frmMsgJa());
        EXPECT_EQ(msg->role(), QAccessible::AlertMessage);
        description = msg->text(QAccessible::Description);
        listen(p.frmMsgJa());
        buttons = shown(msg, QAccessible::Button);
        press(p.frmMsgJa(), "Nein");
        return true;
    };
    press(f, "Beenden");
    EXPECT_EQ(p.g.MsgAntwort, 2);
    EXPECT_EQ(description,
              "Bist Du sicher, dass Du das Spiel beenden möchtest? »Spiel beenden« bestätigen");
    EXPECT_EQ(buttons, QStringList({"Ja", "Nein", "Schließen"}));
    // Read by the screen reader as the alert becomes active, not told again.
    EXPECT_TRUE(told.empty());
}

}  // namespace
