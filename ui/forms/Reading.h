#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ui/model/Window.h"

namespace zd::ui {

// What a window shows, put into words for a player who cannot see it. The
// words come from the model (which bank picture a control holds, captions
// and tool tips), never from pixels, so that every front end reads the same.

enum class Role { Button, Graphic, Text, EditableText };

struct Element {
    std::string key;  // stable while the window lives: "imgWurf(3)", "credit(1)"
    Role role = Role::Text;
    std::string name;
    std::string description;
    // What a press acts on, and where the element stands; null for a text
    // that no one control holds.
    Control* control = nullptr;
    bool shown = false;
    bool pressable = false;
    bool pressed = false;
    bool focused = false;
    // Worth telling the player the moment it reads so, or, where `change`
    // is set, the moment that changes (the same throw twice in a row).
    bool news = false;
    std::string change;
};

struct Reading {
    std::string name;
    std::string description;  // a message window's text
    bool message = false;
    std::vector<Element> elements;

    const Element* find(std::string_view key) const;
};

Reading read(const Window& window);

// What a player is to be told of the change from `before` to `after`, in
// reading order; `before` is null for a window that has just come up.
std::vector<std::string> news(const Reading* before, const Reading& after);

}  // namespace zd::ui
