#include "ui/model/Control.h"

#include <algorithm>
#include <cctype>

#include "ui/model/Toolkit.h"
#include "ui/model/Window.h"

namespace zd::ui {

int characterCount(const std::string& utf8) {
    int n = 0;
    for (char c : utf8) n += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    return n;
}

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

void TextBox::SetFocus() {
    window().setActiveControl(this);
}

char CommandButton::accessKey() const {
    auto amp = Caption.find('&');
    if (amp == std::string::npos || amp + 1 >= Caption.size()) return 0;
    return static_cast<char>(std::toupper(static_cast<unsigned char>(Caption[amp + 1])));
}

Timer::Timer(Window& window, std::string name, int index)
    : Control(window, std::move(name), index) {}

Timer::~Timer() {
    window().toolkit().timers().remove(*this);
}

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

}  // namespace zd::ui
