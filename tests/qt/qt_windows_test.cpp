// The Qt layer against the real windows of the program, on Qt's offscreen
// platform: what is painted, and that input reaches the model.

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPointer>
#include <QScreen>
#include <QTemporaryDir>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "front/drive/Harness.h"
#include "front/qt/ArtCache.h"
#include "front/qt/Placement.h"
#include "front/qt/QtFrontEnd.h"
#include "front/qt/QtLoop.h"
#include "front/qt/QtPlatform.h"
#include "front/qt/QtProgram.h"
#include "front/qt/WindowWidget.h"
#include "game/Start.h"
#include "game/program/Program.h"

namespace {

using zd::qt::placementOf;
using zd::qt::WindowWidget;

// One program with the Qt front end; its windows as designed, without the
// game's event routines, so that nothing runs that the test did not ask for.
struct Program {
    zd::qt::QtLoop loop;
    zd::qt::QtPlatform platform;
    zd::Program p{loop, platform, 1280 * 15, 1024 * 15};
    zd::qt::QtFrontEnd frontEnd{p.tk};

    Program() { loop.attach(p.tk); }

    void show(zd::ui::Window& w) {
        p.tk.dispatch([&] { p.tk.show(w); });
    }
    WindowWidget& widget(const zd::ui::Window& w) {
        WindowWidget* widget = frontEnd.widgetFor(w);
        if (!widget) throw std::runtime_error(w.name() + " has no widget");
        return *widget;
    }
};

// A colour no window uses, to see what was left unpainted.
const QColor kUnpainted(1, 2, 3);

QImage render(QWidget& widget, qreal dpr) {
    QImage image(widget.size() * dpr, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(dpr);
    image.fill(kUnpainted);
    widget.render(&image);
    return image;
}

// Every opaque pixel of `art` appears unchanged in `image` at `at`, both in
// physical pixels: the picture is drawn at its size, from the top left,
// neither scaled nor moved.
void expectDrawnAt(const QImage& image, const QPixmap& art, QPoint at) {
    const QImage expected = art.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    int compared = 0;
    for (int y = 0; y < expected.height(); ++y) {
        for (int x = 0; x < expected.width(); ++x) {
            const QRgb want = expected.pixel(x, y);
            if (qAlpha(want) != 255) continue;
            ASSERT_EQ(image.pixel(at.x() + x, at.y() + y), want) << "at " << x << "," << y;
            ++compared;
        }
    }
    EXPECT_GT(compared, expected.width() * expected.height() / 3);
}

// A press or release of one button, the others up.
void sendButton(QWidget* target, QEvent::Type type, QPoint pos,
                Qt::MouseButton button = Qt::LeftButton) {
    const Qt::MouseButtons held =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
    QMouseEvent e(type, QPointF(pos), QPointF(target->mapToGlobal(pos)), button, held,
                  Qt::NoModifier);
    QCoreApplication::sendEvent(target, &e);
}

QPoint centre(WindowWidget& widget, const zd::ui::Control& c) {
    return placementOf(c, widget.clientSize()).rect.center();
}

TEST(QtArt, MissingArtDrawsNothingAndDoesNotFail) {
    Program program;
    const zd::ui::PictureData& die = *program.p.frmBilder().imgWurf[0].picture;
    zd::qt::ArtCache nowhere("/nonexistent/folder");
    EXPECT_TRUE(nowhere.pixmap(die, 1.0).isNull());
    EXPECT_TRUE(
        program.frontEnd.art().pixmap("bilder", "no_such_element", QSize(10, 10), 1.0).isNull());
}

TEST(QtArt, RenderingsKeptOnDiskComeBackAlikeAndGoWhenTheSheetChanges) {
    QTemporaryDir home;
    QTemporaryDir disk;
    const QString assets = QString::fromUtf8(ZD_PROGRAM_DIR);
    ASSERT_TRUE(QFile::copy(assets + "/bilder.svg", home.filePath("bilder.svg")));
    const std::string folder = home.path().toStdString();

    const QImage first = zd::qt::ArtCache(folder, disk.path())
                             .pixmap("bilder", "die_3", QSize(69, 66), 2.0)
                             .toImage();
    ASSERT_FALSE(first.isNull());
    // A rendering counts only for the sheet it came from: without it, nothing.
    QFile::rename(home.filePath("bilder.svg"), home.filePath("moved.svg"));
    EXPECT_TRUE(zd::qt::ArtCache(folder, disk.path())
                    .pixmap("bilder", "die_3", QSize(69, 66), 2.0)
                    .isNull());
    QFile::rename(home.filePath("moved.svg"), home.filePath("bilder.svg"));
    const QImage again = zd::qt::ArtCache(folder, disk.path())
                             .pixmap("bilder", "die_3", QSize(69, 66), 2.0)
                             .toImage();
    EXPECT_EQ(again, first);

    // A new sheet of the same name is not mistaken for the old one.
    QFile sheet(home.filePath("bilder.svg"));
    ASSERT_TRUE(sheet.open(QIODevice::WriteOnly | QIODevice::Truncate));
    sheet.write(
        "<svg xmlns='http://www.w3.org/2000/svg' width='69' height='66'>"
        "<g id='die_3'><rect width='69' height='66' fill='#ff0000'/></g></svg>");
    sheet.close();
    const QImage changed = zd::qt::ArtCache(folder, disk.path())
                               .pixmap("bilder", "die_3", QSize(69, 66), 2.0)
                               .toImage();
    EXPECT_EQ(changed.pixelColor(10, 10), QColor(255, 0, 0));
}

TEST(QtWindows, EveryWindowPaintsAtEveryDensity) {
    Program program;
    zd::Program& p = program.p;
    std::vector<zd::ui::Window*> windows = {&p.frmHintergrund(), &p.frmSpielfeld(), &p.frmBeste(),
                                            &p.frmMsgOk(), &p.frmMsgJa()};
    for (zd::ui::Window* w : windows) {
        program.show(*w);
        WindowWidget& widget = program.widget(*w);
        EXPECT_EQ(widget.clientSize(), QSize(w->clientWidth() / 15, w->clientHeight() / 15))
            << w->name();
        for (qreal dpr : {1.0, 1.25, 1.5, 2.0}) {
            // The client area is painted whole, to its last physical pixel.
            const QImage image = render(widget, dpr);
            // (Rounded each on its own, the two may reach a row past the image.)
            const QRect client =
                QRect(widget.clientArea()->pos() * dpr, widget.clientSize() * dpr) & image.rect();
            const QRgb unpaintedPixel = kUnpainted.rgba();
            int unpainted = 0;
            for (int y = client.top(); y <= client.bottom(); ++y) {
                const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
                unpainted += static_cast<int>(
                    std::count(row + client.left(), row + client.right() + 1, unpaintedPixel));
            }
            EXPECT_EQ(unpainted, 0) << w->name() << " at " << dpr;
        }
    }

    // A die of the playing field, drawn from art of the density it is shown at.
    WindowWidget& field = program.widget(p.frmSpielfeld());
    const zd::ui::Image& die = p.frmSpielfeld().imgWurf[0];
    const QPoint at =
        placementOf(die, field.clientSize()).rect.topLeft() + field.clientArea()->pos();
    for (qreal dpr : {1.0, 2.0}) {
        SCOPED_TRACE(dpr);
        const QImage image = render(field, dpr);
        expectDrawnAt(image, program.frontEnd.art().pixmap(*die.picture, dpr), at * dpr);
    }
}

// The regions a widget is painted in, as they come.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(QWidget* widget) { widget->installEventFilter(this); }
    QRegion painted;

protected:
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() == QEvent::Paint) painted += static_cast<QPaintEvent*>(e)->region();
        return false;
    }
};

