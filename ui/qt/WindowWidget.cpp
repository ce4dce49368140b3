#include "ui/qt/WindowWidget.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QFont>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QMoveEvent>
#include <QPaintEngine>
#include <QPainter>
#include <QPointer>
#include <QToolTip>

#include "ui/model/Toolkit.h"
#include "ui/qt/ArtCache.h"
#include "ui/qt/Guard.h"
#include "ui/qt/QtFrontEnd.h"

namespace zd::qt {

namespace {

// A picture box with a border keeps its children inside a sunken edge of
// this width.
constexpr int kBoxBorder = 2;

QString text(const std::string& utf8) { return QString::fromStdString(utf8); }

QColor color(const ui::Color& c) { return QColor(c.r, c.g, c.b); }

QFont fontOf(const ui::Font& f) {
    // The fonts of the design are Windows fonts; Liberation Sans has the
    // same metrics as Arial and stands in for both.
    QString family = text(f.family);
    if (f.family.empty() || f.family == "Arial" || f.family == "MS Sans Serif") {
        family = QStringLiteral("Liberation Sans");
    }
    QFont font;
    font.setFamilies({family, QStringLiteral("Liberation Sans")});
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(f.points * 96.0 / 72.0))));
    font.setBold(f.bold);
    return font;
}

Qt::Alignment horizontal(ui::Align a) {
    switch (a) {
        case ui::Align::Center:
            return Qt::AlignHCenter;
        case ui::Align::Right:
            return Qt::AlignRight;
        case ui::Align::Left:
            break;
    }
    return Qt::AlignLeft;
}

QString captionText(const std::string& caption) {
    QString t = text(caption);
    t.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    t.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return t;
}

// Controls the mouse passes through to what lies beneath: shapes and lines
// are only drawn, timers and menus not even that. A frame drawn round a die
// must not swallow the clicks meant for the die.
bool takesMouse(const ui::Control& c) {
    return !dynamic_cast<const ui::Timer*>(&c) && !dynamic_cast<const ui::MenuItem*>(&c) &&
           !dynamic_cast<const ui::Line*>(&c) && !dynamic_cast<const ui::Shape*>(&c);
}

QSize clientSizeOf(const ui::Window& w) {
    return QSize(toPixels(w.clientWidth()), toPixels(w.clientHeight()));
}

QRect innerOf(const ui::Control& c, const QRect& r) {
    const auto* box = dynamic_cast<const ui::PictureBox*>(&c);
    if (box && box->border) return r.adjusted(kBoxBorder, kBoxBorder, -kBoxBorder, -kBoxBorder);
    return r;
}

// The origin of a control's coordinates and the clip of its containers.
void containerFrame(const ui::Control* container, QSize clientSize, QPoint& origin, QRect& clip) {
    if (!container) {
        origin = QPoint(0, 0);
        clip = QRect(QPoint(0, 0), clientSize);
        return;
    }
    containerFrame(container->container, clientSize, origin, clip);
    const QRect outer(origin + QPoint(toPixels(container->Left), toPixels(container->Top)),
                      QSize(toPixels(container->Width), toPixels(container->Height)));
    const QRect inner = innerOf(*container, outer);
    clip &= inner;
    origin = inner.topLeft();
}

void drawPicture(QPainter& painter, ArtCache& art, const ui::Picture& picture, QPoint at,
                 qreal dpr) {
    if (!picture) return;
    const QPixmap pixmap = art.pixmap(*picture, dpr);
    if (!pixmap.isNull()) painter.drawPixmap(at, pixmap);
}

