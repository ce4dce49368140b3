#include "front/qt/QtLoop.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <algorithm>

#include "ui/model/Toolkit.h"

namespace zd::qt {

QtLoop::QtLoop() {
    clock_.start();
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, [this] { fire(); });
}

QtLoop::~QtLoop() = default;

void QtLoop::attach(ui::Toolkit& toolkit) {
    toolkit_ = &toolkit;
    arm();
}

std::int64_t QtLoop::now() const {
    return clock_.elapsed();
}

void QtLoop::timersChanged() {
    arm();
}

void QtLoop::arm() {
    if (!toolkit_ || toolkit_->ended()) {
        timer_.stop();
        return;
    }
    const auto due = toolkit_->timers().nextDue();
    if (!due) {
        timer_.stop();
        return;
    }
    const std::int64_t wait = std::max<std::int64_t>(0, *due - now());
    timer_.start(static_cast<int>(std::min<std::int64_t>(wait, 24LL * 3600 * 1000)));
}

void QtLoop::fire() {
    if (!toolkit_) return;
    // One moment for the whole round: a timer whose event takes longer than
    // its interval is due again at once, and must not keep input waiting.
    const std::int64_t moment = now();
    while (!toolkit_->ended() && toolkit_->fireDueTimer(moment)) {
    }
    arm();
}

void QtLoop::runModal(const std::function<bool()>& finished) {
    if (finished()) return;
    QEventLoop loop;
    nested_.push_back({&loop, &finished});
    loop.exec();
    nested_.erase(std::remove_if(nested_.begin(), nested_.end(),
                                 [&loop](const Nested& n) { return n.loop == &loop; }),
                  nested_.end());
}

void QtLoop::afterEvent() {
    if (toolkit_ && toolkit_->ended()) {
        timer_.stop();
        // Before the main loop runs there is nothing to leave; exiting then
        // would make the next loop of this thread return at once.
        if (QThread::currentThread()->loopLevel() > 0) QCoreApplication::exit(0);
    }
    // An outer loop that is finished returns as soon as the inner ones have;
    // at the program's end they all are.
    for (const Nested& n : nested_) {
        if ((*n.finished)()) n.loop->exit(0);
    }
}

}  // namespace zd::qt
