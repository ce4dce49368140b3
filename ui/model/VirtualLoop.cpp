#include "ui/model/VirtualLoop.h"

#include <algorithm>
#include <stdexcept>

#include "ui/model/Toolkit.h"

namespace zd::ui {

void VirtualLoop::RunUntilIdle() {
    while (!toolkit_->ended() && toolkit_->fireDueTimer(now_)) {
    }
}

void VirtualLoop::FastForwardBy(std::int64_t ms) {
    const std::int64_t end = now_ + ms;
    while (!toolkit_->ended()) {
        auto due = toolkit_->timers().nextDue();
        if (!due || *due > end) break;
        now_ = std::max(now_, *due);
        toolkit_->fireDueTimer(now_);
    }
    now_ = std::max(now_, end);
}

void VirtualLoop::runModal(const std::function<bool()>& finished) {
    while (!finished()) {
        if (toolkit_->fireDueTimer(now_)) continue;
        if (!modalStep || !modalStep()) {
            Window* open = toolkit_->topModal();
            throw std::runtime_error("the modal window " + (open ? open->name() : std::string("?")) +
                                     " is open and nothing is left to do");
        }
    }
}

}  // namespace zd::ui