void sunkenBorder(QPainter& painter, const QRect& r) {
    // Two lines each way: dark outside top and left, light at the bottom
    // and right, as a box set into the window.
    const auto edge = [&painter](const QRect& box, const QColor& topLeft,
                                 const QColor& bottomRight) {
        painter.setPen(topLeft);
        painter.drawLine(box.topLeft(), box.topRight());
        painter.drawLine(box.topLeft(), box.bottomLeft());
        painter.setPen(bottomRight);
        painter.drawLine(box.bottomLeft(), box.bottomRight());
        painter.drawLine(box.topRight(), box.bottomRight());
    };
    edge(r, QColor(128, 128, 128), QColor(255, 255, 255));
    edge(r.adjusted(1, 1, -1, -1), QColor(64, 64, 64), QColor(212, 208, 200));
}

void paintControl(QPainter& painter, const ui::Control& c, const Placement& place, ArtCache& art,
                  qreal dpr) {
    const QRect visible = place.rect & place.clip;
    if (const auto* line = dynamic_cast<const ui::Line*>(&c)) {
        if (place.clip.isEmpty()) return;
        painter.save();
        painter.setClipRect(place.clip);
        QPen pen(color(line->BorderColor));
        pen.setWidth(std::max(1, line->BorderWidth));
        painter.setPen(pen);
        const QPoint origin = place.rect.topLeft() - QPoint(toPixels(c.Left), toPixels(c.Top));
        painter.drawLine(origin + QPoint(toPixels(line->X1), toPixels(line->Y1)),
                         origin + QPoint(toPixels(line->X2), toPixels(line->Y2)));
        painter.restore();
        return;
    }
    if (visible.isEmpty()) return;
    painter.save();
    painter.setClipRect(visible);
    if (const auto* label = dynamic_cast<const ui::Label*>(&c)) {
        if (!label->transparent) painter.fillRect(place.rect, color(label->BackColor));
        painter.setPen(color(label->ForeColor));
        painter.setFont(fontOf(label->font));
        painter.drawText(place.rect, Qt::AlignTop | Qt::TextWordWrap | horizontal(label->Alignment),
                         captionText(label->Caption));
    } else if (const auto* image = dynamic_cast<const ui::Image*>(&c)) {
        if (image->picture && !image->Stretch) {
            const QPixmap pixmap = art.pixmap(*image->picture, dpr);
            if (!pixmap.isNull()) painter.drawPixmap(place.rect.topLeft(), pixmap);
        } else if (image->picture) {
            const ui::PictureData& picture = *image->picture;
            const QSize own(picture.widthPx, picture.heightPx);
            if (place.rect.width() <= own.width() && place.rect.height() <= own.height()) {
                // Shrunk: rendered at the size it is shown, to stay sharp.
                const QPixmap pixmap = art.pixmap(picture, place.rect.size(), dpr);
                if (!pixmap.isNull()) painter.drawPixmap(place.rect.topLeft(), pixmap);
            } else {
                // Stretched across a screen: the soft backdrop loses nothing
                // by being scaled up, and a screen-sized rendering would
                // cost the start several megabytes and milliseconds.
                const QPixmap pixmap = art.pixmap(picture, dpr);
                painter.setRenderHint(QPainter::SmoothPixmapTransform);
                if (!pixmap.isNull()) painter.drawPixmap(place.rect, pixmap);
            }
        }
    } else if (const auto* box = dynamic_cast<const ui::PictureBox*>(&c)) {
        painter.fillRect(place.rect, color(box->BackColor));
        const QRect inner = innerOf(*box, place.rect);
        painter.save();
        painter.setClipRect(inner & visible);
        drawPicture(painter, art, box->picture, inner.topLeft(), dpr);
        painter.restore();
        if (box->border) sunkenBorder(painter, place.rect);
    } else if (const auto* shape = dynamic_cast<const ui::Shape*>(&c)) {
        const int width = std::max(1, shape->BorderWidth);
        QPen pen(color(shape->BorderColor));
        pen.setWidth(width);
        pen.setJoinStyle(Qt::MiterJoin);
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        // The border lies inside the shape's rectangle.
        const qreal half = width / 2.0;
        painter.drawRect(QRectF(place.rect).adjusted(half, half, -half, -half));
    }
    painter.restore();
}

