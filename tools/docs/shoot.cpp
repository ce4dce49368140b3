// Takes the pictures of the manuals and the README from the real program:
// its Qt windows during a game played with a die that throws what we say.
//
//   shoot IMAGE_DIR [SCREENSHOT_DIR]
//
// IMAGE_DIR gets the pictures for the manuals, drawn at twice the pixel
// density and marked as 192 dpi, so that they stay sharp on paper.
// SCREENSHOT_DIR, when given, gets the playing field at scale 1 and 2.
//
// The program runs on Qt's offscreen platform unless QT_QPA_PLATFORM says
// otherwise, with data and cache folders of its own: the player's best
// list is never read or touched.
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QImage>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPixmap>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <functional>
#include <string>

#include "front/qt/Guard.h"
#include "front/qt/Placement.h"
#include "front/qt/QtFrontEnd.h"
#include "front/qt/QtProgram.h"
#include "front/qt/WindowWidget.h"
#include "game/program/Program.h"
#include "ui/model/Toolkit.h"

namespace {

constexpr qreal kPrintDpr = 2.0;
// Long enough for the few rounds played, short enough to notice a hang.
constexpr int kTimeLimitMs = 180000;
// How long a picture may wait for the game to get where it should be.
constexpr int kStepLimitMs = 10000;

QString gScratch;
QtMessageHandler gQtMessages = nullptr;

// The offscreen platform says what it cannot do at every raise of a window
// and every open menu, and the sound system that there is no sound server;
// everything else Qt has to say is passed on.
void quietMessages(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.startsWith(QLatin1String("This plugin does not support")) ||
        message.startsWith(QLatin1String("PulseAudioService:"))) {
        return;
    }
    if (gQtMessages) gQtMessages(type, context, message);
}

[[noreturn]] void fail(const QString& why) {
    std::fprintf(stderr, "shoot: %s\n", qPrintable(why));
    std::fflush(stderr);
    // Out of any depth of modal loops at once; only our scratch folder
    // needs tidying.
    if (!gScratch.isEmpty()) QDir(gScratch).removeRecursively();
    std::_Exit(1);
}

// The places of the human player's row, as the round buttons number them.
enum Place { Ones = 1, Tens = 2, Hundreds = 3 };

class Shooter {
public:
    Shooter(zd::Program& p, zd::qt::QtFrontEnd& frontEnd, QString imageDir, QString screenshotDir)
        : p_(p),
          frontEnd_(frontEnd),
          imageDir_(std::move(imageDir)),
          screenshotDir_(std::move(screenshotDir)) {
        p_.die.fixed = [this] {
            if (dice_.empty()) fail(QStringLiteral("the game asked for more dice than planned"));
            const int die = dice_.front();
            dice_.pop_front();
            return die;
        };
        poll();
    }

    void run();

private:
    struct Expectation {
        std::string window;
        std::function<void(zd::ui::Window&)> act;
    };

    zd::ui::FrmSpielfeld& feld() { return p_.frmSpielfeld(); }

    // --- Time and input ------------------------------------------------

    // Lets real time pass with the program's timers firing.
    static void wait(int ms) {
        QEventLoop loop;
        QTimer::singleShot(ms, &loop, &QEventLoop::quit);
        loop.exec();
    }

    void waitFor(const std::function<bool()>& done, const char* what) {
        QElapsedTimer clock;
        clock.start();
        while (!done()) {
            if (clock.elapsed() > kStepLimitMs)
                fail(QStringLiteral("waited in vain for %1").arg(what));
            wait(20);
        }
        // One more moment, for the widgets to follow the model.
        wait(50);
    }

    void click(zd::ui::Control& c) {
        if (!p_.tk.click(c)) {
            fail(QStringLiteral("the click on %1 was refused")
                     .arg(QString::fromStdString(c.name())));
        }
    }

    void menu(zd::ui::MenuItem& item) {
        if (!p_.tk.menu(item)) {
            fail(QStringLiteral("the menu entry %1 was refused")
                     .arg(QString::fromStdString(item.Caption)));
        }
    }

    // A modal window runs a loop of its own until it closes; what is to be
    // done in it is queued before the click that opens it.
    void whenModal(std::string window, std::function<void(zd::ui::Window&)> act) {
        expected_.push_back({std::move(window), std::move(act)});
    }

    void allModalsSeen(const char* after) {
        if (!expected_.empty()) {
            fail(QStringLiteral("after %1 the window %2 never came")
                     .arg(after, QString::fromStdString(expected_.front().window)));
        }
    }

