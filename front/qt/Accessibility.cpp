#include "front/qt/Accessibility.h"

#include <QAccessibleWidget>
#include <QLineEdit>
#include <QPointer>
#include <QWindow>
#include <utility>

#include "front/qt/ClientArea.h"
#include "front/qt/Guard.h"
#include "front/qt/Placement.h"
#include "front/qt/QtFrontEnd.h"
#include "front/qt/QtValues.h"
#include "front/qt/WindowWidget.h"

namespace zd::qt {

namespace {

QAccessibleInterface* clientInterface(WindowWidget& widget) {
    return QAccessible::queryAccessibleInterface(widget.clientArea());
}

// One element of a window's reading. It holds only its key and asks the
// window's reading each time, so it always says what the model shows now.
class ElementInterface : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    ElementInterface(WindowAccess& access, std::string key)
        : access_(access), key_(std::move(key)) {}

    bool isValid() const override { return element() != nullptr; }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return access_.widget().windowHandle(); }
    QAccessibleInterface* parent() const override { return clientInterface(access_.widget()); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    void setText(QAccessible::Text, const QString&) override {}

    QString text(QAccessible::Text t) const override {
        const ui::Element* e = element();
        if (!e) return {};
        switch (t) {
            case QAccessible::Name:
                return qt::text(e->name);
            case QAccessible::Description:
                return qt::text(e->description);
            default:
                return {};
        }
    }

    QRect rect() const override {
        const ui::Element* e = element();
        if (!e || !e->control) return {};
        QWidget* client = access_.widget().clientArea();
        const Placement place = placementOf(*e->control, client->size());
        const QRect seen = place.rect & place.clip;
        return QRect(client->mapToGlobal(seen.topLeft()), seen.size());
    }

    QAccessible::Role role() const override {
        const ui::Element* e = element();
        switch (e ? e->role : ui::Role::Text) {
            case ui::Role::Button:
                return QAccessible::Button;
            case ui::Role::Graphic:
                return QAccessible::Graphic;
            default:
                return QAccessible::StaticText;
        }
    }

    QAccessible::State state() const override {
        QAccessible::State s;
        const ui::Element* e = element();
        if (!e) {
            s.invisible = true;
            return s;
        }
        s.invisible = !e->shown;
        s.offscreen = !e->shown;
        s.focusable = e->pressable;
        s.focused = e->focused;
        s.pressed = e->pressed;
        s.disabled = e->control && e->pressable && !e->control->Enabled;
        return s;
    }

    void* interface_cast(QAccessible::InterfaceType t) override {
        const ui::Element* e = element();
        if (t == QAccessible::ActionInterface && e && e->pressable) {
            return static_cast<QAccessibleActionInterface*>(this);
        }
        return nullptr;
    }

    // The texts of a message window label it, which keeps a screen reader
    // from reading them once as labels and again as its description.
    QList<QPair<QAccessibleInterface*, QAccessible::Relation>> relations(
        QAccessible::Relation match) const override {
        const ui::Element* e = element();
        if (!(match & QAccessible::Labelled) || !e || e->role != ui::Role::Text ||
            !access_.reading().message) {
            return {};
        }
        return {{QAccessible::queryAccessibleInterface(&access_.widget()), QAccessible::Labelled}};
    }

    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& name) override {
        if (name == pressAction()) access_.press(key_);
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    const ui::Element* element() const { return access_.element(key_); }

    WindowAccess& access_;
    std::string key_;
};

// Something the player is told as it happens: an object of the notification
// role that appears, which is what screen readers speak unasked.
class AnnouncementInterface : public QAccessibleInterface {
public:
    AnnouncementInterface(QWidget& client, QString text)
        : client_(&client), text_(std::move(text)) {}

