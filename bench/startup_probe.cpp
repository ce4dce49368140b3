// Starts either the game or a bare Qt window of the playing field's size,
// and quits right after the window's first paint, printing how many
// milliseconds passed since the runner launched it (ZD_LAUNCHED_NS).
#include <QApplication>
#include <QMenuBar>
#include <QTimer>
#include <QVBoxLayout>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "front/qt/Guard.h"
#include "front/qt/QtFrontEnd.h"
#include "front/qt/QtProgram.h"
#include "front/qt/WindowWidget.h"

namespace {

class FirstPaint : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && !seen_) {
            seen_ = true;
            // Quit once this paint has been done.
            QTimer::singleShot(0, [] {
                const long long launched = std::atoll(std::getenv("ZD_LAUNCHED_NS"));
                const long long now = std::chrono::duration_cast<std::chrono::nanoseconds>(
                                          std::chrono::steady_clock::now().time_since_epoch())
                                          .count();
                std::printf("%.2f\n", static_cast<double>(now - launched) / 1e6);
                std::fflush(stdout);
                QCoreApplication::exit(0);
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    bool seen_ = false;
};

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 2 || !std::getenv("ZD_LAUNCHED_NS")) {
        std::fprintf(stderr, "usage: ZD_LAUNCHED_NS=... startup_probe game|bare\n");
        return 2;
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Zifferndach"));
    QApplication::setQuitOnLastWindowClosed(false);
    FirstPaint probe;
    if (std::strcmp(argv[1], "bare") == 0) {
        QWidget window;
        auto* layout = new QVBoxLayout(&window);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setMenuBar(new QMenuBar);
        static_cast<QMenuBar*>(layout->menuBar())->addMenu(QStringLiteral("&Spiel"));
        auto* canvas = new QWidget;
        canvas->setFixedSize(784, 450);
        layout->addWidget(canvas);
        canvas->installEventFilter(&probe);
        window.show();
        return QApplication::exec();
    }
    int result = 0;
    zd::qt::guarded([&] {
        zd::qt::QtProgram program;
        program.start();
        if (QWidget* field = program.frontEnd.widgetFor(program.p.frmSpielfeld()))
            field->installEventFilter(&probe);
        result = QApplication::exec();
    });
    return result;
}
