#include "front/drive/Driver.h"

#include <charconv>
#include <sstream>

#include "front/drive/Printing.h"
#include "front/drive/Variables.h"

namespace zd::drive {

namespace {

// A name with its index, if any: "imgWurf(3)".
struct Segment {
    std::string name;
    std::optional<int> index;
};

std::optional<int> number(std::string_view text) {
    int value = 0;
    auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec != std::errc() || ptr != text.data() + text.size()) return std::nullopt;
    return value;
}

// "imgWurf(3)" -> imgWurf, 3
std::optional<Segment> segment(std::string_view text) {
    const auto open = text.find('(');
    if (open == std::string_view::npos) {
        if (text.empty()) return std::nullopt;
        return Segment{std::string(text), std::nullopt};
    }
    if (text.back() != ')' || open == 0) return std::nullopt;
    auto index = number(text.substr(open + 1, text.size() - open - 2));
    if (!index) return std::nullopt;
    return Segment{std::string(text.substr(0, open)), index};
}

std::vector<std::string_view> split(std::string_view text, char by) {
    std::vector<std::string_view> parts;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        if (i == text.size() || text[i] == by) {
            parts.push_back(text.substr(start, i - start));
            start = i + 1;
        }
    }
    return parts;
}

}  // namespace

Driver::Driver(const HarnessOptions& options, std::istream& script, std::ostream& out,
               std::ostream& err)
    : script_(script), out_(out), err_(err), harness_(options, out), program_(harness_.program()) {
    harness_.answer = [this] { return step(); };
    harness_.modalBegins = [this](ui::Window& w) { out_ << "modal " << w.name() << '\n'; };
}

Driver::~Driver() = default;

int Driver::run() {
    try {
        while (!program_.tk.ended() && step()) {
        }
        if (program_.tk.ended()) out_ << "end\n";
        return 0;
    } catch (const Stop& stop) {
        return stop.code;
    } catch (const DiceExhausted&) {
        out_ << "error: dice exhausted\n";
        return 2;
    } catch (const ui::ModalWithoutInput& open) {
        // The script ended while a modal window was still open.
        err_ << "note: the script ended with " << open.window << " open\n";
        return 0;
    }
}

bool Driver::step() {
    std::string line;
    // What the program has said so far is out before the driver waits for
    // the next command, so that another program can play it line by line.
    out_.flush();
    while (std::getline(script_, line)) {
        ++lineNumber_;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const auto first = line.find_first_not_of(" \t");
        if (first == std::string::npos || line[first] == '#') continue;
        execute(line.substr(first));
        if (program_.tk.ended()) {
            // Everything the program did has unwound; nothing more runs.
            out_ << "end\n";
            out_.flush();
            throw Stop{0};
        }
        return true;
    }
    return false;
}

void Driver::scriptError(const std::string& message) {
    out_.flush();
    err_ << "error: line " << lineNumber_ << ": " << message << '\n';
    throw Stop{2};
}

void Driver::ignored(const std::string& line) {
    out_ << "ignored: " << line << '\n';
}

ui::Window& Driver::window(const std::string& name) {
    if (!program_.tk.defines(name)) scriptError("unknown window " + name);
    return program_.tk.use(name);
}

ui::Control& Driver::control(ui::Window& w, const std::string& name, std::optional<int> index) {
    ui::Control* c = w.find(name, index);
    if (!c) {
        scriptError("unknown control " + w.name() + "." + name +
                    (index ? "(" + std::to_string(*index) + ")" : ""));
    }
    return *c;
}

std::string Driver::evaluate(const std::string& expr) {
    const auto parts = split(expr, '.');
    if (parts.size() == 1) {
        auto var = segment(parts[0]);
        if (!var) scriptError("bad expression " + expr);
        auto value = printVariable(program_, var->name, var->index);
        if (!value) scriptError("unknown variable " + expr);
        return *value;
    }
    const std::string windowName(parts[0]);
    if (!program_.tk.defines(windowName)) scriptError("unknown window " + windowName);
    if (parts.size() == 2 && parts[1] == "Loaded") {
        return printableBool(program_.tk.loaded(windowName) != nullptr);
    }
    ui::Window& w = window(windowName);
    if (parts.size() == 2) {
        auto value = printProperty(w, parts[1]);
        if (!value) scriptError("unknown property " + expr);
        return *value;
    }
    if (parts.size() != 3) scriptError("bad expression " + expr);
    auto c = segment(parts[1]);
    auto prop = segment(parts[2]);
    if (!c || !prop) scriptError("bad expression " + expr);
    ui::Control& target = control(w, c->name, c->index);
    auto value = printProperty(target, prop->name, prop->index);
    if (!value) scriptError("unknown property " + expr);
    return *value;
}

