#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "front/drive/HeadlessPlatform.h"
#include "game/program/Program.h"
#include "ui/model/VirtualLoop.h"

namespace zd::drive {

struct HarnessOptions {
    std::string programDir;
    // What stands for the root of the system folder's drive: empty when it
    // cannot be found, nothing for the system's own.
    std::optional<std::string> driveRoot = std::string();
    bool soundDevice = true;
    // Each throw takes the next number; without them the real die is used.
    std::optional<std::vector<int>> dice;
    sys::FileCalls* calls = nullptr;  // the file system's calls, when a test hooks them
    int screenWidthPx = 1024;
    int screenHeightPx = 768;
};

// Thrown by a throw of the die when the given numbers have run out.
struct DiceExhausted {};

// The program without a display, as everything that runs it headless needs
// it: a virtual clock, a platform that writes sounds and documents to
// `events` instead of playing or opening them, one program with its event
// routines bound, and the dice. When a modal window waits for input and no
// timer is due, `answer` is asked to do one thing (a click, a driver
// command); it returns false when there is nothing left to do.
class Harness {
public:
    Harness(const HarnessOptions& options, std::ostream& events);
    ~Harness();
    Harness(const Harness&) = delete;
    Harness& operator=(const Harness&) = delete;

    // Runs the program's entry, Main.
    void start();

    Program& program() { return *program_; }
    ui::VirtualLoop& clock() { return *clock_; }
    HeadlessPlatform& platform() { return *platform_; }

    std::function<bool()> answer;
    // Told when a modal show begins.
    std::function<void(ui::Window&)> modalBegins;

private:
    class Watch;

    std::unique_ptr<ui::VirtualLoop> clock_;
    std::unique_ptr<Watch> watch_;
    std::unique_ptr<HeadlessPlatform> platform_;
    std::unique_ptr<Program> program_;
    std::vector<int> dice_;
    std::size_t nextDie_ = 0;
};

}  // namespace zd::drive
