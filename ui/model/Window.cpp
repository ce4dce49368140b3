#include "ui/model/Window.h"

#include "ui/model/Toolkit.h"

namespace zd::ui {

Window::Window(Toolkit& toolkit, std::string name) : toolkit_(toolkit), name_(std::move(name)) {}

Window::~Window() = default;

void Window::Move(int left, int top) {
    Left = left;
    Top = top;
}

void Window::Move(int left, int top, int width, int height) {
    Move(left, top);
    Width = width;
    Height = height;
}

bool Window::canFocus(const Control& c) {
    const auto* box = dynamic_cast<const TextBox*>(&c);
    return c.takesInput() && !(box && box->Locked);
}

Control* Window::find(std::string_view name, std::optional<int> index) const {
    for (const auto& c : controls_) {
        if (c->name() == name && c->index() == index.value_or(-1)) return c.get();
    }
    return nullptr;
}

MenuItem& Window::addMenu(std::string name, int index, std::string caption, MenuItem* parent) {
    MenuItem& item = add<MenuItem>(std::move(name), index);
    item.Caption = std::move(caption);
    item.parent = parent;
    if (parent) {
        parent->children.push_back(&item);
    } else {
        menuBar.push_back(&item);
    }
    return item;
}

Picture Window::design(std::string sheet, std::string element, int widthPx, int heightPx) {
    return toolkit_.pictures().make(std::move(sheet), std::move(element), widthPx, heightPx,
                                    "(design)");
}

void Window::frameWithTitle(int clientWidth, int clientHeight, bool withMenu) {
    // A fixed single border of 3 pixels, a caption of 19 and a menu bar of 19.
    constexpr int border = 3 * kTwipsPerPixel;
    constexpr int caption = 19 * kTwipsPerPixel;
    constexpr int menu = 19 * kTwipsPerPixel;
    frame = Frame{border, border + caption + (withMenu ? menu : 0), border, border};
    Width = clientWidth + frame.left + frame.right;
    Height = clientHeight + frame.top + frame.bottom;
}

}  // namespace zd::ui
