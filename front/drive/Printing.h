#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ui/model/Toolkit.h"

namespace zd::drive {

// Values as the driver prints them: True or False, whole numbers in decimal,
// text with CR LF written as the four characters \r\n, and a picture as the
// bank control it was taken from.
std::string printableText(const std::string& text);
std::string printableBool(bool value);

// A property of a window or a control as the driver prints it, or nothing
// for a property it does not have; `arg` is the row of List(I).
std::optional<std::string> printProperty(const ui::Window& w, std::string_view prop);
std::optional<std::string> printProperty(const ui::Control& c, std::string_view prop,
                                         std::optional<int> arg);

}  // namespace zd::drive
