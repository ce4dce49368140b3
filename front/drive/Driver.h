#pragma once

#include <istream>
#include <memory>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "front/drive/Harness.h"

namespace zd::drive {

// Ends the run with an exit code: 1 for a failed expect, 2 for a script error.
struct Stop {
    int code;
};

// Plays the program from a script with a virtual clock and no display.
class Driver {
public:
    Driver(const HarnessOptions& options, std::istream& script, std::ostream& out,
           std::ostream& err);
    ~Driver();

    // Runs the script to its end or the program's; returns the exit code.
    int run();

private:
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
    Harness harness_;
    Program& program_;
};

}  // namespace zd::drive
