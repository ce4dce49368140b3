#include "ui/model/Toolkit.h"

#include <algorithm>
#include <stdexcept>

#include "ui/model/KeyCodes.h"

namespace zd::ui {

namespace {

// Keeps the count of events on the stack right whichever way one ends.
class DepthGuard {
public:
    explicit DepthGuard(int& depth) : depth_(depth) { ++depth_; }
    ~DepthGuard() { --depth_; }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;

private:
    int& depth_;
};

int keyCodeOf(std::string_view key) {
    if (key == "Esc") return kKeyEscape;
    if (key == "Enter" || key == "Return") return kKeyReturn;
    if (key == "Tab") return kKeyTab;
    if (key == "Space") return kKeySpace;
    if (key == "Left") return kKeyLeft;
    if (key == "Right") return kKeyRight;
    if (key.size() >= 2 && key[0] == 'F') {
        int n = 0;
        for (char c : key.substr(1)) {
            if (c < '0' || c > '9') return 0;
            n = n * 10 + (c - '0');
        }
        return n >= 1 && n <= 12 ? kKeyF1 + n - 1 : 0;
    }
    if (key.size() == 1) {
        char c = key[0];
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) return c;
    }
    return 0;
}

MenuItem* findShortcut(const std::vector<MenuItem*>& items, std::string_view keys) {
    for (MenuItem* item : items) {
        if (item->Shortcut == keys) return item;
        if (MenuItem* found = findShortcut(item->children, keys)) return found;
    }
    return nullptr;
}

bool isPlayKey(int keyCode) {
    return keyCode == kKeyTab || keyCode == kKeyReturn || keyCode == kKeySpace ||
           keyCode == kKeyLeft || keyCode == kKeyRight;
}

// The next control from `from` in `order` that `fits`, going round at the
// ends when `wrap`; from nowhere, the first (or last).
Control* step(const std::vector<Control*>& order, Control* from, bool back, bool wrap,
              const std::function<bool(const Control&)>& fits) {
    const auto n = static_cast<std::ptrdiff_t>(order.size());
    const auto at = std::find(order.begin(), order.end(), from) - order.begin();
    const bool nowhere = at == n;
    for (std::ptrdiff_t k = 1; k <= n; ++k) {
        std::ptrdiff_t i = nowhere ? (back ? n - k : k - 1) : (back ? at - k : at + k);
        if (!nowhere && (i < 0 || i >= n)) {
            if (!wrap) return nullptr;
            i = (i + n) % n;
        }
        if (fits(*order[static_cast<std::size_t>(i)])) return order[static_cast<std::size_t>(i)];
    }
    return nullptr;
}

Control* firstUsable(const std::vector<Control*>& controls) {
    for (Control* c : controls) {
        if (Window::canFocus(*c)) return c;
    }
    return nullptr;
}

bool menuReachable(const MenuItem& item) {
    for (const MenuItem* m = &item; m; m = m->parent) {
        if (!m->Visible || !m->Enabled) return false;
    }
    return true;
}

}  // namespace

Toolkit::Toolkit(EventLoop& loop, int screenWidthTwips, int screenHeightTwips)
    : loop_(loop),
      timers_(loop),
      screenWidth_(screenWidthTwips),
      screenHeight_(screenHeightTwips) {}

Toolkit::~Toolkit() {
    // Timers unhook themselves from the queue as their windows go.
    unloaded_.clear();
    windows_.clear();
}

void Toolkit::define(const std::string& name, Factory make) {
    factories_[name] = std::move(make);
}

bool Toolkit::defines(std::string_view name) const {
    return factories_.find(name) != factories_.end();
}

Window& Toolkit::use(std::string_view name) {
    if (auto it = windows_.find(name); it != windows_.end()) return *it->second;
    auto factory = factories_.find(name);
    if (factory == factories_.end()) {
        throw std::logic_error("no window named " + std::string(name));
    }
    auto created = factory->second(*this);
    Window& w = *created;
    windows_.emplace(std::string(name), std::move(created));
    if (w.Form_Load) dispatch(w.Form_Load);
    return w;
}