// The key codes the windows' handlers expect: upper-case letters whatever
// the shift state, digits, and a few named keys.
int keyCode(int key) {
    if (key >= Qt::Key_A && key <= Qt::Key_Z) return 'A' + (key - Qt::Key_A);
    if (key >= Qt::Key_0 && key <= Qt::Key_9) return '0' + (key - Qt::Key_0);
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return 112 + (key - Qt::Key_F1);
    switch (key) {
        case Qt::Key_Escape:
            return 27;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return 13;
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

class Hash {
public:
    void add(std::size_t v) { h_ ^= v + 0x9e3779b97f4a7c15ULL + (h_ << 6) + (h_ >> 2); }
    void add(const std::string& s) { add(std::hash<std::string>{}(s)); }
    void add(const ui::Color& c) { add((std::size_t{c.r} << 16) | (std::size_t{c.g} << 8) | c.b); }
    void add(const ui::Picture& p) { add(p ? static_cast<std::size_t>(p->handle) : 0); }
    std::size_t value() const { return h_; }

private:
    std::size_t h_ = 1469598103934665603ULL;
};

}  // namespace

int toPixels(int twips) {
    return static_cast<int>(std::lround(twips / static_cast<double>(ui::kTwipsPerPixel)));
}

Placement placementOf(const ui::Control& control, QSize clientSize) {
    QPoint origin;
    QRect clip;
    containerFrame(control.container, clientSize, origin, clip);
    const QRect rect(origin + QPoint(toPixels(control.Left), toPixels(control.Top)),
                     QSize(toPixels(control.Width), toPixels(control.Height)));
    return Placement{rect, clip};
}

void paintWindow(QPainter& painter, const ui::Window& window, ArtCache& art, qreal dpr) {
    const QSize client = clientSizeOf(window);
    const QRect area(QPoint(0, 0), client);
    painter.save();
    painter.setClipRect(area);
    painter.fillRect(area, color(window.BackColor));
    drawPicture(painter, art, window.picture, QPoint(0, 0), dpr);
    for (const auto& c : window.controls()) {
        if (!c->shown()) continue;
        paintControl(painter, *c, placementOf(*c, client), art, dpr);
    }
    painter.restore();
}

ui::Control* controlAt(const ui::Window& window, QPoint pos, QSize clientSize) {
    const auto& controls = window.controls();
    for (auto it = controls.rbegin(); it != controls.rend(); ++it) {
        ui::Control& c = **it;
        if (!c.shown() || !takesMouse(c)) continue;
        const Placement place = placementOf(c, clientSize);
        if ((place.rect & place.clip).contains(pos)) return &c;
    }
    return nullptr;
}

// --- ClientArea -------------------------------------------------------------

ClientArea::ClientArea(WindowWidget& owner) : QWidget(&owner), owner_(owner) {
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
}

bool ClientArea::event(QEvent* e) {
    if (e->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(e);
        const ui::Window* w = owner_.modelWindow();
        const ui::Control* c = w ? controlAt(*w, help->pos(), size()) : nullptr;
        if (c && !c->ToolTipText.empty()) {
            const Placement place = placementOf(*c, size());
            QToolTip::showText(help->globalPos(), text(c->ToolTipText), this,
                               place.rect & place.clip);
        } else {
            QToolTip::hideText();
            e->ignore();
        }
        return true;
    }
    return QWidget::event(e);
}

void ClientArea::paintEvent(QPaintEvent*) {
    const ui::Window* w = owner_.modelWindow();
    if (!w) return;
    QPainter painter(this);
    // The density of what is painted on: the window's screen normally, an
    // image of another density when the window is rendered into one.
    qreal dpr = devicePixelRatioF();
    if (QPaintEngine* engine = painter.paintEngine(); engine && engine->paintDevice()) {
        dpr = engine->paintDevice()->devicePixelRatio();
    }
    paintWindow(painter, *w, owner_.frontEnd_.art(), dpr);
}

void ClientArea::mousePressEvent(QMouseEvent* e) { owner_.onPress(e); }

void ClientArea::mouseDoubleClickEvent(QMouseEvent* e) {
    // A quick second click is a click like any other.
    owner_.onPress(e);
}

void ClientArea::mouseReleaseEvent(QMouseEvent* e) { owner_.onRelease(e); }

void ClientArea::mouseMoveEvent(QMouseEvent* e) { owner_.onMouseMove(e); }

// --- WindowWidget -----------------------------------------------------------

WindowWidget::WindowWidget(QtFrontEnd& frontEnd, ui::Window& window)
    : QWidget(nullptr), frontEnd_(frontEnd), window_(&window) {
    setObjectName(text(window.name()));
    applyFlags();
    if (!window.menuBar.empty()) buildMenus();
    client_ = new ClientArea(*this);
    for (const auto& c : window.controls()) {
        auto* box = dynamic_cast<ui::TextBox*>(c.get());
        if (!box) continue;
        auto* edit = new QLineEdit(client_);
        edit->installEventFilter(this);
        edit->hide();
        connect(edit, &QLineEdit::textEdited, this,
                [this, box] { guarded([this, box] { onEdited(*box); }); });
        connect(edit, &QLineEdit::cursorPositionChanged, this,
                [this, box] { guarded([this, box] { onSelection(*box); }); });
        connect(edit, &QLineEdit::selectionChanged, this,
                [this, box] { guarded([this, box] { onSelection(*box); }); });
        edits_[box].widget = edit;
    }
}

WindowWidget::~WindowWidget() = default;

void WindowWidget::detach() {
    window_ = nullptr;
    pressed_ = nullptr;
    manualDrag_ = false;
}

QWidget* WindowWidget::clientArea() const { return client_; }

QSize WindowWidget::clientSize() const { return client_->size(); }

QLineEdit* WindowWidget::lineEditFor(const ui::TextBox& box) const {
    auto it = edits_.find(&box);
    return it == edits_.end() ? nullptr : it->second.widget;
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

void WindowWidget::buildMenus() {
    menuBar_ = new QMenuBar(this);
    menuBar_->setNativeMenuBar(false);
    for (ui::MenuItem* item : window_->menuBar) {
        if (item->children.empty()) {
            QAction* action = makeAction(*item, nullptr);
            menuBar_->addAction(action);
        } else {
            fillMenu(menuBar_->addMenu(text(item->Caption)), *item);
        }
    }
    syncMenus();
}

void WindowWidget::fillMenu(QMenu* menu, ui::MenuItem& item) {
    actions_[&item] = menu->menuAction();
    connect(menu, &QMenu::aboutToShow, this,
            [this, &item] { guarded([this, &item] { onMenu(item); }); });
    addMenuItems(menu, item.children);
}

void WindowWidget::addMenuItems(QMenu* menu, const std::vector<ui::MenuItem*>& items) {
    for (ui::MenuItem* item : items) {
        if (item->children.empty()) {
            menu->addAction(makeAction(*item, menu));
        } else {
            fillMenu(menu->addMenu(text(item->Caption)), *item);
        }
    }
}

QAction* WindowWidget::makeAction(ui::MenuItem& item, QMenu* parentMenu) {
    auto* action = new QAction(text(item.Caption), parentMenu ? static_cast<QObject*>(parentMenu)
                                                              : static_cast<QObject*>(menuBar_));
    action->setShortcutContext(Qt::WindowShortcut);
    connect(action, &QAction::triggered, this,
            [this, p = &item] { guarded([this, p] { onMenu(*p); }); });
    actions_[&item] = action;
    return action;
}

void WindowWidget::syncMenus() {
    for (auto& [item, action] : actions_) {
        const bool separator = item->Caption == "-";
        if (action->isSeparator() != separator && !action->menu()) action->setSeparator(separator);
        // A separator with a text would show it as a section heading.
        const QString caption = separator ? QString() : text(item->Caption);
        if (action->text() != caption) action->setText(caption);
        // Only a checked item shows a check; Qt does not get to toggle it.
        if (item->Checked) {
            action->setCheckable(true);
            action->setChecked(true);
        } else {
            action->setChecked(false);
            action->setCheckable(false);
        }
        action->setEnabled(item->Enabled);
        action->setVisible(item->Visible);
        const QKeySequence keys = QKeySequence::fromString(text(item->Shortcut),
                                                           QKeySequence::PortableText);
        if (action->shortcut() != keys) action->setShortcut(keys);
    }
}

void WindowWidget::onMenu(ui::MenuItem& item) {
    if (!window_) return;
    QPointer<WindowWidget> self(this);
    frontEnd_.toolkit().menu(item);
    // A refused item leaves no event behind to bring the checks back.
    if (self && window_) syncMenus();
}

void WindowWidget::syncGeometry() {
    const QSize client = clientSizeOf(*window_);
    const int menuHeight = menuBar_ ? menuBar_->sizeHint().height() : 0;
    const QSize total(client.width(), client.height() + menuHeight);
    if (total != appliedSize_) {
        appliedSize_ = total;
        setFixedSize(total);
        if (menuBar_) menuBar_->setGeometry(0, 0, client.width(), menuHeight);
        client_->setGeometry(0, menuHeight, client.width(), client.height());
    }
    if (!appliedPos_ || window_->Left != appliedLeft_ || window_->Top != appliedTop_) {
        appliedLeft_ = window_->Left;
        appliedTop_ = window_->Top;
        appliedPos_ = QPoint(toPixels(window_->Left), toPixels(window_->Top));
        QWidget::move(*appliedPos_);
    }
}

void WindowWidget::syncEdits() {
    pushing_ = true;
    const QSize client = clientSize();
    for (auto& [constBox, edit] : edits_) {
        // The map's key is the model's own control of this window.
        auto& box = const_cast<ui::TextBox&>(*constBox);
        QLineEdit* e = edit.widget;
        const Placement place = placementOf(box, client);
        const QRect visible = place.rect & place.clip;
        if (e->geometry() != place.rect) e->setGeometry(place.rect);
        const QRegion mask = visible == place.rect
                                 ? QRegion()
                                 : QRegion(visible.translated(-place.rect.topLeft()));
        if (e->mask() != mask) {
            if (mask.isEmpty()) {
                e->clearMask();
            } else {
                e->setMask(mask);
            }
        }
        const QFont font = fontOf(box.font);
        if (e->font() != font) e->setFont(font);
        const Qt::Alignment align = horizontal(box.Alignment) | Qt::AlignVCenter;
        if (e->alignment() != align) e->setAlignment(align);
        if (e->hasFrame() != box.border) e->setFrame(box.border);
        if (e->isReadOnly() != box.Locked) e->setReadOnly(box.Locked);
        // Out of the tab order it can still be clicked into. A locked box
        // takes no focus at all: a focus frame would make it look editable.
        const Qt::FocusPolicy policy = box.Locked    ? Qt::NoFocus
                                       : box.TabStop ? Qt::StrongFocus
                                                     : Qt::ClickFocus;
        if (e->focusPolicy() != policy) e->setFocusPolicy(policy);
        if (box.Locked && e->hasFocus()) e->clearFocus();
        if (e->isEnabled() != box.takesInput()) e->setEnabled(box.takesInput());

        const bool textChanged = box.Text != edit.text;
        if (textChanged) {
            edit.text = box.Text;
            const QString t = text(box.Text);
            if (e->text() != t) e->setText(t);
        }
        if (typing_ == &box) {
            // The caret stays where the user's typing left it.
            edit.selStart = box.SelStart;
            edit.selLength = box.SelLength;
        } else if (textChanged || box.SelStart != edit.selStart ||
                   box.SelLength != edit.selLength) {
            edit.selStart = box.SelStart;
            edit.selLength = box.SelLength;
            const int length = static_cast<int>(e->text().size());
            const int start = std::clamp(box.SelStart, 0, length);
            const int selected = std::clamp(box.SelLength, 0, length - start);
            if (selected > 0) {
                e->setSelection(start, selected);
            } else {
                e->setCursorPosition(start);
            }
        }
        const bool shown = box.shown() && !visible.isEmpty();
        if (e->isVisibleTo(client_) != shown) e->setVisible(shown);
    }
    const ui::TextBox* focus = window_->focus && !window_->focus->Locked ? window_->focus : nullptr;
    if (focus != lastFocus_) {
        lastFocus_ = focus;
        if (QLineEdit* e = focus ? lineEditFor(*focus) : nullptr) e->setFocus(Qt::OtherFocusReason);
    }
    pushing_ = false;
}

void WindowWidget::onEdited(ui::TextBox& box) {
    if (!window_) return;
    QLineEdit* e = lineEditFor(box);
    if (!e) return;
    QPointer<WindowWidget> self(this);
    typing_ = &box;
    const bool taken = frontEnd_.toolkit().type(box, e->text().toStdString());
    if (!self) return;
    typing_ = nullptr;
    if (!window_) return;
    Edit& edit = edits_[&box];
    if (!taken) {
        pushing_ = true;
        e->setText(text(box.Text));
        pushing_ = false;
    }
    edit.text = box.Text;
    onSelection(box);
}

void WindowWidget::onSelection(ui::TextBox& box) {
    if (pushing_ || !window_) return;
    QLineEdit* e = lineEditFor(box);
    if (!e) return;
    // The model's selection follows the user's, as it is read live.
    const bool selected = e->hasSelectedText();
    frontEnd_.toolkit().selected(box, selected ? e->selectionStart() : e->cursorPosition(),
                                 selected ? static_cast<int>(e->selectedText().size()) : 0);
    Edit& edit = edits_[&box];
    edit.selStart = box.SelStart;
    edit.selLength = box.SelLength;
}

std::size_t WindowWidget::paintKey() const {
    Hash h;
    h.add(window_->BackColor);
    h.add(window_->picture);
    h.add(static_cast<std::size_t>(window_->clientWidth()));
    h.add(static_cast<std::size_t>(window_->clientHeight()));
    for (const auto& c : window_->controls()) {
        const bool shown = c->shown();
        h.add(shown);
        if (!shown) continue;
        h.add(static_cast<std::size_t>(c->Left));
        h.add(static_cast<std::size_t>(c->Top));
        h.add(static_cast<std::size_t>(c->Width));
        h.add(static_cast<std::size_t>(c->Height));
        if (const auto* l = dynamic_cast<const ui::Label*>(c.get())) {
            h.add(l->Caption);
            h.add(l->ForeColor);
            h.add(l->BackColor);
            h.add(l->transparent);
            h.add(l->font.family);
            h.add(std::hash<double>{}(l->font.points));
            h.add(l->font.bold);
            h.add(static_cast<std::size_t>(l->Alignment));
        } else if (const auto* i = dynamic_cast<const ui::Image*>(c.get())) {
            h.add(i->picture);
            h.add(i->Stretch);
        } else if (const auto* b = dynamic_cast<const ui::PictureBox*>(c.get())) {
            h.add(b->picture);
            h.add(b->BackColor);
            h.add(b->border);
        } else if (const auto* s = dynamic_cast<const ui::Shape*>(c.get())) {
            h.add(s->BorderColor);
            h.add(static_cast<std::size_t>(s->BorderWidth));
        } else if (const auto* n = dynamic_cast<const ui::Line*>(c.get())) {
            h.add(static_cast<std::size_t>(n->X1));
            h.add(static_cast<std::size_t>(n->Y1));
            h.add(static_cast<std::size_t>(n->X2));
            h.add(static_cast<std::size_t>(n->Y2));
            h.add(n->BorderColor);
            h.add(static_cast<std::size_t>(n->BorderWidth));
        }
    }
    return h.value();
}

void WindowWidget::syncFromModel() {
    if (!window_) return;
    applyFlags();
    if (!appliedCaption_ || window_->Caption != *appliedCaption_) {
        appliedCaption_ = window_->Caption;
        setWindowTitle(text(window_->Caption));
    }
    if (window_->icon.get() != appliedIcon_) {
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
    syncGeometry();
    if (menuBar_) syncMenus();
    syncEdits();
    const std::size_t key = paintKey();
    if (!painted_ || key != appliedPaintKey_) {
        painted_ = true;
        appliedPaintKey_ = key;
        client_->update();
    }
    if (client_->underMouse()) {
        updateCursor(controlAt(*window_, client_->mapFromGlobal(QCursor::pos()), clientSize()));
    }
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

bool WindowWidget::eventFilter(QObject* watched, QEvent* e) {
    auto* edit = qobject_cast<QLineEdit*>(watched);
    if (edit && window_) {
        if (e->type() == QEvent::FocusIn && !pushing_) {
            for (auto& [box, entry] : edits_) {
                if (entry.widget != edit) continue;
                // Where the user puts the focus, the model has it too.
                auto* focused = const_cast<ui::TextBox*>(box);
                if (frontEnd_.toolkit().focused(*focused)) lastFocus_ = box;
            }
        } else if (e->type() == QEvent::KeyPress) {
            auto* key = static_cast<QKeyEvent*>(e);
            // Access keys belong to the window, not to the text in the box.
            if (key->modifiers() & Qt::AltModifier) {
                bool handled = false;
                guarded([&] { handled = handleKey(key); });
                if (handled) return true;
            }
        }
    }
    return QWidget::eventFilter(watched, e);
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

void WindowWidget::keyPressEvent(QKeyEvent* e) {
    bool handled = false;
    guarded([&] { handled = handleKey(e); });
    if (!handled) QWidget::keyPressEvent(e);
}

bool WindowWidget::handleKey(QKeyEvent* e) {
    if (!window_) return false;
    ui::Toolkit& tk = frontEnd_.toolkit();
    const int key = e->key();
    if (e->modifiers() & Qt::AltModifier) {
        const int code = keyCode(key);
        if (code == 0 || (code >= 112 && code <= 123) || code == 27 || code == 13) return false;
        tk.shortcut(std::string("Alt+") + static_cast<char>(code));
        return true;
    }
    const int code = keyCode(key);
    if (code == 0 || !window_->Form_KeyDown) return false;
    tk.keyDown(*window_, code);
    return true;
}

void WindowWidget::beginManualDrag() {
    if (!window_) return;
    manualDrag_ = true;
    dragOffset_ = QCursor::pos() - pos();
}

void WindowWidget::onPress(QMouseEvent* e) {
    if (!window_ || !(e->button() & kMouseButtons)) return;
    if (e->button() == Qt::LeftButton) {
        dragged_ = false;
        manualDrag_ = false;
    }
    // The first button down captures the mouse for what it went down on;
    // MouseDown comes for every button, the click only for the left one.
    if (!(e->buttons() & kMouseButtons & ~e->button())) {
        pressed_ = controlAt(*window_, e->position().toPoint(), clientSize());
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
    const QPoint at = e->position().toPoint();
    QPointer<WindowWidget> self(this);
    guarded([&] {
        ui::Toolkit& tk = frontEnd_.toolkit();
        tk.mouseUp(*c);
        if (!left || !self || !window_) return;
        if (controlAt(*window_, at, clientSize()) == c) tk.click(*c);
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
    ui::Control* over = controlAt(*window_, e->position().toPoint(), clientSize());
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