void Driver::execute(const std::string& line) {
    const auto blank = line.find(' ');
    const std::string command = line.substr(0, blank);
    const std::string rest = blank == std::string::npos ? "" : line.substr(blank + 1);
    ui::Toolkit& tk = program_.tk;

    if (command == "start") {
        harness_.start();
        return;
    }
    if (command == "wait") {
        auto ms = number(rest);
        if (!ms || *ms < 0) scriptError("bad time " + rest);
        harness_.clock().FastForwardBy(*ms);
        return;
    }
    if (command == "print" || command == "expect") {
        std::string expr = rest;
        std::string expected;
        if (command == "expect") {
            const auto eq = rest.find(" = ");
            if (eq == std::string::npos) scriptError("expect needs EXPR = VALUE");
            expr = rest.substr(0, eq);
            expected = rest.substr(eq + 3);
        }
        const std::string actual = evaluate(expr);
        if (command == "print") {
            out_ << expr << " = " << actual << '\n';
        } else if (actual != expected) {
            out_ << "expect failed: " << expr << " = " << actual << '\n';
            out_.flush();
            throw Stop{1};
        }
        return;
    }
    if (command == "set") {
        const auto eq = rest.find(" = ");
        if (eq == std::string::npos) scriptError("set needs NAME = VALUE");
        auto var = segment(rest.substr(0, eq));
        if (!var || !setVariable(program_, var->name, var->index, rest.substr(eq + 3))) {
            scriptError("cannot set " + rest);
        }
        return;
    }
    if (command == "shortcut") {
        if (rest.empty()) scriptError("shortcut needs keys");
        if (!tk.shortcut(rest)) ignored(line);
        return;
    }
    if (command == "menu") {
        auto item = segment(rest);
        if (!item) scriptError("bad menu entry " + rest);
        if (!tk.defines("frmSpielfeld")) scriptError("no menu");
        ui::Window* field = tk.loaded("frmSpielfeld");
        ui::Control* c = field ? field->find(item->name, item->index) : nullptr;
        if (field && !c) scriptError("unknown menu entry " + rest);
        auto* entry = dynamic_cast<ui::MenuItem*>(c);
        if (c && !entry) scriptError(rest + " is not a menu entry");
        if (!entry || !tk.menu(*entry)) ignored(line);
        return;
    }
    if (command == "key" || command == "close") {
        const auto parts = split(rest, ' ');
        const std::string name(parts[0]);
        if (!tk.defines(name)) scriptError("unknown window " + name);
        ui::Window* w = tk.loaded(name);
        if (command == "close") {
            if (parts.size() != 1) scriptError("close takes a window");
            if (!w || !tk.close(*w)) ignored(line);
            return;
        }
        auto code = parts.size() == 2 ? number(parts[1]) : std::nullopt;
        if (!code) scriptError("key needs a window and a key code");
        if (!w || !tk.keyDown(*w, *code)) ignored(line);
        return;
    }
    if (command == "click" || command == "mousedown" || command == "mouseup" || command == "type") {
        std::string target = rest;
        std::string text;
        if (command == "type") {
            const auto gap = rest.find(' ');
            target = rest.substr(0, gap);
            text = gap == std::string::npos ? "" : rest.substr(gap + 1);
        }
        const auto parts = split(target, '.');
        if (parts.size() != 2) scriptError("expected W.C in " + line);
        const std::string name(parts[0]);
        auto c = segment(parts[1]);
        if (!tk.defines(name) || !c) scriptError("unknown window " + name);
        ui::Window* w = tk.loaded(name);
        if (!w) {
            // Not there, so not reachable; still a control it must have.
            if (!tk.sample(name)->find(c->name, c->index)) {
                scriptError("unknown control " + std::string(target));
            }
            ignored(line);
            return;
        }
        ui::Control& ctl = control(*w, c->name, c->index);
        bool taken = false;
        if (command == "click") taken = tk.click(ctl);
        if (command == "mousedown") taken = tk.mouseDown(ctl);
        if (command == "mouseup") taken = tk.mouseUp(ctl);
        if (command == "type") {
            auto* box = dynamic_cast<ui::TextBox*>(&ctl);
            if (!box) scriptError(target + " is not a text box");
            taken = tk.type(*box, text);
        }
        if (!taken) ignored(line);
        return;
    }
    scriptError("unknown command " + command);
}

}  // namespace zd::drive