TEST(QtWindows, WhatChangesInTheModelIsRepaintedAndNothingElse) {
    Program program;
    zd::ui::FrmSpielfeld& f = program.p.frmSpielfeld();
    program.show(f);
    WindowWidget& widget = program.widget(f);
    PaintWatch watch(widget.clientArea());
    QCoreApplication::processEvents();
    const auto repainted = [&](const std::function<void()>& change) {
        watch.painted = QRegion();
        program.p.tk.dispatch(change);
        QCoreApplication::processEvents();
        return watch.painted;
    };
    const auto area = [&](const zd::ui::Control& c) {
        const zd::qt::Placement place = placementOf(c, widget.clientSize());
        return QRegion(place.rect & place.clip);
    };

    EXPECT_TRUE(repainted([] {}).isEmpty());
    EXPECT_EQ(repainted([&] { f.lblInfo.ForeColor = {255, 0, 0}; }), area(f.lblInfo));
    // A die on the board panel, seen only as far as the panel shows it.
    zd::ui::Image& die = f.imgAndrea[0];
    EXPECT_EQ(repainted([&] { die.picture = program.p.frmBilder().imgWurf[5].picture; }),
              area(die));
    // Moved: where it was and where it is now.
    const QRegion before = area(f.lblGewonnen);
    const QRegion moved = repainted([&] { f.lblGewonnen.Move(1500, 300); });
    EXPECT_EQ(moved, before + area(f.lblGewonnen));
    // A container hidden takes everything in it along.
    const QRegion panel = area(f.Picture1);
    EXPECT_EQ(repainted([&] { f.Picture1.Visible = false; }), panel);
    EXPECT_TRUE(repainted([&] { die.picture = nullptr; }).isEmpty());
}

