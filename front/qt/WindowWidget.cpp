#include "front/qt/WindowWidget.h"

#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QMouseEvent>
#include <QMoveEvent>
#include <QPointer>

#include "front/qt/Accessibility.h"
#include "front/qt/ArtCache.h"
#include "front/qt/ClientArea.h"
#include "front/qt/Guard.h"
#include "front/qt/MenuMirror.h"
#include "front/qt/Placement.h"
#include "front/qt/QtFrontEnd.h"
#include "front/qt/QtValues.h"
#include "front/qt/TextBoxMirror.h"
#include "ui/model/KeyCodes.h"
#include "ui/model/Toolkit.h"

namespace zd::qt {

namespace {

// The key codes the windows' handlers expect: upper-case letters whatever
// the shift state, digits, and a few named keys.
int keyCode(int key) {
    if (key >= Qt::Key_A && key <= Qt::Key_Z) return 'A' + (key - Qt::Key_A);
    if (key >= Qt::Key_0 && key <= Qt::Key_9) return '0' + (key - Qt::Key_0);
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return ui::kKeyF1 + (key - Qt::Key_F1);
    switch (key) {
        case Qt::Key_Escape:
            return ui::kKeyEscape;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return ui::kKeyReturn;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            return ui::kKeyTab;
        case Qt::Key_Space:
            return ui::kKeySpace;
        case Qt::Key_Left:
            return ui::kKeyLeft;
        case Qt::Key_Right:
            return ui::kKeyRight;
        default:
            return 0;
    }
}

// The buttons the windows hear of: left, right and middle.
constexpr Qt::MouseButtons kMouseButtons = Qt::LeftButton | Qt::RightButton | Qt::MiddleButton;

int buttonsOf(Qt::MouseButtons buttons) {
    int b = 0;
    if (buttons & Qt::LeftButton) b |= 1;
    if (buttons & Qt::RightButton) b |= 2;
    if (buttons & Qt::MiddleButton) b |= 4;
    return b;
}

}  // namespace

WindowWidget::WindowWidget(QtFrontEnd& frontEnd, ui::Window& window)
    : QWidget(nullptr), frontEnd_(frontEnd), window_(&window) {
    setObjectName(text(window.name()));
    applyFlags();
    if (!window.menuBar.empty()) menus_ = std::make_unique<MenuMirror>(*this);
    client_ = new ClientArea(*this);
    edits_ = std::make_unique<TextBoxMirror>(*this, client_);
    access_ = std::make_unique<WindowAccess>(*this);
}

WindowWidget::~WindowWidget() = default;

void WindowWidget::detach() {
    access_->detach();
    window_ = nullptr;
    pressed_ = nullptr;
    manualDrag_ = false;
}

QWidget* WindowWidget::clientArea() const {
    return client_;
}

QMenuBar* WindowWidget::menuBar() const {
    return menus_ ? menus_->bar() : nullptr;
}

QSize WindowWidget::clientSize() const {
    return client_->size();
}

PixelGrid WindowWidget::pixelGrid() const {
    const qreal dpr = devicePixelRatioF();
    return PixelGrid(client_->mapTo(this, QPointF(0, 0)) * dpr, dpr);
}

QPointF WindowWidget::clientPos(const QMouseEvent* e) const {
    // Qt hands a child widget the mouse rounded to whole logical pixels,
    // half a device pixel off at scale 2; the window has it exact.
    return e->scenePosition() - QPointF(client_->mapTo(this, QPoint(0, 0)));
}

QLineEdit* WindowWidget::lineEditFor(const ui::TextBox& box) const {
    return edits_->lineEditFor(box);
}

void WindowWidget::applyFlags() {
    Qt::WindowFlags flags = window_->inTaskbar ? Qt::Window : Qt::Tool;
    if (!window_->titleBar) {
        flags |= Qt::FramelessWindowHint;
    } else {
        // A fixed border: a title and perhaps a close box, nothing to
        // minimise, maximise or resize.
        flags |= Qt::WindowTitleHint | Qt::CustomizeWindowHint | Qt::MSWindowsFixedSizeDialogHint;
        if (window_->closeBox) flags |= Qt::WindowCloseButtonHint;
    }
    // Compared with what was asked, as Qt adds hints of its own.
    if (!appliedFlags_ || *appliedFlags_ != flags) {
        appliedFlags_ = flags;
        const bool wasVisible = isVisible();
        setWindowFlags(flags);
        if (wasVisible) show();
    }
}

void WindowWidget::syncTitleAndIcon() {
    if (!appliedCaption_ || window_->Caption != *appliedCaption_) {
        appliedCaption_ = window_->Caption;
        setWindowTitle(text(window_->Caption));
    }
    if (window_->icon.get() == appliedIcon_) return;
    appliedIcon_ = window_->icon.get();
    QIcon icon;
    if (window_->icon) {
        for (qreal dpr : {1.0, 2.0}) {
            const QPixmap pixmap = frontEnd_.art().pixmap(*window_->icon, dpr);
            if (!pixmap.isNull()) icon.addPixmap(pixmap);
        }
    }
    setWindowIcon(icon);
    if (!icon.isNull() && QGuiApplication::windowIcon().isNull()) {
        QGuiApplication::setWindowIcon(icon);
    }
}

void WindowWidget::syncGeometry() {
    const QSize client = clientSizeOf(*window_);
    QMenuBar* bar = menuBar();
    const int menuHeight = bar ? bar->sizeHint().height() : 0;
    const QSize total(client.width(), client.height() + menuHeight);
    if (total != appliedSize_) {
        appliedSize_ = total;
        setFixedSize(total);
        if (bar) bar->setGeometry(0, 0, client.width(), menuHeight);
        client_->setGeometry(0, menuHeight, client.width(), client.height());
    }
    if (!appliedPos_ || window_->Left != appliedLeft_ || window_->Top != appliedTop_) {
        appliedLeft_ = window_->Left;
        appliedTop_ = window_->Top;
        appliedPos_ = QPoint(toPixels(window_->Left), toPixels(window_->Top));
        QWidget::move(*appliedPos_);
    }
}

void WindowWidget::syncFromModel() {
    if (!window_) return;
    applyFlags();
    syncTitleAndIcon();
    syncGeometry();
    if (menus_) menus_->sync();
    edits_->sync(clientSize());
    // The focus is shown once the keyboard plays; a text box shows its caret.
    const QRegion changed =
        scene_.refresh(*window_, view::markedControl(*window_, frontEnd_.toolkit().keyboardUsed()));
    if (!changed.isEmpty()) client_->update(changed);
    if (client_->underMouse()) {
        updateCursor(controlAt(*window_, client_->mapFromGlobal(QPointF(QCursor::pos())),
                               clientSize(), pixelGrid()));
    }
    access_->sync();
}

void WindowWidget::updateCursor(ui::Control* over) {
    const bool hand = over && over->handCursor;
    if (hand == handShown_) return;
    handShown_ = hand;
    if (hand) {
        client_->setCursor(frontEnd_.handCursor(devicePixelRatioF()));
    } else {
        client_->unsetCursor();
    }
}

bool WindowWidget::event(QEvent* e) {
    switch (e->type()) {
        case QEvent::WindowActivate:
            if (window_) frontEnd_.activatedBySystem();
            break;
        case QEvent::ScreenChangeInternal:
            // Pictures and the hand cursor are made anew for the new screen.
            handShown_ = false;
            client_->unsetCursor();
            client_->update();
            break;
        default:
            break;
    }
    return QWidget::event(e);
}

void WindowWidget::closeEvent(QCloseEvent* e) {
    // The model decides whether and how the window goes.
    e->ignore();
    if (window_) guarded([this] { frontEnd_.toolkit().close(*window_); });
}

void WindowWidget::moveEvent(QMoveEvent* e) {
    QWidget::moveEvent(e);
    if (!window_ || !isVisible()) return;
    const QPoint at = pos();
    if (appliedPos_ && at == *appliedPos_) return;
    // Moved by the user or the window manager: the model learns where to.
    frontEnd_.toolkit().moved(*window_, at.x() * ui::kTwipsPerPixel, at.y() * ui::kTwipsPerPixel);
    appliedLeft_ = window_->Left;
    appliedTop_ = window_->Top;
    appliedPos_ = at;
}

bool WindowWidget::focusNextPrevChild(bool) {
    // Tab goes to the model, which knows the way round the buttons.
    return false;
}

void WindowWidget::keyPressEvent(QKeyEvent* e) {
    bool handled = false;
    guarded([&] { handled = handleKey(e); });
    if (!handled) QWidget::keyPressEvent(e);
}

bool WindowWidget::handleKey(QKeyEvent* e) {
    if (!window_) return false;
    ui::Toolkit& tk = frontEnd_.toolkit();
    const int code = keyCode(e->key());
    if (e->modifiers() & Qt::AltModifier) {
        // Alt with a letter or digit: an access key, or else the window's
        // own key; anything else with Alt is the desktop's.
        const bool letterOrDigit = (code >= 'A' && code <= 'Z') || (code >= '0' && code <= '9');
        if (!letterOrDigit) return false;
        tk.shortcut(std::string("Alt+") + static_cast<char>(code));
        return true;
    }
    if (code == 0 || !ui::Toolkit::takesKey(*window_, code)) return false;
    const bool backwards = e->key() == Qt::Key_Backtab || (e->modifiers() & Qt::ShiftModifier);
    tk.keyDown(*window_, code, backwards);
    return true;
}

void WindowWidget::beginManualDrag() {
    if (!window_) return;
    manualDrag_ = true;
    dragOffset_ = QCursor::pos() - pos();
}

void WindowWidget::onPress(QMouseEvent* e) {
    if (!window_ || !(e->button() & kMouseButtons)) return;
    // A click on the client area takes the keys from a selected menu bar.
    if (menus_) menus_->releaseKeyboard();
    if (e->button() == Qt::LeftButton) {
        dragged_ = false;
        manualDrag_ = false;
    }
    // The first button down captures the mouse for what it went down on;
    // MouseDown comes for every button, the click only for the left one.
    if (!(e->buttons() & kMouseButtons & ~e->button())) {
        pressed_ = controlAt(*window_, clientPos(e), clientSize(), pixelGrid());
        pressedWindow_ = pressed_ == nullptr;
    }
    if (ui::Control* c = pressed_) guarded([this, c] { frontEnd_.toolkit().mouseDown(*c); });
}

void WindowWidget::onRelease(QMouseEvent* e) {
    if (!(e->button() & kMouseButtons)) return;
    ui::Control* c = pressed_;
    if (!(e->buttons() & kMouseButtons)) {
        pressed_ = nullptr;
        pressedWindow_ = false;
    }
    const bool left = e->button() == Qt::LeftButton;
    if (left && (dragged_ || manualDrag_)) {
        // A drag of the window ends in no click.
        dragged_ = false;
        manualDrag_ = false;
        return;
    }
    if (!c || !window_) return;
    const QPointF at = clientPos(e);
    QPointer<WindowWidget> self(this);
    guarded([&] {
        ui::Toolkit& tk = frontEnd_.toolkit();
        tk.mouseUp(*c);
        if (!left || !self || !window_) return;
        if (controlAt(*window_, at, clientSize(), pixelGrid()) == c) tk.click(*c);
    });
}

void WindowWidget::onMouseMove(QMouseEvent* e) {
    if (!window_) return;
    const bool left = e->buttons() & Qt::LeftButton;
    if (manualDrag_) {
        if (left) {
            const QPoint to = e->globalPosition().toPoint() - dragOffset_;
            QWidget::move(to);
            appliedPos_ = to;
            frontEnd_.toolkit().moved(*window_, to.x() * ui::kTwipsPerPixel,
                                      to.y() * ui::kTwipsPerPixel);
            appliedLeft_ = window_->Left;
            appliedTop_ = window_->Top;
            return;
        }
        manualDrag_ = false;
    }
    ui::Control* over = controlAt(*window_, clientPos(e), clientSize(), pixelGrid());
    updateCursor(over);
    if (dragged_ && left) return;
    // While a button is down, moves go to what it went down on.
    ui::Control* target = over;
    if ((e->buttons() & kMouseButtons) && (pressed_ || pressedWindow_)) target = pressed_;
    const int buttons = buttonsOf(e->buttons());
    guarded([&] {
        ui::Toolkit& tk = frontEnd_.toolkit();
        if (target) {
            tk.mouseMove(*target, buttons);
        } else {
            tk.windowMouseMove(*window_, buttons);
        }
    });
}

}  // namespace zd::qt