Window* Toolkit::loaded(std::string_view name) const {
    auto it = windows_.find(name);
    return it == windows_.end() ? nullptr : it->second.get();
}

std::unique_ptr<Window> Toolkit::sample(std::string_view name) {
    auto factory = factories_.find(name);
    if (factory == factories_.end()) return nullptr;
    return factory->second(*this);
}

void Toolkit::unload(Window& w) {
    auto it = windows_.find(w.name());
    if (it == windows_.end() || it->second.get() != &w) return;
    if (w.Form_Unload) dispatch(w.Form_Unload);
    if (ended_) throw ProgramEnded{};
    hide(w);
    for (const auto& c : w.controls()) {
        if (auto* t = dynamic_cast<Timer*>(c.get())) timers_.remove(*t);
    }
    unloaded_.push_back(std::move(it->second));
    windows_.erase(it);
    frontEnd_->windowGone(w);
}

void Toolkit::raise(Window& w) {
    stacking_.erase(std::remove(stacking_.begin(), stacking_.end(), &w), stacking_.end());
    stacking_.push_back(&w);
}

Window* Toolkit::topVisible() const {
    return stacking_.empty() ? nullptr : stacking_.back();
}

void Toolkit::activate(Window* w) {
    if (w == active_) return;
    active_ = w;
    if (w && w->Form_Activate) dispatch(w->Form_Activate);
}

void Toolkit::show(Window& w) {
    w.visible_ = true;
    w.shownAnew_ = true;
    raise(w);
    frontEnd_->broughtToFront(w);
    activate(&w);
}

void Toolkit::hide(Window& w) {
    if (!w.visible_) return;
    w.visible_ = false;
    stacking_.erase(std::remove(stacking_.begin(), stacking_.end(), &w), stacking_.end());
    if (active_ == &w) activate(topVisible());
}

void Toolkit::showModal(Window& w) {
    Window* const shown = &w;
    modal_.push_back(shown);
    frontEnd_->modalBegins(w);
    show(w);
    // Only pointers are compared here: the window may be gone already.
    auto gone = [this, shown] {
        return ended_ || std::find(stacking_.begin(), stacking_.end(), shown) == stacking_.end();
    };
    if (!gone()) {
        // The modal window must be on the screen before anything can end it.
        settleFocus();
        frontEnd_->settled();
        loop_.runModal(gone);
    }
    modal_.erase(std::remove(modal_.begin(), modal_.end(), shown), modal_.end());
    if (ended_) throw ProgramEnded{};
}

bool Toolkit::reachable(const Window& w) const {
    if (ended_ || !w.visible_) return false;
    return modal_.empty() || modal_.back() == &w;
}

bool Toolkit::inputReaches(const Control& c) const {
    return reachable(c.window()) && c.takesInput();
}

void Toolkit::dispatch(const std::function<void()>& handler) {
    if (!handler || ended_) return;
    // A copy, so that the handler survives its own window's unloading.
    const std::function<void()> run = handler;
    {
        DepthGuard guard(depth_);
        try {
            run();
        } catch (const ProgramEnded&) {
            // Everything has unwound to here; the program is over.
        }
    }
    if (depth_ == 0) {
        unloaded_.clear();
        runIdleTasks();
    }
    if (!ended_) settleFocus();
    frontEnd_->settled();
    loop_.afterEvent();
}

void Toolkit::whenIdle(std::function<void()> task) {
    idleTasks_.push_back(std::move(task));
    if (depth_ == 0) runIdleTasks();
}

void Toolkit::runIdleTasks() {
    // Each task is an event of its own; one that opens a modal window holds
    // the rest back until that window has gone.
    while (!ended_ && !idleTasks_.empty()) {
        const std::function<void()> task = std::move(idleTasks_.front());
        idleTasks_.erase(idleTasks_.begin());
        dispatch(task);
    }
}

