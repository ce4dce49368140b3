#include "front/drive/Harness.h"

#include "game/Start.h"

namespace zd::drive {

// What the harness's users learn of the windows: when a modal show begins.
class Harness::Watch : public ui::FrontEnd {
public:
    explicit Watch(Harness& harness) : harness_(harness) {}
    void modalBegins(ui::Window& w) override {
        if (harness_.modalBegins) harness_.modalBegins(w);
    }

private:
    Harness& harness_;
};

Harness::Harness(const HarnessOptions& options, std::ostream& events)
    : clock_(std::make_unique<ui::VirtualLoop>()),
      watch_(std::make_unique<Watch>(*this)),
      platform_(std::make_unique<HeadlessPlatform>(events, options.programDir, options.driveRoot,
                                                   options.soundDevice, options.calls)),
      program_(std::make_unique<Program>(*clock_, *platform_,
                                         options.screenWidthPx * ui::kTwipsPerPixel,
                                         options.screenHeightPx * ui::kTwipsPerPixel)) {
    clock_->attach(program_->tk);
    program_->tk.setFrontEnd(watch_.get());
    clock_->modalStep = [this] { return answer && answer(); };
    if (options.dice) {
        dice_ = *options.dice;
        program_->die.fixed = [this] {
            if (nextDie_ >= dice_.size()) throw DiceExhausted{};
            return dice_[nextDie_++];
        };
    }
    bindEventRoutines(*program_);
}

Harness::~Harness() = default;

void Harness::start() {
    program_->tk.dispatch([this] { Main(*program_); });
}

}  // namespace zd::drive