    void poll() {
        // Scheduled before acting, so that a modal window opened from
        // within an action is seen from its loop too.
        QTimer::singleShot(20, [this] { poll(); });
        if (expected_.empty()) return;
        zd::ui::Window* top = p_.tk.topModal();
        if (!top || top->name() != expected_.front().window || !frontEnd_.widgetFor(*top)) return;
        const auto act = std::move(expected_.front().act);
        expected_.pop_front();
        zd::qt::guarded([&] {
            // Shown for a moment first, as the player would see it.
            wait(100);
            act(*top);
        });
    }

    // --- Pictures --------------------------------------------------------

    QImage picture(zd::ui::Window& w, qreal dpr) {
        QWidget* widget = frontEnd_.widgetFor(w);
        if (!widget || !widget->isVisible()) {
            fail(QStringLiteral("%1 is not on the screen").arg(QString::fromStdString(w.name())));
        }
        QImage image;
        if (qFuzzyCompare(widget->devicePixelRatioF(), dpr)) {
            image = widget->grab().toImage();
        } else {
            // Another density than the screen's: the window paints itself
            // into an image of that density, its art rendered afresh.
            QPixmap pixmap(widget->size() * dpr);
            pixmap.setDevicePixelRatio(dpr);
            pixmap.fill(Qt::white);
            widget->render(&pixmap);
            image = pixmap.toImage();
        }
        const int dotsPerMeter = qRound(dpr * 96.0 / 0.0254);
        image.setDotsPerMeterX(dotsPerMeter);
        image.setDotsPerMeterY(dotsPerMeter);
        return image;
    }

    void write(const QImage& image, const QString& dir, const QString& name) {
        const QString path = QDir(dir).filePath(name);
        if (!image.save(path, "PNG")) fail(QStringLiteral("cannot write %1").arg(path));
        std::printf("%s  %dx%d\n", qPrintable(path), image.width(), image.height());
        std::fflush(stdout);
    }

    // A picture for the manuals.
    void save(zd::ui::Window& w, const QString& name) {
        write(picture(w, kPrintDpr), imageDir_, name);
    }

    // A part of the playing field: the controls given, with some room
    // round them.
    void saveDetail(std::initializer_list<const zd::ui::Control*> controls, const QString& name) {
        auto* widget = frontEnd_.widgetFor(feld());
        if (!widget) fail(QStringLiteral("the playing field is not on the screen"));
        QRect area;
        for (const zd::ui::Control* c : controls) {
            area |= zd::qt::placementOf(*c, widget->clientSize()).rect;
        }
        area.translate(widget->clientArea()->pos());
        area = area.adjusted(-12, -10, 12, 10) & widget->rect();
        const QImage whole = picture(feld(), kPrintDpr);
        QImage part = whole.copy(QRect(area.topLeft() * kPrintDpr, area.size() * kPrintDpr));
        part.setDotsPerMeterX(whole.dotsPerMeterX());
        part.setDotsPerMeterY(whole.dotsPerMeterY());
        write(part, imageDir_, name);
    }

    // The playing field for the README, at scale 1 and 2.
    void screenshot(const QString& stem, const QString& variant) {
        if (screenshotDir_.isEmpty()) return;
        write(picture(feld(), 1.0), screenshotDir_,
              stem + QStringLiteral("-1x") + variant + ".png");
        write(picture(feld(), 2.0), screenshotDir_,
              stem + QStringLiteral("-2x") + variant + ".png");
    }

    // The field with one of its menus open: the open menu is a window of
    // its own, drawn onto the field where it stands on the screen.
    void saveMenu(int index, const QString& name) {
        auto* widget = frontEnd_.widgetFor(feld());
        QMenuBar* bar = widget ? widget->menuBar() : nullptr;
        if (!bar || index >= bar->actions().size()) fail(QStringLiteral("no menu bar"));
        QAction* action = bar->actions().at(index);
        QMenu* menu = action->menu();
        if (!menu) fail(QStringLiteral("menu %1 has no entries").arg(index));
        bar->setActiveAction(action);
        waitFor([menu] { return menu->isVisible(); }, "the menu to open");
        // The entries are made as the menu opens.
        wait(100);
        const QImage field = picture(feld(), kPrintDpr);
        QPixmap popupPixmap(menu->size() * kPrintDpr);
        popupPixmap.setDevicePixelRatio(kPrintDpr);
        popupPixmap.fill(Qt::white);
        menu->render(&popupPixmap);
        QImage combined = field;
        {
            // The image has the density of the pictures: the painter works
            // in the window's own pixels.
            QPainter painter(&combined);
            const QRect at(menu->pos() - widget->pos(), menu->size());
            painter.drawPixmap(at.topLeft(), popupPixmap);
            // The offscreen platform draws no shadow; a thin edge keeps the
            // menu apart from the field.
            painter.setPen(QPen(QColor(90, 90, 90), 0));
            painter.drawRect(QRectF(at).adjusted(0.25, 0.25, -0.25, -0.25));
        }
        write(combined, imageDir_, name);
        menu->hide();
        bar->setActiveAction(nullptr);
        wait(100);
    }