TEST(QtInput, AClickOnAControlReachesTheModel) {
    Program program;
    zd::ui::FrmSpielfeld& f = program.p.frmSpielfeld();
    program.show(f);
    WindowWidget& widget = program.widget(f);
    QWidget* client = widget.clientArea();

    // Let go elsewhere: the control hears the release but sees no click.
    std::vector<std::string> seen;
    f.imgNeu.MouseDown = [&] { seen.push_back("down"); };
    f.imgNeu.MouseUp = [&] { seen.push_back("up"); };
    f.imgNeu.Click = [&] { seen.push_back("click"); };
    sendButton(client, QEvent::MouseButtonPress, centre(widget, f.imgNeu));
    sendButton(client, QEvent::MouseButtonRelease, centre(widget, f.imgEnde));
    EXPECT_EQ(seen, (std::vector<std::string>{"down", "up"}));
}

// Where two renderings differ, in device pixels.
QRect differing(const QImage& a, const QImage& b) {
    QRect r;
    for (int y = 0; y < a.height(); ++y) {
        const auto* rowA = reinterpret_cast<const QRgb*>(a.constScanLine(y));
        const auto* rowB = reinterpret_cast<const QRgb*>(b.constScanLine(y));
        if (std::equal(rowA, rowA + a.width(), rowB)) continue;
        for (int x = 0; x < a.width(); ++x) {
            if (rowA[x] != rowB[x]) r |= QRect(x, y, 1, 1);
        }
    }
    return r;
}

