#pragma once

namespace zd::view {

// Brings a front end in line with the model. A round may call into the
// window system, which can run model code that asks for another round;
// that one runs when this one is through, a few times at most.
class Resync {
public:
    template <class Round>
    void run(Round&& round) {
        if (running_) {
            again_ = true;
            return;
        }
        running_ = true;
        int rounds = 0;
        do {
            again_ = false;
            round();
        } while (again_ && ++rounds < 8);
        running_ = false;
    }
    bool running() const { return running_; }

private:
    bool running_ = false;
    bool again_ = false;
};

}  // namespace zd::view
