#pragma once

#include <string>
#include <vector>

#include <windows.h>

#include "ui/model/Window.h"

namespace zd::win32 {

class Win32FrontEnd;

// The menu bar of a window that has menus: Windows menus made once from the
// model's items, brought in line with them after every event, and a chosen
// entry handed to the toolkit.
class Menus {
public:
    Menus(Win32FrontEnd& frontEnd, ui::Window& window);
    Menus(const Menus&) = delete;
    Menus& operator=(const Menus&) = delete;

    // Owned by the window it is set on, which destroys it.
    HMENU bar() const { return bar_; }
    // True when the bar itself changed and is to be drawn again.
    bool sync();
    void command(UINT id);
    void opened(HMENU popup);

private:
    struct Entry {
        ui::MenuItem* item = nullptr;
        HMENU owner = nullptr;
        UINT position = 0;
        HMENU popup = nullptr;
        std::wstring text;
        UINT state = 0;
        bool separator = false;
        bool applied = false;
    };

    void fill(HMENU menu, const std::vector<ui::MenuItem*>& items);

    Win32FrontEnd& frontEnd_;
    HMENU bar_;
    std::vector<Entry> entries_;
};

// A shortcut as a German Windows shows it in a menu: "Ctrl+E" as "Strg+E".
std::string germanShortcut(const std::string& keys);

}  // namespace zd::win32
