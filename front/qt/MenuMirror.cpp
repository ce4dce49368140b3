#include "front/qt/MenuMirror.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>

#include "front/qt/Guard.h"
#include "front/qt/QtFrontEnd.h"
#include "front/qt/QtValues.h"
#include "front/qt/WindowWidget.h"
#include "ui/model/Toolkit.h"

namespace zd::qt {

MenuMirror::MenuMirror(WindowWidget& owner) : owner_(owner), bar_(new QMenuBar(&owner)) {
    bar_->setNativeMenuBar(false);
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

void MenuMirror::onMenu(ui::MenuItem& item) {
    if (!owner_.modelWindow()) return;
    QPointer<QMenuBar> alive(bar_);
    owner_.frontEnd().toolkit().menu(item);
    // A refused item leaves no event behind to bring the checks back.
    if (alive && owner_.modelWindow()) sync();
}

}  // namespace zd::qt
