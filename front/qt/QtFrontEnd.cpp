#include "front/qt/QtFrontEnd.h"

#include <QAbstractNativeEventFilter>
#include <QApplication>
#include <QByteArray>
#include <QGuiApplication>
#include <QWindow>
#include <algorithm>

#include "front/qt/Accessibility.h"
#include "front/qt/Guard.h"
#include "front/qt/WindowWidget.h"
#include "ui/view/Scene.h"

namespace zd::qt {

namespace {

// How long an activation by the window system of another window than the
// one just asked for is taken as a late report of an earlier state.
constexpr qint64 kActivationSettleMs = 500;

// On X11 a window that a modal window blocks can still be raised by the
// window manager when clicked, and Qt reports nothing of it: it hands the
// focus on to the modal window at once. The focus event that starts this is
// the only trace, and it is enough to put the model's order back.
class FocusWatch : public QAbstractNativeEventFilter {
public:
    explicit FocusWatch(QtFrontEnd& frontEnd) : frontEnd_(frontEnd) {}

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) override {
        constexpr unsigned char kFocusIn = 9;  // the X protocol's FocusIn
        if (eventType == "xcb_generic_event_t" && message &&
            (*static_cast<const unsigned char*>(message) & 0x7f) == kFocusIn) {
            frontEnd_.activatedBySystem();
        }
        return false;
    }

private:
    QtFrontEnd& frontEnd_;
};

}  // namespace

QtFrontEnd::QtFrontEnd(ui::Toolkit& toolkit, QString artDiskCache)
    : tk_(toolkit), art_(toolkit.App.Path, std::move(artDiskCache)) {
    tk_.setFrontEnd(this);
    installAccessibility();
    focusWatch_ = std::make_unique<FocusWatch>(*this);
    QCoreApplication::instance()->installNativeEventFilter(focusWatch_.get());
}

QtFrontEnd::~QtFrontEnd() {
    if (QCoreApplication::instance()) {
        QCoreApplication::instance()->removeNativeEventFilter(focusWatch_.get());
    }
    tk_.setFrontEnd(nullptr);
    for (auto& [window, widget] : widgets_) {
        if (widget) {
            widget->detach();
            delete widget.data();
        }
    }
}

WindowWidget* QtFrontEnd::widgetFor(const ui::Window& w) const {
    auto it = widgets_.find(&w);
    return it == widgets_.end() ? nullptr : it->second.data();
}

void QtFrontEnd::sync() {
    resync_.run([this] { syncOnce(); });
}

void QtFrontEnd::dropWidget(const ui::Window* w) {
    auto it = widgets_.find(w);
    if (it == widgets_.end()) return;
    QPointer<WindowWidget> widget = it->second;
    widgets_.erase(it);
    modal_.erase(w);
    if (appliedActive_ == w) appliedActive_ = nullptr;
    if (requestedActive_ == w) requestedActive_ = nullptr;
    appliedStacking_.erase(std::remove(appliedStacking_.begin(), appliedStacking_.end(), w),
                           appliedStacking_.end());
    if (widget) {
        widget->detach();
        widget->hide();
        // Its own event handler may be below us on the stack.
        widget->deleteLater();
    }
}

void QtFrontEnd::syncOnce() {
    if (tk_.ended()) return;
    const std::vector<ui::Window*> stacking = tk_.stacking();

    std::vector<const ui::Window*> hidden;
    for (const auto& [window, widget] : widgets_) {
        if (std::find(stacking.begin(), stacking.end(), window) == stacking.end() || !widget) {
            hidden.push_back(window);
        }
    }
    for (const ui::Window* w : hidden) dropWidget(w);

    bool created = false;
    for (ui::Window* w : stacking) {
        QPointer<WindowWidget>& slot = widgets_[w];
        if (!slot) {
            auto* widget = new WindowWidget(*this, *w);
            slot = widget;
            if (modal_.count(w)) widget->setWindowModality(Qt::ApplicationModal);
            widget->syncFromModel();
            widget->show();
            created = true;
        } else {
            slot->syncFromModel();
        }
    }

    bool restored = false;
    for (const ui::Window* w : toFront_) {
        WindowWidget* widget = widgetFor(*w);
        if (widget && widget->isMinimized()) {
            widget->showNormal();
            restored = true;
        }
    }
    toFront_.clear();

    if (created || restored || stacking != appliedStacking_) {
        for (ui::Window* w : stacking) {
            if (WindowWidget* widget = widgetFor(*w)) widget->raise();
        }
        appliedStacking_ = stacking;
    }

    ui::Window* active = tk_.activeWindow();
    if (active != appliedActive_ || created || restored) {
        appliedActive_ = active;
        if (WindowWidget* widget = active ? widgetFor(*active) : nullptr) {
            widget->raise();
            widget->activateWindow();
            requestedActive_ = active;
            requestedAt_.start();
        }
    }
}