TEST(QtInput, AClickReachesAButtonExactlyWhereItIsDrawnAtEveryScale) {
    Program program;
    zd::ui::FrmSpielfeld& f = program.p.frmSpielfeld();
    program.show(f);
    WindowWidget& widget = program.widget(f);
    // A button on the window and a die on the board panel, which counts
    // from an origin of its own; each given a picture opaque to its edges,
    // so that the rendering shows where it lies.
    struct Target {
        zd::ui::Image* image;
        int clicks = 0;
    };
    std::vector<Target> targets = {{&f.lblHilfe}, {&f.imgAndrea[0]}};
    program.p.tk.dispatch([&] {
        for (Target& t : targets) {
            auto opaque = std::make_shared<zd::ui::PictureData>();
            opaque->sheet = "digital";
            opaque->element = "digit_green_8";
            opaque->widthPx = t.image->Width / 15;
            opaque->heightPx = t.image->Height / 15;
            t.image->picture = opaque;
            t.image->Click = [&t] { ++t.clicks; };
        }
    });

    std::vector<qreal> scales;
    for (QScreen* screen : QGuiApplication::screens()) {
        widget.windowHandle()->setScreen(screen);
        widget.move(screen->geometry().topLeft() + QPoint(10, 10));
        QCoreApplication::processEvents();
        const qreal dpr = widget.devicePixelRatioF();
        scales.push_back(dpr);
        for (Target& t : targets) {
            SCOPED_TRACE(testing::Message() << t.image->name() << " at scale " << dpr);
            const QImage shown = render(widget, dpr);
            program.p.tk.dispatch([&] { t.image->Visible = false; });
            const QRect drawn = differing(shown, render(widget, dpr));
            program.p.tk.dispatch([&] { t.image->Visible = true; });
            ASSERT_FALSE(drawn.isEmpty());

            // A click as the window system reports it: to the window, at
            // the device pixel divided by the scale.
            const auto reaches = [&](QPoint pixel) {
                const QPointF at = QPointF(pixel) / dpr;
                const int before = t.clicks;
                for (const QEvent::Type type :
                     {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
                    const Qt::MouseButtons held = type == QEvent::MouseButtonPress
                                                      ? Qt::MouseButtons(Qt::LeftButton)
                                                      : Qt::NoButton;
                    QMouseEvent e(type, at, at, widget.mapToGlobal(at), Qt::LeftButton, held,
                                  Qt::NoModifier);
                    QCoreApplication::sendEvent(widget.windowHandle(), &e);
                }
                return t.clicks > before;
            };
            const QPoint mid = drawn.center();
            const struct {
                const char* where;
                QPoint pixel;
                bool inside;
            } probes[] = {
                {"first column", {drawn.left(), mid.y()}, true},
                {"last column", {drawn.right(), mid.y()}, true},
                {"first row", {mid.x(), drawn.top()}, true},
                {"last row", {mid.x(), drawn.bottom()}, true},
                {"left of it", {drawn.left() - 1, mid.y()}, false},
                {"right of it", {drawn.right() + 1, mid.y()}, false},
                {"above it", {mid.x(), drawn.top() - 1}, false},
                {"below it", {mid.x(), drawn.bottom() + 1}, false},
            };
            for (const auto& probe : probes) {
                EXPECT_EQ(reaches(probe.pixel), probe.inside)
                    << probe.where << ", device pixel " << probe.pixel.x() << ","
                    << probe.pixel.y();
            }
        }
    }
    EXPECT_EQ(scales, (std::vector<qreal>{1, 1.25, 1.5, 2}));
}

void typeKey(QWidget* target, int key, const QString& text = {}) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(target, &press);
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(target, &release);
}

TEST(QtInput, TextBoxesFollowTheModelAndTypingGoesBack) {
    Program program;
    zd::ui::FrmBeste& f = program.p.frmBeste();
    zd::ui::TextBox& box = f.txtSpieler[0];
    program.show(f);
    program.p.tk.dispatch([&] {
        box.Locked = false;
        box.Text = "Niemand";
        box.SelStart = 0;
        box.SelLength = 7;
        box.SetFocus();
    });
    QLineEdit* edit = program.widget(f).lineEditFor(box);
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(edit->text(), QStringLiteral("Niemand"));
    EXPECT_EQ(edit->selectedText(), QStringLiteral("Niemand"));

    // Typing replaces the selection, in the model too.
    typeKey(edit, Qt::Key_A, QStringLiteral("A"));
    typeKey(edit, Qt::Key_N, QStringLiteral("n"));
    EXPECT_EQ(box.Text, "An");
    // Typing in the middle keeps the caret where it is, in both.
    typeKey(edit, Qt::Key_Home);
    typeKey(edit, Qt::Key_D, QStringLiteral("D"));
    EXPECT_EQ(box.Text, "DAn");
    EXPECT_EQ(edit->cursorPosition(), 1);
    EXPECT_EQ(box.SelStart, 1);

    // A locked box takes no typing.
    program.p.tk.dispatch([&] { box.Locked = true; });
    typeKey(edit, Qt::Key_X, QStringLiteral("x"));
    EXPECT_EQ(box.Text, "DAn");
}

