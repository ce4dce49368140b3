#include "front/win32/Menus.h"

#include "front/win32/Text.h"
#include "front/win32/Win32FrontEnd.h"
#include "ui/model/Toolkit.h"

namespace zd::win32 {

namespace {

// Command ids of the entries: their place in the list, past the ids the
// system uses for itself.
constexpr UINT kFirstId = 1000;

}  // namespace

std::string germanShortcut(const std::string& keys) {
    static const std::pair<const char*, const char*> kWords[] = {
        {"Ctrl+", "Strg+"}, {"Shift+", "Umschalt+"}, {"Del", "Entf"}, {"Esc", "Esc"}};
    std::string out = keys;
    for (const auto& [from, to] : kWords) {
        if (const auto at = out.find(from); at != std::string::npos) {
            out.replace(at, std::string(from).size(), to);
        }
    }
    return out;
}

Menus::Menus(Win32FrontEnd& frontEnd, ui::Window& window)
    : frontEnd_(frontEnd), bar_(CreateMenu()) {
    fill(bar_, window.menuBar);
    sync();
}

void Menus::fill(HMENU menu, const std::vector<ui::MenuItem*>& items) {
    UINT position = 0;
    for (ui::MenuItem* item : items) {
        Entry entry;
        entry.item = item;
        entry.owner = menu;
        entry.position = position++;
        const UINT id = kFirstId + static_cast<UINT>(entries_.size());
        if (item->children.empty()) {
            AppendMenuW(menu, MF_STRING, id, L"");
            entries_.push_back(entry);
        } else {
            entry.popup = CreatePopupMenu();
            AppendMenuW(menu, MF_POPUP | MF_STRING, reinterpret_cast<UINT_PTR>(entry.popup), L"");
            entries_.push_back(entry);
            fill(entry.popup, item->children);
        }
    }
}

bool Menus::sync() {
    bool barChanged = false;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        Entry& e = entries_[i];
        const ui::MenuItem& item = *e.item;
        const bool separator = item.Caption == "-" && !e.popup;
        std::wstring text = separator ? std::wstring() : wide(item.Caption);
        if (!separator && !item.Shortcut.empty())
            text += L"\t" + wide(germanShortcut(item.Shortcut));
        const UINT state = (item.Checked ? MFS_CHECKED : 0u) | (item.Enabled ? 0u : MFS_DISABLED);
        if (e.applied && text == e.text && state == e.state && separator == e.separator) continue;
        e.applied = true;
        e.text = text;
        e.state = state;
        e.separator = separator;
        MENUITEMINFOW info{};
        info.cbSize = sizeof(info);
        // An entry that opens a menu is known by that menu, not by an id.
        info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_STRING | (e.popup ? 0u : MIIM_ID);
        info.fType = separator ? MFT_SEPARATOR : MFT_STRING;
        info.fState = state;
        info.wID = kFirstId + static_cast<UINT>(i);
        info.dwTypeData = e.text.data();
        SetMenuItemInfoW(e.owner, e.position, TRUE, &info);
        if (e.owner == bar_) barChanged = true;
    }
    return barChanged;
}

void Menus::command(UINT id) {
    if (id < kFirstId || id - kFirstId >= entries_.size()) return;
    frontEnd_.toolkit().menu(*entries_[id - kFirstId].item);
}

void Menus::opened(HMENU popup) {
    for (const Entry& e : entries_) {
        if (e.popup == popup) {
            frontEnd_.toolkit().menu(*e.item);
            return;
        }
    }
}

}  // namespace zd::win32
