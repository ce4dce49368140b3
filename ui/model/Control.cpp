#include "ui/model/Control.h"

#include <algorithm>
#include <cctype>

#include "ui/model/Toolkit.h"
#include "ui/model/Window.h"

namespace zd::ui {

std::string printableText(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
            out += "\\r\\n";
            ++i;
        } else {
            out += text[i];
        }
    }
    return out;
}

std::string printableBool(bool value) { return value ? "True" : "False"; }

int characterCount(const std::string& utf8) {
    int n = 0;
    for (char c : utf8) n += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    return n;
}

namespace {
std::string printablePicture(const Picture& p) { return p ? p->origin : "(none)"; }
}  // namespace

Control::Control(Window& window, std::string name, int index)
    : window_(window), name_(std::move(name)), index_(index) {}

Control::~Control() = default;

std::string Control::path() const {
    std::string p = window_.name() + "." + name_;
    if (index_ >= 0) p += "(" + std::to_string(index_) + ")";
    return p;
}

bool Control::shown() const {
    for (const Control* c = this; c; c = c->container) {
        if (!c->Visible) return false;
    }
    return true;
}

bool Control::takesInput() const {
    for (const Control* c = this; c; c = c->container) {
        if (!c->Visible || !c->Enabled) return false;
    }
    return true;
}

void Control::Move(int left, int top) {
    Left = left;
    Top = top;
}

void Control::Move(int left, int top, int width, int height) {
    Move(left, top);
    Width = width;
    Height = height;
}

std::optional<std::string> Control::printProperty(std::string_view prop,
                                                  std::optional<int>) const {
    if (prop == "Visible") return printableBool(Visible);
    if (prop == "Enabled") return printableBool(Enabled);
    if (prop == "Left") return std::to_string(Left);
    if (prop == "Top") return std::to_string(Top);
    if (prop == "Width") return std::to_string(Width);
    if (prop == "Height") return std::to_string(Height);
    return std::nullopt;
}

std::optional<std::string> Label::printProperty(std::string_view prop,
                                                std::optional<int> arg) const {
    if (prop == "Caption") return printableText(Caption);
    return Control::printProperty(prop, arg);
}

std::optional<std::string> Image::printProperty(std::string_view prop,
                                                std::optional<int> arg) const {
    if (prop == "Picture") return printablePicture(picture);
    return Control::printProperty(prop, arg);
}

std::optional<std::string> PictureBox::printProperty(std::string_view prop,
                                                     std::optional<int> arg) const {
    if (prop == "Picture") return printablePicture(picture);
    return Control::printProperty(prop, arg);
}

void ListBox::AddItem(const std::string& text) {
    if (!Sorted) {
        items_.push_back(text);
        return;
    }
    items_.insert(std::upper_bound(items_.begin(), items_.end(), text), text);
}

std::string ListBox::List(int row) const {
    if (row < 0 || row >= ListCount()) return {};
    return items_[static_cast<std::size_t>(row)];
}

void ListBox::setList(int row, const std::string& text) {
    if (row >= 0 && row < ListCount()) items_[static_cast<std::size_t>(row)] = text;
}

std::optional<std::string> ListBox::printProperty(std::string_view prop,
                                                  std::optional<int> arg) const {
    if (prop == "ListCount") return std::to_string(ListCount());
    if (prop == "List" && arg) return printableText(List(*arg));
    return Control::printProperty(prop, arg);
}

void TextBox::SetFocus() { window().focus = this; }

std::optional<std::string> TextBox::printProperty(std::string_view prop,
                                                  std::optional<int> arg) const {
    if (prop == "Text") return printableText(Text);
    if (prop == "SelStart") return std::to_string(SelStart);
    if (prop == "SelLength") return std::to_string(SelLength);
    if (prop == "Locked") return printableBool(Locked);
    if (prop == "TabStop") return printableBool(TabStop);
    return Control::printProperty(prop, arg);
}

char CommandButton::accessKey() const {
    auto amp = Caption.find('&');
    if (amp == std::string::npos || amp + 1 >= Caption.size()) return 0;
    return static_cast<char>(std::toupper(static_cast<unsigned char>(Caption[amp + 1])));
}

std::optional<std::string> CommandButton::printProperty(std::string_view prop,
                                                        std::optional<int> arg) const {
    if (prop == "Caption") return printableText(Caption);
    return Control::printProperty(prop, arg);
}

Timer::Timer(Window& window, std::string name, int index)
    : Control(window, std::move(name), index) {}

Timer::~Timer() { window().toolkit().timers().remove(*this); }

Timer::EnabledProperty& Timer::EnabledProperty::operator=(bool on) {
    const bool wasRunning = t_.running();
    const int oldInterval = t_.interval_;
    t_.enabled_ = on;
    t_.changed(wasRunning, oldInterval);
    return *this;
}

Timer::IntervalProperty& Timer::IntervalProperty::operator=(int ms) {
    const bool wasRunning = t_.running();
    const int oldInterval = t_.interval_;
    t_.interval_ = std::max(ms, 0);
    t_.changed(wasRunning, oldInterval);
    return *this;
}

void Timer::changed(bool wasRunning, int oldInterval) {
    // A running timer whose interval changes starts counting anew.
    if (running() != wasRunning || (running() && interval_ != oldInterval)) {
        window().toolkit().timers().restart(*this);
    }
}

std::optional<std::string> Timer::printProperty(std::string_view prop,
                                                std::optional<int> arg) const {
    if (prop == "Enabled") return printableBool(enabled_);
    if (prop == "Interval") return std::to_string(interval_);
    return Control::printProperty(prop, arg);
}

std::optional<std::string> MenuItem::printProperty(std::string_view prop,
                                                   std::optional<int> arg) const {
    if (prop == "Caption") return printableText(Caption);
    if (prop == "Checked") return printableBool(Checked);
    return Control::printProperty(prop, arg);
}

}  // namespace zd::ui