TEST(QtInput, ALockedTextBoxTakesNoFocus) {
    Program program;
    zd::ui::FrmBeste& f = program.p.frmBeste();
    zd::ui::TextBox& entry = f.txtSpieler[1];
    program.p.tk.dispatch([&] {
        for (int i = 0; i <= 4; ++i) f.txtSpieler[i].Locked = true;
        entry.Locked = false;
        entry.SetFocus();
    });
    program.show(f);
    WindowWidget& widget = program.widget(f);
    widget.activateWindow();
    QCoreApplication::processEvents();
    QLineEdit* edit = widget.lineEditFor(entry);
    ASSERT_TRUE(edit->hasFocus());

    // Locked, the same box gives its focus up and cannot be clicked into,
    // and neither can any other locked box; a focus frame would make them
    // look as if they took typing.
    program.p.tk.dispatch([&] { entry.Locked = true; });
    EXPECT_FALSE(edit->hasFocus());
    QLineEdit* other = widget.lineEditFor(f.txtSpieler[0]);
    EXPECT_EQ(other->focusPolicy(), Qt::NoFocus);
    sendButton(other, QEvent::MouseButtonPress, QPoint(5, 5));
    sendButton(other, QEvent::MouseButtonRelease, QPoint(5, 5));
    EXPECT_FALSE(other->hasFocus());

    // Shown anew after the box was locked, as the list for reading after an
    // entry: the focus is on OK, and no box has it.
    program.p.tk.dispatch([&] { program.p.tk.hide(f); });
    program.show(f);
    WindowWidget& again = program.widget(f);
    again.activateWindow();
    QCoreApplication::processEvents();
    EXPECT_EQ(f.activeControl(), &f.cmdEnde);
    for (int i = 0; i <= 4; ++i) EXPECT_FALSE(again.lineEditFor(f.txtSpieler[i])->hasFocus()) << i;
}

