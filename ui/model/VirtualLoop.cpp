#include "ui/model/VirtualLoop.h"

#include <algorithm>

#include "ui/model/Toolkit.h"

namespace zd::ui {

void VirtualLoop::FastForwardBy(std::int64_t ms) {
    const std::int64_t end = now_ + ms;
    while (!toolkit_->ended()) {
        const auto due = toolkit_->timers().nextDue();
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
            throw ModalWithoutInput{open ? open->name() : std::string("?")};
        }
    }
}

}  // namespace zd::ui
