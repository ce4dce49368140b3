#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "ui/model/EventLoop.h"

namespace zd::ui {

class Toolkit;

// A modal window waits for input that will never come: nothing is due and
// nobody has anything more to do.
struct ModalWithoutInput {
    std::string window;
};

// The headless build's event loop: a clock that moves only when told to.
class VirtualLoop : public EventLoop {
public:
    void attach(Toolkit& toolkit) { toolkit_ = &toolkit; }

    std::int64_t now() const override { return now_; }
    // Runs every timer due within the next `ms`, in time order, stepping
    // the clock to each one, and leaves the clock at the end of the span.
    void FastForwardBy(std::int64_t ms);

    // Inside a modal show: runs due timers, else takes the next step from
    // `modalStep` (the driver's next command). With nothing left to do it
    // throws ModalWithoutInput.
    void runModal(const std::function<bool()>& finished) override;
    std::function<bool()> modalStep;

private:
    Toolkit* toolkit_ = nullptr;
    std::int64_t now_ = 0;
};

}  // namespace zd::ui