TEST(QtWindows, AWindowUnloadedByTheModelLosesItsWidget) {
    Program program;
    zd::ui::FrmMsgOk& msg = program.p.frmMsgOk();
    program.show(msg);
    QPointer<WindowWidget> widget = program.frontEnd.widgetFor(msg);
    ASSERT_TRUE(widget);

    program.p.tk.dispatch([&] { program.p.tk.unload(msg); });
    EXPECT_EQ(program.frontEnd.widgetFor(msg), nullptr);
    ASSERT_TRUE(widget);
    EXPECT_FALSE(widget->isVisible());
    EXPECT_EQ(widget->modelWindow(), nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(widget);
}

TEST(QtGerman, QtDrawsItsOwnTextsInGerman) {
    // The program assembled as the game assembles itself.
    zd::qt::QtProgram program;
    zd::qt::QtFrontEnd& frontEnd = program.frontEnd;
    zd::ui::FrmSpielfeld& f = program.p.frmSpielfeld();
    program.p.tk.dispatch([&] { program.p.tk.show(f); });
    WindowWidget* widget = frontEnd.widgetFor(f);
    ASSERT_NE(widget, nullptr);

    // mnuSpiel(3) as the open Spiel menu shows it.
    const QList<QAction*> spiel = widget->menuBar()->actions().at(0)->menu()->actions();
    const auto beenden = std::find_if(spiel.begin(), spiel.end(), [](const QAction* a) {
        return a->text() == QStringLiteral("b&eenden");
    });
    ASSERT_NE(beenden, spiel.end());
    EXPECT_EQ((*beenden)->shortcut().toString(QKeySequence::NativeText), QStringLiteral("Strg+E"));

    // The context menu of a name box.
    QLineEdit edit;
    const std::unique_ptr<QMenu> menu(edit.createStandardContextMenu());
    QStringList entries;
    for (const QAction* a : menu->actions()) entries << a->text();
    const QString shown = entries.join(QStringLiteral(" | "));
    EXPECT_TRUE(shown.contains(QStringLiteral("&Kopieren\tStrg+C")) &&
                shown.contains(QStringLiteral("Alles auswählen\tStrg+A")))
        << shown.toStdString();
}

TEST(QtInstalled, TheDataFolderIsFoundInstalledAndBesideABuiltProgram) {
    QTemporaryDir prefix;
    const QString programs = prefix.filePath(QStringLiteral(ZD_INSTALL_BINDIR));
    const QString data = prefix.filePath(QStringLiteral(ZD_INSTALL_DATADIR));
    ASSERT_TRUE(QDir().mkpath(programs));
    EXPECT_EQ(zd::qt::dataFolderOf(programs), programs);
    ASSERT_TRUE(QDir().mkpath(data));
    EXPECT_EQ(zd::qt::dataFolderOf(programs), data);
}

zd::drive::HarnessOptions gameOptions(const QTemporaryDir& data) {
    zd::drive::HarnessOptions options;
    options.programDir = ZD_PROGRAM_DIR;
    options.driveRoot = data.path().toStdString();
    options.screenWidthPx = 1280;
    options.screenHeightPx = 1024;
    return options;
}

// The whole game in the real layer on a clock that moves only when the test
// says so: real mouse events on the drawn controls, the game's own
// routines, a fixed die. A modal window waiting for input asks `answer`.
struct Game {
    QTemporaryDir data;
    std::ostringstream events;
    zd::drive::Harness harness{gameOptions(data), events};
    zd::Program& p = harness.program();
    zd::qt::QtFrontEnd frontEnd{p.tk};

    Game() {
        p.die.fixed = [] { return 6; };
        harness.start();
    }
    // A press and release at the middle of where the control is drawn.
    void click(const zd::ui::Control& c) {
        WindowWidget* widget = frontEnd.widgetFor(c.window());
        ASSERT_NE(widget, nullptr) << c.path() << " is on no widget";
        sendButton(widget->clientArea(), QEvent::MouseButtonPress, centre(*widget, c));
        sendButton(widget->clientArea(), QEvent::MouseButtonRelease, centre(*widget, c));
    }
    // The next modal window is answered by a click on `c` of it.
    void answerWith(const std::function<zd::ui::Control&()>& c) {
        harness.answer = [this, c] {
            click(c());
            return true;
        };
    }
    void wait(std::int64_t ms) { harness.clock().FastForwardBy(ms); }
};

TEST(QtGame, ARoundAndTheNextLevelPlayedWithTheMouse) {
    Game game;
    zd::Program& p = game.p;
    zd::ui::FrmSpielfeld& f = p.frmSpielfeld();
    ASSERT_TRUE(f.visible());

    game.click(f.imgNeu);
    ASSERT_TRUE(f.imgWuerfeln.Visible);
    for (int choice : {3, 2}) {
        game.click(f.imgWuerfeln);
        game.wait(700);
        ASSERT_TRUE(f.imgAuswahl[choice].Visible);
        game.click(f.imgAuswahl[choice]);
        game.wait(1500);
    }
    game.click(f.imgWuerfeln);
    game.wait(700 + 1500);
    EXPECT_EQ(f.lblGewonnen.Caption, "");  // six all round: a tie
    ASSERT_TRUE(f.imgNaechsterLevel.Visible);

    // The Beenden question, answered Nein with the mouse inside its own loop.
    game.answerWith([&]() -> zd::ui::Control& { return p.frmMsgJa().lblNein; });
    game.click(f.imgEnde);
    EXPECT_EQ(p.g.MsgAntwort, 2);

    // The next level's button stands where the throw button was.
    game.click(f.imgWuerfeln);
    EXPECT_EQ(f.lblGewonnen.Caption, "Spieler beginnt die neue Spielrunde");
}

// A key as the keyboard delivers it: to the widget with the focus, else to
// the active window.
void pressKey(QWidget* window, int key, const QString& text = {}) {
    QWidget* focus = QApplication::focusWidget();
    typeKey(focus ? focus : window, key, text);
}

TEST(QtKeys, AMenuClosedByEscLeavesSpaceAndReturnToTheField) {
    Game game;
    zd::ui::FrmSpielfeld& f = game.p.frmSpielfeld();
    WindowWidget* widget = game.frontEnd.widgetFor(f);
    ASSERT_NE(widget, nullptr);
    widget->activateWindow();
    QCoreApplication::processEvents();
    // Where the focus mark would stand round the throw button.
    const QRect wuerfeln = placementOf(f.imgWuerfeln, widget->clientSize()).rect;
    const QPoint mark = widget->clientArea()->pos() + QPoint(wuerfeln.left() - 3, wuerfeln.top());

    QMenuBar* bar = widget->menuBar();
    QAction* spiel = bar->actions().at(0);
    sendButton(bar, QEvent::MouseButtonPress, bar->actionGeometry(spiel).center());
    sendButton(bar, QEvent::MouseButtonRelease, bar->actionGeometry(spiel).center());
    ASSERT_TRUE(spiel->menu()->isVisible());
    typeKey(spiel->menu(), Qt::Key_Escape);
    // What Qt queued on closing, but nothing from the window system: the
    // offscreen platform's activation changes would take the keys from the
    // bar by themselves, where X11's do not.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    EXPECT_FALSE(spiel->menu()->isVisible());
    EXPECT_EQ(bar->activeAction(), nullptr);

    // Space presses Neues Spiel, and the focus moves on to Würfeln, now
    // marked; Return throws. The menu opens for neither.
    pressKey(widget, Qt::Key_Space, QStringLiteral(" "));
    EXPECT_TRUE(f.imgWuerfeln.Visible);
    EXPECT_EQ(render(*widget, 1.0).pixelColor(mark), QColor(Qt::white));
    pressKey(widget, Qt::Key_Return, QStringLiteral("\r"));
    EXPECT_EQ(f.timZeit.Interval, 700);
    EXPECT_FALSE(spiel->menu()->isVisible());
    EXPECT_FALSE(game.p.tk.ended());
}

TEST(QtKeys, TabLeavesTheNameBoxForOkAndReturnPressesIt) {
    Program program;
    zd::ui::FrmBeste& f = program.p.frmBeste();
    int ok = 0;
    f.cmdEnde.Click = [&] { ++ok; };
    program.show(f);
    // The window as an entry leaves it: one box open, no clearing button.
    program.p.tk.dispatch([&] {
        for (int i = 1; i <= 4; ++i) f.txtSpieler[i].Locked = true;
        f.lblClear.Visible = false;
        f.txtSpieler[0].SetFocus();
    });
    WindowWidget& widget = program.widget(f);
    widget.activateWindow();
    QCoreApplication::processEvents();
    QLineEdit* edit = widget.lineEditFor(f.txtSpieler[0]);
    ASSERT_TRUE(edit->hasFocus());

    // Return in the box ends nothing; Tab goes on to OK, and the keys with it.
    pressKey(&widget, Qt::Key_Return, QStringLiteral("\r"));
    EXPECT_EQ(ok, 0);
    pressKey(&widget, Qt::Key_Tab);
    EXPECT_EQ(f.activeControl(), &f.cmdEnde);
    EXPECT_FALSE(edit->hasFocus());
    pressKey(&widget, Qt::Key_Return, QStringLiteral("\r"));
    EXPECT_EQ(ok, 1);
}

TEST(QtGame, HilfeAndInfoLookPressedUnderAnyButtonButOnlyTheLeftOneClicks) {
    Game game;
    zd::Program& p = game.p;
    zd::ui::FrmSpielfeld& f = p.frmSpielfeld();
    zd::ui::FrmBilder& b = p.frmBilder();
    WindowWidget* widget = game.frontEnd.widgetFor(f);
    ASSERT_NE(widget, nullptr);
    QWidget* client = widget->clientArea();
    // Should a click open the information after all, it is closed again.
    game.answerWith([&]() -> zd::ui::Control& { return p.frmMsgOk().lblOk; });

    for (Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        SCOPED_TRACE(button);
        sendButton(client, QEvent::MouseButtonPress, centre(*widget, f.lblHilfe), button);
        EXPECT_TRUE(zd::ui::sameObject(f.lblHilfe.picture, b.cmdHilfeGruen.picture));
        // Let go elsewhere: the button that was pressed comes up all the same.
        sendButton(client, QEvent::MouseButtonRelease, centre(*widget, f.imgEnde), button);
        EXPECT_TRUE(zd::ui::sameObject(f.lblHilfe.picture, b.cmdHilfeAuswahl.picture));

        sendButton(client, QEvent::MouseButtonPress, centre(*widget, f.lblAllgemein), button);
        EXPECT_TRUE(zd::ui::sameObject(f.lblAllgemein.picture, b.cmdallgemeinGruen.picture));
        sendButton(client, QEvent::MouseButtonRelease, centre(*widget, f.lblAllgemein), button);
        EXPECT_TRUE(zd::ui::sameObject(f.lblAllgemein.picture, b.cmdBeschreibungenAuswahl.picture));
        EXPECT_EQ(p.tk.loaded("frmMsgOk"), nullptr);
    }
}

// The topmost row of the picture that is drawn at all, and where in it.
struct Tip {
    int row = -1;
    int left = 0;
    int right = 0;
};

Tip fingertip(const QImage& image) {
    for (int y = 0; y < image.height(); ++y) {
        Tip tip{y, image.width(), -1};
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) < 128) continue;
            tip.left = std::min(tip.left, x);
            tip.right = std::max(tip.right, x);
        }
        if (tip.right >= 0) return tip;
    }
    return {};
}

