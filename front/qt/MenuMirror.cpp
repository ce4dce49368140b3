#include "front/qt/MenuMirror.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QProxyStyle>
#include <QStyleOptionMenuItem>
#include <QTimer>

#include "front/qt/Guard.h"
#include "front/qt/QtFrontEnd.h"
#include "front/qt/QtValues.h"
#include "front/qt/WindowWidget.h"
#include "ui/model/Toolkit.h"

namespace zd::qt {

namespace {

// Alt pressed and let go alone selects the menu bar, and again leaves it,
// as on the desktops the game comes from, whatever Qt's style says.
class AltSelectsTheBar : public QProxyStyle {
public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override {
        if (hint == SH_MenuBar_AltKeyNavigation) return 1;
        return QProxyStyle::styleHint(hint, option, widget, returned);
    }

    // The entry the keyboard selected is drawn as the open one is: some
    // styles show it only while its menu is open, and a keyboard user must
    // see that the bar has the keys. The bar holds the focus only then.
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        if (element == CE_MenuBarItem && item && (item->state & State_Selected) && widget &&
            widget->hasFocus()) {
            QStyleOptionMenuItem selected = *item;
            selected.state |= State_Sunken;
            QProxyStyle::drawControl(element, &selected, painter, widget);
            return;
        }
        QProxyStyle::drawControl(element, option, painter, widget);
    }
};

}  // namespace

MenuMirror::MenuMirror(WindowWidget& owner)
    : owner_(owner), bar_(new QMenuBar(&owner)), style_(new AltSelectsTheBar) {
    bar_->setNativeMenuBar(false);
    style_->setParent(bar_);
    bar_->setStyle(style_);
    for (ui::MenuItem* item : owner.modelWindow()->menuBar) {
        if (item->children.empty()) {
            bar_->addAction(makeAction(*item, nullptr));
        } else {
            fillMenu(bar_->addMenu(text(item->Caption)), *item);
        }
    }
    sync();
}

void MenuMirror::fillMenu(QMenu* menu, ui::MenuItem& item) {
    entries_[&item].action = menu->menuAction();
    QObject::connect(menu, &QMenu::aboutToShow, bar_,
                     [this, &item] { guarded([this, &item] { onMenu(item); }); });
    // Qt leaves the bar holding the keys when a menu is closed by Esc or by
    // a click elsewhere, so that a later Space or Return would open it and
    // act on an entry. Looked at once Qt is done closing.
    QObject::connect(menu, &QMenu::aboutToHide, bar_, [this] {
        QTimer::singleShot(0, bar_, [this] {
            if (!QApplication::activePopupWidget()) releaseKeyboard();
        });
    });
    addMenuItems(menu, item.children);
}

void MenuMirror::addMenuItems(QMenu* menu, const std::vector<ui::MenuItem*>& items) {
    for (ui::MenuItem* item : items) {
        if (item->children.empty()) {
            menu->addAction(makeAction(*item, menu));
        } else {
            fillMenu(menu->addMenu(text(item->Caption)), *item);
        }
    }
}

QAction* MenuMirror::makeAction(ui::MenuItem& item, QMenu* parentMenu) {
    auto* action =
        new QAction(text(item.Caption), parentMenu ? static_cast<QObject*>(parentMenu) : bar_);
    action->setShortcutContext(Qt::WindowShortcut);
    QObject::connect(action, &QAction::triggered, bar_,
                     [this, p = &item] { guarded([this, p] { onMenu(*p); }); });
    entries_[&item].action = action;
    return action;
}

void MenuMirror::sync() {
    for (auto& [item, entry] : entries_) {
        QAction* action = entry.action;
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
        if (entry.shortcut != item->Shortcut) {
            entry.shortcut = item->Shortcut;
            action->setShortcut(
                QKeySequence::fromString(text(item->Shortcut), QKeySequence::PortableText));
        }
    }
}

void MenuMirror::releaseKeyboard() {
    if (bar_->activeAction()) {
        // The bar's own way out of its keyboard mode.
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(bar_, &escape);
    }
    if (bar_->hasFocus()) bar_->clearFocus();
}

void MenuMirror::onMenu(ui::MenuItem& item) {
    if (!owner_.modelWindow()) return;
    QPointer<QMenuBar> alive(bar_);
    owner_.frontEnd().toolkit().menu(item);
    // A refused item leaves no event behind to bring the checks back.
    if (alive && owner_.modelWindow()) sync();
}

}  // namespace zd::qt
