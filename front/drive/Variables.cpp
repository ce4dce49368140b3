// The shared variables by name, as the driver reads and writes them.
#include "front/drive/Variables.h"

#include <array>
#include <charconv>
#include <functional>
#include <limits>
#include <string_view>

#include "front/drive/Printing.h"

namespace zd::drive {

namespace {

std::optional<long long> wholeNumber(const std::string& text) {
    long long value = 0;
    const char* end = text.data() + text.size();
    auto [ptr, ec] = std::from_chars(text.data(), end, value);
    if (ec != std::errc() || ptr != end) return std::nullopt;
    return value;
}

std::optional<bool> truth(const std::string& text) {
    if (text == "True") return true;
    if (text == "False") return false;
    return std::nullopt;
}

std::string unprintable(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, 4, "\\r\\n") == 0) {
            out += "\r\n";
            i += 3;
        } else {
            out += text[i];
        }
    }
    return out;
}

// One shared variable, seen as a row of elements with the given first
// index; a single value is a row of one.
struct Variable {
    int first = 0;
    int count = 1;
    std::function<std::string(int)> read;
    std::function<bool(int, const std::string&)> write;
};

// Numbers outside [least, greatest] are refused: by default those the
// type cannot hold, for an index those its arrays cannot take.
template <class T>
Variable numbers(T* values, int first, int count, long long least = std::numeric_limits<T>::min(),
                 long long greatest = std::numeric_limits<T>::max()) {
    return {first, count, [values](int i) { return std::to_string(values[i]); },
            [values, least, greatest](int i, const std::string& v) {
                auto n = wholeNumber(v);
                if (!n || *n < least || *n > greatest) return false;
                values[i] = static_cast<T>(*n);
                return true;
            }};
}

Variable truths(bool* values, int first, int count) {
    return {first, count, [values](int i) { return printableBool(values[i]); },
            [values](int i, const std::string& v) {
                auto b = truth(v);
                if (!b) return false;
                values[i] = *b;
                return true;
            }};
}

Variable texts(std::string* values, int first, int count) {
    return {first, count, [values](int i) { return printableText(values[i]); },
            [values](int i, const std::string& v) {
                values[i] = unprintable(v);
                return true;
            }};
}

Variable described(bool* values, int first, int count) {
    return truths(values, first, count);
}
Variable described(std::string* values, int first, int count) {
    return texts(values, first, count);
}
template <class T>
Variable described(T* values, int first, int count) {
    return numbers(values, first, count);
}

template <class T, std::size_t N>
Variable described(std::array<T, N>& values, int first) {
    return described(values.data() + first, first, static_cast<int>(N) - first);
}
template <class T>
Variable described(T& value, int /*first*/) {
    return described(&value, 0, 1);
}

// Numbers the game never gives a variable, refused so that no script can
// make them: the spinning computer player is 1 to 3 (0 before the first
// spin), a place of the list 0 to 4 (-1 for none).
std::optional<Variable> limited(std::string_view name, SharedVariables& g) {
    if (name == "AktiverComputer") return numbers(&g.AktiverComputer, 0, 1, 0, 3);
    if (name == "EintragPlatz") return numbers(&g.EintragPlatz, 0, 1, -1, 4);
    return std::nullopt;
}

std::optional<Variable> variable(SharedVariables& g, const std::string& name) {
    if (auto v = limited(name, g)) return v;
    std::optional<Variable> found;
    g.forEach([&](std::string_view n, auto& value, int first) {
        if (n == name) found = described(value, first);
    });
    return found;
}

// Element of a row: arrays need an index in range, single values none.
std::optional<int> element(const Variable& v, std::optional<int> index) {
    if (v.count == 1) return index ? std::nullopt : std::optional<int>(0);
    if (!index || *index < v.first || *index >= v.first + v.count) return std::nullopt;
    return *index - v.first;
}

}  // namespace

std::optional<std::string> printVariable(Program& p, const std::string& name,
                                         std::optional<int> index) {
    const auto v = variable(p.g, name);
    if (!v) return std::nullopt;
    const auto i = element(*v, index);
    if (!i) return std::nullopt;
    return v->read(*i);
}

bool setVariable(Program& p, const std::string& name, std::optional<int> index,
                 const std::string& value) {
    SharedVariables& g = p.g;
    const auto v = variable(g, name);
    if (!v) return false;
    const auto i = element(*v, index);
    if (!i) return false;
    const SharedVariables before = g;
    if (!v->write(*i, value)) return false;
    // An entry being made always has its place.
    if (g.NeuerEintrag && g.EintragPlatz < 0) {
        g = before;
        return false;
    }
    return true;
}

}  // namespace zd::drive