TEST(QtCursor, TheHandPointsWithItsFingertipAtEveryDensity) {
    Program program;
    for (qreal dpr : {1.0, 2.0}) {
        SCOPED_TRACE(dpr);
        const QCursor& hand = program.frontEnd.handCursor(dpr);
        const QImage picture = hand.pixmap().toImage();
        ASSERT_EQ(picture.size(), QSize(32, 32) * dpr);
        // The hot spot counts the picture's own pixels: at double density
        // it must lie twice as far in, on the tip and not beside it.
        const Tip tip = fingertip(picture);
        ASSERT_GE(tip.row, 0);
        EXPECT_GE(hand.hotSpot().x(), tip.left);
        EXPECT_LE(hand.hotSpot().x(), tip.right);
        EXPECT_LE(std::abs(hand.hotSpot().y() - tip.row), 1);
    }
    EXPECT_EQ(program.frontEnd.handCursor(2.0).hotSpot(),
              program.frontEnd.handCursor(1.0).hotSpot() * 2);
}

TEST(QtGame, AClickOnTheBackgroundLeavesTheFieldInFront) {
    Game game;
    zd::Program& p = game.p;
    zd::ui::FrmSpielfeld& f = p.frmSpielfeld();
    game.click(f.imgNeu);
    ASSERT_TRUE(zd::ui::sameObject(f.imgDiggi[0].picture, p.frmDigital().imgDiggi[2].picture));
    game.click(p.frmHintergrund().Image1);
    // The field came to the front again, and so was activated anew.
    EXPECT_TRUE(zd::ui::sameObject(f.imgDiggi[0].picture, p.frmDigital().imgDiggi[10].picture));
    EXPECT_EQ(p.tk.activeWindow(), &f);
}

