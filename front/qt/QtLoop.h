#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <vector>

#include "ui/model/EventLoop.h"

class QEventLoop;

namespace zd::ui {
class Toolkit;
}

namespace zd::qt {

// Real time and Qt's event loop for the toolkit: one precise timer armed for
// the earliest due toolkit timer, and a nested Qt event loop for every modal
// show that is waiting.
class QtLoop : public ui::EventLoop {
public:
    QtLoop();
    ~QtLoop() override;
    QtLoop(const QtLoop&) = delete;
    QtLoop& operator=(const QtLoop&) = delete;

    void attach(ui::Toolkit& toolkit);

    std::int64_t now() const override;
    void timersChanged() override;
    void runModal(const std::function<bool()>& finished) override;
    void afterEvent() override;

    // Modal shows waiting in nested loops, innermost last.
    int nestedDepth() const { return static_cast<int>(nested_.size()); }

protected:
    // Fires every toolkit timer due now.
    void fire();

private:
    struct Nested {
        QEventLoop* loop;
        const std::function<bool()>* finished;
    };

    void arm();

    ui::Toolkit* toolkit_ = nullptr;
    QElapsedTimer clock_;
    QTimer timer_;
    std::vector<Nested> nested_;
};

}  // namespace zd::qt