    // --- Game steps ------------------------------------------------------

    void planDice(std::initializer_list<int> dice) { dice_.insert(dice_.end(), dice); }

    // Throws and waits until the round buttons are offered.
    void throwForChoice() {
        click(feld().imgWuerfeln);
        waitFor([this] { return feld().lblInfo.Caption == "Treffe eine Auswahl"; },
                "the round buttons");
    }

    void choose(Place stelle) {
        click(feld().imgAuswahl[stelle]);
        // The computer players throw one after the other, then it is our turn.
        waitFor([this] { return feld().imgWuerfeln.Visible; }, "the computer players' throws");
    }

    // The third throw goes to the place left; the round ends after the
    // computer players have thrown.
    void lastThrow() {
        click(feld().imgWuerfeln);
        waitFor([this] { return feld().imgNaechsterLevel.Visible; }, "the end of the round");
    }

    // A further round with the player's first two throws on the hundreds
    // and the tens.
    void playNextRound(std::initializer_list<int> dice) {
        planDice(dice);
        click(feld().imgNaechsterLevel);
        throwForChoice();
        choose(Hundreds);
        throwForChoice();
        choose(Tens);
        lastThrow();
    }

    zd::Program& p_;
    zd::qt::QtFrontEnd& frontEnd_;
    QString imageDir_;
    QString screenshotDir_;
    std::deque<int> dice_;
    std::deque<Expectation> expected_;
};

