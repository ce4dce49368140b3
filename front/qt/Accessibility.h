#pragma once

#include <QAccessible>
#include <QString>
#include <deque>
#include <map>
#include <optional>
#include <string>

#include "ui/forms/Reading.h"

namespace zd::qt {

class WindowWidget;

// Lets Qt's accessibility see the controls the windows paint: installed
// once, before the first window is shown.
void installAccessibility();

// What a screen reader finds in one window: every element of the window's
// reading as an accessible child of its client area, and what changed told
// to the screen reader after every event.
class WindowAccess {
public:
    explicit WindowAccess(WindowWidget& widget);
    ~WindowAccess();
    WindowAccess(const WindowAccess&) = delete;
    WindowAccess& operator=(const WindowAccess&) = delete;

    // Reads the model again and tells what changed; after every event.
    void sync();
    // The model window is gone: every element goes with it.
    void detach();

    const ui::Reading& reading() const { return reading_; }
    const ui::Element* element(const std::string& key) const { return reading_.find(key); }
    WindowWidget& widget() const { return widget_; }

    // Children of the client area: the elements in reading order, and the
    // last announcement after them.
    int childCount() const;
    QAccessibleInterface* child(int index);
    // A press of the element as a click, once the screen reader's call has
    // returned: a click may open a modal window, whose loop must not run
    // inside that call.
    void press(const std::string& key);
    const QString& lastAnnouncement() const { return lastText_; }

private:
    QAccessibleInterface* interfaceFor(const ui::Element& e);
    void tellChanges(const ui::Reading& before);
    void tellFocus();
    void announce(const QString& text);

    WindowWidget& widget_;
    bool attached_ = true;
    bool read_ = false;
    ui::Reading reading_;
    std::map<std::string, QAccessible::Id> elements_;
    // Each announcement is an object of its own, kept a while: the screen
    // reader asks for its name after the event, when a newer one may stand.
    std::deque<QAccessible::Id> announcements_;
    QString lastText_;
    std::string focusKey_;
    bool wasActive_ = false;
};

}  // namespace zd::qt