    bool isValid() const override { return !client_.isNull(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override {
        return client_ ? client_->window()->windowHandle() : nullptr;
    }
    QAccessibleInterface* parent() const override {
        return client_ ? QAccessible::queryAccessibleInterface(client_.data()) : nullptr;
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    void setText(QAccessible::Text, const QString&) override {}
    QString text(QAccessible::Text t) const override {
        return t == QAccessible::Name ? text_ : QString();
    }
    QRect rect() const override {
        return client_ ? QRect(client_->mapToGlobal(QPoint(0, 0)), client_->size()) : QRect();
    }
    QAccessible::Role role() const override { return QAccessible::Notification; }
    QAccessible::State state() const override { return {}; }

private:
    QPointer<QWidget> client_;
    QString text_;
};

WindowAccess* accessOf(QWidget* w) {
    auto* owner = dynamic_cast<WindowWidget*>(w);
    return owner && owner->modelWindow() ? &owner->access() : nullptr;
}

// A window: named as its reading says; a message window is an alert, whose
// text screen readers read when it comes up.
class WindowInterface : public QAccessibleWidget {
public:
    explicit WindowInterface(WindowWidget* w) : QAccessibleWidget(w, QAccessible::Window) {}

    QAccessible::Role role() const override {
        WindowAccess* a = accessOf(widget());
        return a && a->reading().message ? QAccessible::AlertMessage : QAccessible::Window;
    }
    QString text(QAccessible::Text t) const override {
        if (WindowAccess* a = accessOf(widget())) {
            if (t == QAccessible::Name) return qt::text(a->reading().name);
            if (t == QAccessible::Description) return qt::text(a->reading().description);
        }
        return QAccessibleWidget::text(t);
    }
};

// The client area: its children are the window's elements.
class ClientInterface : public QAccessibleWidget {
public:
    explicit ClientInterface(ClientArea* c) : QAccessibleWidget(c, QAccessible::Client) {}

    int childCount() const override {
        WindowAccess* a = access();
        return a ? a->childCount() : 0;
    }
    QAccessibleInterface* child(int index) const override {
        WindowAccess* a = access();
        return a ? a->child(index) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        for (int i = 0, n = childCount(); i < n; ++i) {
            if (this->child(i) == child) return i;
        }
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        for (int i = childCount() - 1; i >= 0; --i) {
            QAccessibleInterface* c = child(i);
            if (c && !c->state().invisible && c->rect().contains(x, y)) return c;
        }
        return nullptr;
    }
    QAccessibleInterface* focusChild() const override {
        for (int i = 0, n = childCount(); i < n; ++i) {
            QAccessibleInterface* c = child(i);
            if (c && c->state().focused) return c;
        }
        return nullptr;
    }

private:
    WindowAccess* access() const {
        auto* client = static_cast<ClientArea*>(widget());
        return accessOf(&client->owner());
    }
};

QAccessibleInterface* factory(const QString&, QObject* object) {
    if (auto* window = dynamic_cast<WindowWidget*>(object)) return new WindowInterface(window);
    if (auto* client = dynamic_cast<ClientArea*>(object)) return new ClientInterface(client);
    return nullptr;
}

// The news of one event told as one announcement, so that a screen reader
// says it as one sentence, in the order it happened, and names the
// notification once.
QString joined(const std::vector<std::string>& news) {
    QString out;
    for (const std::string& item : news) {
        if (!out.isEmpty()) {
            const QChar last = out.back();
            out += last == u'.' || last == u'!' || last == u'?' ? u" " : u". ";
        }
        out += text(item);
    }
    return out;
}

constexpr std::size_t kAnnouncementsKept = 8;

}  // namespace

void installAccessibility() {
    static const bool installed = [] {
        QAccessible::installFactory(factory);
        return true;
    }();
    Q_UNUSED(installed);
}

WindowAccess::WindowAccess(WindowWidget& widget) : widget_(widget) {}

WindowAccess::~WindowAccess() {
    detach();
}

void WindowAccess::detach() {
    attached_ = false;
    for (const auto& [key, id] : elements_) QAccessible::deleteAccessibleInterface(id);
    elements_.clear();
    for (QAccessible::Id id : announcements_) QAccessible::deleteAccessibleInterface(id);
    announcements_.clear();
    reading_ = {};
}

int WindowAccess::childCount() const {
    if (!attached_) return 0;
    return static_cast<int>(reading_.elements.size()) + (announcements_.empty() ? 0 : 1);
}

QAccessibleInterface* WindowAccess::child(int index) {
    const int elements = static_cast<int>(reading_.elements.size());
    if (!attached_ || index < 0) return nullptr;
    if (index < elements) return interfaceFor(reading_.elements[static_cast<std::size_t>(index)]);
    if (index == elements && !announcements_.empty()) {
        return QAccessible::accessibleInterface(announcements_.back());
    }
    return nullptr;
}

QAccessibleInterface* WindowAccess::interfaceFor(const ui::Element& e) {
    // A text box is Qt's own line edit, named from the reading.
    if (e.role == ui::Role::EditableText && e.control) {
        QLineEdit* edit = widget_.lineEditFor(static_cast<const ui::TextBox&>(*e.control));
        return edit ? QAccessible::queryAccessibleInterface(edit) : nullptr;
    }
    auto it = elements_.find(e.key);
    if (it == elements_.end()) {
        auto* iface = new ElementInterface(*this, e.key);
        it = elements_.emplace(e.key, QAccessible::registerAccessibleInterface(iface)).first;
    }
    return QAccessible::accessibleInterface(it->second);
}

void WindowAccess::press(const std::string& key) {
    QPointer<WindowWidget> widget(&widget_);
    QMetaObject::invokeMethod(
        &widget_,
        [widget, key] {
            if (!widget || !widget->modelWindow()) return;
            const ui::Element* e = widget->access().element(key);
            if (!e || !e->control || !e->pressable) return;
            ui::Control& c = *e->control;
            guarded([&] { widget->frontEnd().toolkit().click(c); });
        },
        Qt::QueuedConnection);
}

void WindowAccess::sync() {
    const ui::Window* window = widget_.modelWindow();
    if (!attached_ || !window) return;
    ui::Reading before = std::exchange(reading_, ui::read(*window));
    const bool first = !read_;
    read_ = true;
    for (const ui::Element& e : reading_.elements) {
        if (e.role != ui::Role::EditableText || !e.control) continue;
        if (QLineEdit* edit = widget_.lineEditFor(static_cast<const ui::TextBox&>(*e.control))) {
            if (edit->accessibleName() != text(e.name)) edit->setAccessibleName(text(e.name));
            if (edit->accessibleDescription() != text(e.description)) {
                edit->setAccessibleDescription(text(e.description));
            }
        }
    }
    if (!first) tellChanges(before);
    std::vector<std::string> items = ui::news(first ? nullptr : &before, reading_);
    // A message window is an alert, which screen readers read with its text
    // as it becomes active; told once more, it would be cut off by that.
    if (first && reading_.message && !items.empty()) items.erase(items.begin());
    // What happened is told before where the focus went, the order a
    // screen reader speaks them in.
    const QString news = joined(items);
    if (!news.isEmpty()) announce(news);
    tellFocus();
}

void WindowAccess::tellChanges(const ui::Reading& before) {
    if (before.name != reading_.name || before.description != reading_.description) {
        if (QAccessibleInterface* w = QAccessible::queryAccessibleInterface(&widget_)) {
            if (before.name != reading_.name) {
                QAccessibleEvent e(w, QAccessible::NameChanged);
                QAccessible::updateAccessibility(&e);
            }
            if (before.description != reading_.description) {
                QAccessibleEvent e(w, QAccessible::DescriptionChanged);
                QAccessible::updateAccessibility(&e);
            }
        }
    }
    for (const ui::Element& now : reading_.elements) {
        const ui::Element* was = before.find(now.key);
        auto it = elements_.find(now.key);
        // Nobody has asked for it yet, so nobody needs to hear it changed.
        if (!was || it == elements_.end()) continue;
        QAccessibleInterface* iface = QAccessible::accessibleInterface(it->second);
        if (was->name != now.name) {
            QAccessibleEvent e(iface, QAccessible::NameChanged);
            QAccessible::updateAccessibility(&e);
        }
        if (was->description != now.description) {
            QAccessibleEvent e(iface, QAccessible::DescriptionChanged);
            QAccessible::updateAccessibility(&e);
        }
        if (was->shown != now.shown) {
            QAccessibleEvent e(iface,
                               now.shown ? QAccessible::ObjectShow : QAccessible::ObjectHide);
            QAccessible::updateAccessibility(&e);
        }
        QAccessible::State changed;
        changed.invisible = was->shown != now.shown;
        changed.pressed = was->pressed != now.pressed;
        changed.focused = was->focused != now.focused;
        if (changed.invisible || changed.pressed || changed.focused) {
            QAccessibleStateChangeEvent e(iface, changed);
            QAccessible::updateAccessibility(&e);
        }
    }
}

void WindowAccess::tellFocus() {
    std::string focused;
    for (const ui::Element& e : reading_.elements) {
        if (e.focused) focused = e.key;
    }
    // A control of ours took the focus: the screen reader follows it, and
    // hears it again when the window is active again, after a message, say.
    // Text boxes are line edits, which tell of their focus themselves.
    const bool active = widget_.isActiveWindow();
    const bool regained = active && !wasActive_;
    wasActive_ = active;
    if (focused == focusKey_ && !regained) return;
    const ui::Element* e = reading_.find(focused);
    if (e && e->role != ui::Role::EditableText) {
        // In a window that is not active it is told once the window is.
        if (!active) return;
        QAccessibleEvent ev(interfaceFor(*e), QAccessible::Focus);
        QAccessible::updateAccessibility(&ev);
    }
    focusKey_ = focused;
}

void WindowAccess::announce(const QString& text) {
    lastText_ = text;
    auto* iface = new AnnouncementInterface(*widget_.clientArea(), text);
    announcements_.push_back(QAccessible::registerAccessibleInterface(iface));
    if (announcements_.size() > kAnnouncementsKept) {
        QAccessible::deleteAccessibleInterface(announcements_.front());
        announcements_.pop_front();
    }
    QAccessibleEvent created(iface, QAccessible::ObjectCreated);
    QAccessible::updateAccessibility(&created);
    QAccessibleEvent shown(iface, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shown);
}

}  // namespace zd::qt