void QtFrontEnd::broughtToFront(ui::Window& w) {
    toFront_.insert(&w);
}

void QtFrontEnd::modalBegins(ui::Window& w) {
    modal_.insert(&w);
    // Modality only takes effect when a window is shown.
    if (WindowWidget* widget = widgetFor(w); widget && !widget->isModal()) {
        widget->hide();
        widget->setWindowModality(Qt::ApplicationModal);
        widget->show();
    }
}

void QtFrontEnd::windowGone(ui::Window& w) {
    toFront_.erase(&w);
    dropWidget(&w);
}

void QtFrontEnd::dragWindow(ui::Window& w) {
    WindowWidget* widget = widgetFor(w);
    if (!widget || !(QGuiApplication::mouseButtons() & Qt::LeftButton)) return;
    widget->dragStarted();
    if (QWindow* handle = widget->windowHandle(); handle && handle->startSystemMove()) return;
    // No window manager to do it: follow the mouse ourselves.
    widget->beginManualDrag();
}

void QtFrontEnd::programEnded() {
    std::vector<const ui::Window*> all;
    for (const auto& entry : widgets_) all.push_back(entry.first);
    for (const ui::Window* w : all) dropWidget(w);
}

void QtFrontEnd::activatedBySystem() {
    if (activationCheckQueued_) return;
    activationCheckQueued_ = true;
    // Looked at once the window system has finished its round of changes.
    QMetaObject::invokeMethod(
        &context_, [this] { guarded([this] { checkActivation(); }); }, Qt::QueuedConnection);
}

void QtFrontEnd::checkActivation() {
    activationCheckQueued_ = false;
    if (tk_.ended()) return;
    auto* widget = dynamic_cast<WindowWidget*>(QApplication::activeWindow());
    if (!widget || !widget->modelWindow()) return;
    ui::Window& w = *widget->modelWindow();
    if (&w != tk_.activeWindow()) {
        if (requestedActive_ && requestedActive_ != &w && requestedAt_.isValid() &&
            requestedAt_.elapsed() < kActivationSettleMs) {
            return;
        }
        // Refused while a modal window is up; then the sync below puts the
        // model's active window back in front.
        tk_.userActivated(w);
    } else {
        requestedActive_ = nullptr;
    }
    // The window system may have raised a window by itself, even one that
    // a modal window blocks: the model's order is put back.
    appliedStacking_.clear();
    appliedActive_ = &w == tk_.activeWindow() ? &w : nullptr;
    sync();
}

const QCursor& QtFrontEnd::handCursor(qreal dpr) {
    auto it = handCursors_.find(dpr);
    if (it != handCursors_.end()) return it->second;
    const QPixmap pixmap =
        art_.pixmap(view::kHandCursor.sheet, view::kHandCursor.element, QSize(32, 32), dpr);
    // The hot spot counts the picture's own pixels, dpr times as many as
    // the 32 by 32 it is drawn on: it must stay on the fingertip.
    const QPoint tip = QPoint(view::kHandCursor.hotSpot.x, view::kHandCursor.hotSpot.y) * dpr;
    QCursor cursor =
        pixmap.isNull() ? QCursor(Qt::PointingHandCursor) : QCursor(pixmap, tip.x(), tip.y());
    return handCursors_.emplace(dpr, cursor).first->second;
}

}  // namespace zd::qt
