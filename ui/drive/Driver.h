#pragma once

#include <istream>
#include <memory>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "game/Programm.h"
#include "ui/drive/HeadlessPlatform.h"
#include "ui/model/VirtualLoop.h"

namespace zd::drive {

struct Options {
    std::string programDir;
    std::optional<std::string> driveRoot;  // empty string: no drive
    bool systemDrive = false;              // the system's own, instead of driveRoot
    bool soundDevice = true;
    std::optional<std::vector<int>> dice;
};

// Ends the run with an exit code: 1 for a failed expect, 2 for a script error.
struct Stop {
    int code;
};

// Plays the program from a script with a virtual clock and no display.
class Driver {
public:
    Driver(const Options& options, std::istream& script, std::ostream& out, std::ostream& err);
    ~Driver();

    // Runs the script to its end or the program's; returns the exit code.
    int run();

private:
    class Loop;

    // Reads and runs the next command; false at the end of the script.
    bool step();
    void execute(const std::string& line);
    [[noreturn]] void scriptError(const std::string& message);

    ui::Window& window(const std::string& name);
    ui::Control& control(ui::Window& w, const std::string& name, std::optional<int> index);
    std::string evaluate(const std::string& expr);
    void ignored(const std::string& line);

    std::istream& script_;
    std::ostream& out_;
    std::ostream& err_;
    int lineNumber_ = 0;
    std::unique_ptr<Loop> loop_;
    std::unique_ptr<HeadlessPlatform> platform_;
    std::unique_ptr<Programm> program_;
    std::vector<int> dice_;
    std::size_t nextDie_ = 0;
};

}  // namespace zd::drive