TEST(QtLoop, AModalShowWaitsWhileTimersRunAndEndsWhenItsWindowGoes) {
    Program program;
    zd::Program& p = program.p;
    zd::ui::FrmSpielfeld& f = p.frmSpielfeld();
    zd::ui::FrmMsgOk& msg = p.frmMsgOk();
    program.show(f);

    int ticks = 0;
    bool returned = false;
    f.timZeit.TimerEvent = [&] {
        if (++ticks == 3) p.tk.unload(msg);
    };
    // Should the modal loop not end, this ends it, and the test fails.
    QTimer::singleShot(5000, [&] {
        if (p.tk.loaded("frmMsgOk")) p.tk.dispatch([&] { p.tk.unload(msg); });
    });
    p.tk.dispatch([&] {
        f.timZeit.Interval = 1;
        f.timZeit.Enabled = true;
        p.tk.showModal(msg);
        returned = true;
        f.timZeit.Enabled = false;
    });
    EXPECT_TRUE(returned);
    EXPECT_EQ(ticks, 3);
    EXPECT_EQ(program.loop.nestedDepth(), 0);
}

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", ZD_QT_PLATFORM);
    // The offscreen platform cannot stack windows and says so each time.
    static const QtMessageHandler standard = qInstallMessageHandler(nullptr);
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& m) {
        if (!m.contains(QLatin1String("does not support raise()"))) standard(type, context, m);
    });
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
