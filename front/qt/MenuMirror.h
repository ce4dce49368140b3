#pragma once

#include <map>
#include <string>
#include <vector>

#include "ui/model/Window.h"

class QAction;
class QMenu;
class QMenuBar;
class QStyle;

namespace zd::qt {

class WindowWidget;

// The menu bar of a window that has menus: Qt menus made once from the
// model's items, brought in line with them after every event, and a click
// on an entry handed to the toolkit.
class MenuMirror {
public:
    explicit MenuMirror(WindowWidget& owner);
    MenuMirror(const MenuMirror&) = delete;
    MenuMirror& operator=(const MenuMirror&) = delete;

    QMenuBar* bar() const { return bar_; }
    void sync();
    // The keys go back to the window: no entry of the bar stays selected.
    void releaseKeyboard();

private:
    // A menu for `item`, with its entries below it.
    void fillMenu(QMenu* menu, ui::MenuItem& item);
    void addMenuItems(QMenu* menu, const std::vector<ui::MenuItem*>& items);
    QAction* makeAction(ui::MenuItem& item, QMenu* parentMenu);
    void onMenu(ui::MenuItem& item);

    struct Entry {
        QAction* action = nullptr;
        // The shortcut as last given to Qt (none at first), as Qt is slow
        // to parse one.
        std::string shortcut;
    };

    WindowWidget& owner_;
    QMenuBar* bar_;
    QStyle* style_;
    std::map<const ui::MenuItem*, Entry> entries_;
};

}  // namespace zd::qt