void Shooter::run() {
    zd::ui::FrmSpielfeld& f = feld();
    waitFor([&f] { return f.timStart.Enabled; }, "the start");
    // Nobody wants the sounds of a picture session.
    menu(f.mnuSoundan[2]);

    screenshot(QStringLiteral("spielfeld"), QString());
    saveMenu(2, QStringLiteral("menue.png"));

    // Round 1: the player begins. Per throw the order is the player,
    // Andrea, Thomas, Victoria; the player's third throw places itself.
    planDice({6, 3, 6, 1,    // 6 on the hundreds; 3 tens, 6 hundreds, 1 ones
              4, 5, 2, 4,    // 4 on the tens; a 5 at the second throw goes high
              2, 6, 1, 3});  // 642 against 536, 612 and 341
    click(f.imgNeu);
    waitFor([&f] { return f.imgWuerfeln.Visible; }, "the Würfeln button");
    throwForChoice();
    // The player's places close up, without the name plates beside them.
    saveDetail({&f.imgWurf[0], &f.imgWurf[1], &f.imgWurf[3], &f.imgAuswahl[1], &f.lblInfo},
               QStringLiteral("auswahl.png"));
    choose(Hundreds);
    throwForChoice();
    save(f, QStringLiteral("spielfeld.png"));
    screenshot(QStringLiteral("spielfeld"), QStringLiteral("-spiel"));
    choose(Tens);
    lastThrow();

    // Round 2, an easy win.
    playNextRound({6, 1, 2, 3, 5, 1, 2, 3, 4, 1, 2, 3});

    // Round 3, a close one; with 21 points the player beats the list.
    playNextRound({6, 6, 5, 4,    // Thomas's 5 goes on the tens at the first throw
                   5, 3, 5, 4,    // and on the hundreds at the second
                   4, 2, 1, 4});  // 654 against 632, 551 and 444
    if (!f.imgBeste.Visible) fail(QStringLiteral("the Beste Spieler button did not come"));
    save(f, QStringLiteral("runde.png"));

    // The question of the Beenden button; Nein plays on.
    whenModal("frmMsgJa", [this](zd::ui::Window& w) {
        save(w, QStringLiteral("msg_ja.png"));
        click(p_.frmMsgJa().lblNein);
    });
    click(f.imgEnde);
    allModalsSeen("Beenden");

    // A place in the best list: the offer, then the list with the name
    // typed where "Spieler" stood selected.
    whenModal("frmMsgJa", [this](zd::ui::Window&) { click(p_.frmMsgJa().lblJa); });
    whenModal("frmBeste", [this](zd::ui::Window& w) {
        auto& beste = p_.frmBeste();
        zd::ui::TextBox& eintrag = beste.txtSpieler[p_.g.EintragPlatz];
        QLineEdit* edit = frontEnd_.widgetFor(w)->lineEditFor(eintrag);
        if (!edit) fail(QStringLiteral("no field for the name"));
        for (const QChar c : QStringLiteral("Anna")) {
            const int key = Qt::Key_A + (c.toUpper().unicode() - 'A');
            QKeyEvent press(QEvent::KeyPress, key, c.isUpper() ? Qt::ShiftModifier : Qt::NoModifier,
                            QString(c));
            QCoreApplication::sendEvent(edit, &press);
            QKeyEvent release(QEvent::KeyRelease, key,
                              c.isUpper() ? Qt::ShiftModifier : Qt::NoModifier, QString(c));
            QCoreApplication::sendEvent(edit, &release);
            wait(60);
        }
        if (eintrag.Text != "Anna") fail(QStringLiteral("the name did not reach the list"));
        save(w, QStringLiteral("beste.png"));
        click(beste.cmdEnde);
    });
    click(f.imgBeste);
    allModalsSeen("Beste Spieler");

    // The end of a game: the player has one point left and loses the round.
    p_.g.Guthaben[0] = 1;
    planDice({1, 6, 6, 6, 1, 5, 5, 5, 1, 4, 3, 2});  // 111 against 654, 653 and 652
    whenModal("frmMsgOk", [this](zd::ui::Window& w) {
        save(w, QStringLiteral("msg_ok.png"));
        click(p_.frmMsgOk().lblOk);
    });
    whenModal("frmMsgJa", [this](zd::ui::Window& w) {
        save(w, QStringLiteral("spielende.png"));
        click(p_.frmMsgJa().lblJa);
    });
    click(f.imgNaechsterLevel);
    throwForChoice();
    choose(Ones);
    throwForChoice();
    choose(Tens);
    click(f.imgWuerfeln);
    waitFor([this] { return expected_.empty() && !p_.tk.topModal(); }, "the end of the game");
    waitFor([&f] { return f.lblGewonnen.Caption == "Spieler beginnt die neue Spielrunde"; },
            "the new game");

    // Everything is taken; the program ends as the menu ends it.
    menu(f.mnuSpiel[3]);
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc < 2 || argc > 3) {
        std::fprintf(stderr, "usage: shoot IMAGE_DIR [SCREENSHOT_DIR]\n");
        return 2;
    }
    const QString imageDir = QString::fromLocal8Bit(argv[1]);
    const QString screenshotDir = argc == 3 ? QString::fromLocal8Bit(argv[2]) : QString();

    // Before Qt reads them: its own folders, and no screen needed.
    QTemporaryDir scratch(QDir::tempPath() + QStringLiteral("/zd-shoot-XXXXXX"));
    if (!scratch.isValid()) {
        std::fprintf(stderr, "shoot: no scratch folder\n");
        return 1;
    }
    gScratch = scratch.path();
    qputenv("XDG_DATA_HOME", QFile::encodeName(scratch.filePath(QStringLiteral("data"))));
    qputenv("XDG_CACHE_HOME", QFile::encodeName(scratch.filePath(QStringLiteral("cache"))));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(scratch.filePath(QStringLiteral("config"))));
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) {
        const QString runtime = scratch.filePath(QStringLiteral("runtime"));
        QDir().mkpath(runtime);
        QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime));
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");

    // A best list with names in it looks like a game that is played.
    const QString dataFolder = scratch.filePath(QStringLiteral("data/wuerfelhof"));
    QDir().mkpath(dataFolder);
    {
        QFile list(dataFolder + QStringLiteral("/zifdach.txt"));
        if (!list.open(QIODevice::WriteOnly)) {
            std::fprintf(stderr, "shoot: cannot prepare the best list\n");
            return 1;
        }
        list.write("Hilde\r\nJonas\r\nMia\r\nPapa\r\nLena\r\n30\r\n27\r\n24\r\n20\r\n18\r\n");
    }

    for (const QString& dir : {imageDir, screenshotDir}) {
        if (!dir.isEmpty() && !QDir().mkpath(dir)) {
            std::fprintf(stderr, "shoot: cannot make %s\n", qPrintable(dir));
            return 1;
        }
    }

    gQtMessages = qInstallMessageHandler(quietMessages);
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Zifferndach"));
    QApplication::setQuitOnLastWindowClosed(false);
    QTimer::singleShot(kTimeLimitMs, [] { fail(QStringLiteral("took too long")); });

    bool finished = false;
    zd::qt::guarded([&] {
        zd::qt::QtProgram program;
        if (!program.start()) fail(QStringLiteral("the program ended at its start"));
        Shooter shooter(program.p, program.frontEnd, imageDir, screenshotDir);
        QTimer::singleShot(0, [&] {
            zd::qt::guarded([&] {
                shooter.run();
                finished = true;
            });
        });
        QApplication::exec();
    });
    if (!finished) fail(QStringLiteral("the program ended before all pictures were taken"));
    return 0;
}