void Toolkit::shift(Control& c) {
    // A mouse action on a window of the program activates it first.
    if (active_ != &c.window()) activate(&c.window());
}

bool Toolkit::click(Control& c) {
    if (!inputReaches(c)) return false;
    dispatch([this, &c] {
        shift(c);
        if (c.Click) c.Click();
    });
    return true;
}

bool Toolkit::mouseDown(Control& c) {
    if (!inputReaches(c)) return false;
    dispatch([this, &c] {
        shift(c);
        if (c.MouseDown) c.MouseDown();
    });
    return true;
}

bool Toolkit::mouseUp(Control& c) {
    if (!inputReaches(c)) return false;
    dispatch([&c] {
        if (c.MouseUp) c.MouseUp();
    });
    return true;
}

bool Toolkit::mouseMove(Control& c, int button) {
    if (!inputReaches(c)) return false;
    dispatch([&c, button] {
        if (c.MouseMove) c.MouseMove(button);
    });
    return true;
}

bool Toolkit::windowMouseMove(Window& w, int button) {
    if (!reachable(w)) return false;
    dispatch([&w, button] {
        if (w.Form_MouseMove) w.Form_MouseMove(button);
    });
    return true;
}

bool Toolkit::keyDown(Window& w, int keyCode, bool backwards) {
    if (!reachable(w)) return false;
    dispatch([this, &w, keyCode, backwards] {
        if (w.Form_KeyDown) w.Form_KeyDown(keyCode);
        // The window's own handler may have closed it.
        if (reachable(w)) play(w, keyCode, backwards);
    });
    return true;
}

bool Toolkit::takesKey(const Window& w, int keyCode) {
    return w.Form_KeyDown || (!w.focusOrder.empty() && isPlayKey(keyCode));
}

void Toolkit::play(Window& w, int keyCode, bool backwards) {
    if (w.focusOrder.empty() || !isPlayKey(keyCode)) return;
    keyboardUsed_ = true;
    Control* focus = w.focus_;
    if (keyCode == kKeyTab) {
        // A text box out of the tab order is reached by the mouse only.
        auto tabStop = [](const Control& c) {
            const auto* box = dynamic_cast<const TextBox*>(&c);
            return Window::canFocus(c) && (!box || box->TabStop);
        };
        if (Control* next = step(w.focusOrder, focus, backwards, true, tabStop)) w.focus_ = next;
        return;
    }
    if (!focus || !Window::canFocus(*focus)) return;
    if (keyCode == kKeyLeft || keyCode == kKeyRight) {
        for (const auto& row : w.arrowRows) {
            if (std::find(row.begin(), row.end(), focus) == row.end()) continue;
            if (Control* next = step(row, focus, keyCode == kKeyLeft, false, Window::canFocus)) {
                w.focus_ = next;
            }
            break;
        }
        return;
    }
    // Space and Return press a button; a text box keeps them as text.
    if (dynamic_cast<TextBox*>(focus)) return;
    shift(*focus);
    if (focus->Click) focus->Click();
}

void Toolkit::settleFocus() {
    for (const auto& entry : windows_) {
        Window& w = *entry.second;
        if (w.defaultsUsable_.size() != w.focusDefaults.size()) {
            w.defaultsUsable_.assign(w.focusDefaults.size(), false);
        }
        // Buttons that have just appeared are what the game now waits for.
        std::vector<Control*> appeared;
        for (std::size_t i = 0; i < w.focusDefaults.size(); ++i) {
            const bool usable = Window::canFocus(*w.focusDefaults[i]);
            if (usable && !w.defaultsUsable_[i]) appeared.push_back(w.focusDefaults[i]);
            w.defaultsUsable_[i] = usable;
        }
        if (!appeared.empty()) {
            w.awaited_ = appeared;
            w.focus_ = appeared.front();
        } else if (w.focus_ && !Window::canFocus(*w.focus_)) {
            // Taken or gone: on to another button that appeared with it,
            // never to one the player has passed by before.
            w.focus_ = firstUsable(w.awaited_);
        }
        // A window shown anew starts on its default, unless the program put
        // the focus somewhere itself.
        if (w.shownAnew_ && (!w.focus_ || !Window::canFocus(*w.focus_))) {
            w.focus_ = firstUsable(w.focusDefaults);
        }
        w.shownAnew_ = false;
    }
}

bool Toolkit::menu(MenuItem& item) {
    if (!reachable(item.window()) || !menuReachable(item) || item.Caption == "-") return false;
    dispatch([this, &item] {
        shift(item);
        if (item.Click) item.Click();
    });
    return true;
}

bool Toolkit::shortcut(std::string_view keys) {
    Window* w = active_;
    if (!w || !reachable(*w)) return false;
    if (MenuItem* item = findShortcut(w->menuBar, keys)) return menu(*item);
    bool alt = false;
    bool backwards = false;
    for (bool more = true; more;) {
        more = false;
        for (std::string_view prefix : {"Ctrl+", "Alt+", "Shift+"}) {
            if (keys.size() > prefix.size() && keys.substr(0, prefix.size()) == prefix) {
                alt = alt || prefix == "Alt+";
                backwards = backwards || prefix == "Shift+";
                keys.remove_prefix(prefix.size());
                more = true;
            }
        }
    }
    const int code = keyCodeOf(keys);
    if (alt && keys.size() == 1) {
        for (const auto& c : w->controls()) {
            auto* button = dynamic_cast<CommandButton*>(c.get());
            if (button && button->accessKey() == code && button->takesInput())
                return click(*button);
        }
    }
    // No shortcut or access key: the window hears the key itself.
    if (code == 0 || !takesKey(*w, code)) return false;
    return keyDown(*w, code, backwards);
}

bool Toolkit::close(Window& w) {
    if (!reachable(w)) return false;
    dispatch([this, &w] { unload(w); });
    return true;
}

bool Toolkit::type(TextBox& box, const std::string& text) {
    if (!inputReaches(box) || box.Locked) return false;
    dispatch([this, &box, text] {
        shift(box);
        box.Text = text;
        box.SelStart = characterCount(text);
        box.SelLength = 0;
    });
    return true;
}

bool Toolkit::userActivated(Window& w) {
    if (!reachable(w)) return false;
    if (active_ == &w) return true;
    dispatch([this, &w] {
        raise(w);
        activate(&w);
    });
    return true;
}

bool Toolkit::moved(Window& w, int left, int top) {
    if (ended_ || !w.visible_) return false;
    w.Left = left;
    w.Top = top;
    return true;
}

bool Toolkit::selected(TextBox& box, int start, int length) {
    if (!inputReaches(box)) return false;
    const int count = characterCount(box.Text);
    box.SelStart = std::clamp(start, 0, count);
    box.SelLength = std::clamp(length, 0, count - box.SelStart);
    return true;
}

bool Toolkit::focused(TextBox& box) {
    // A locked box is only read, and shows no caret to type at.
    if (!inputReaches(box) || box.Locked) return false;
    box.window().setActiveControl(&box);
    return true;
}

bool Toolkit::fireDueTimer(std::int64_t now) {
    Timer* timer = timers_.takeDue(now);
    if (!timer) return false;
    const std::uint64_t generation = TimerQueue::generationOf(*timer);
    dispatch([this, timer, generation, now] {
        if (timer->TimerEvent) timer->TimerEvent();
        if (!ended_) timers_.rearm(*timer, generation, now);
    });
    return true;
}

void Toolkit::end() {
    ended_ = true;
    frontEnd_->programEnded();
    throw ProgramEnded{};
}

}  // namespace zd::ui
