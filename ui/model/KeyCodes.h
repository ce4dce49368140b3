#pragma once

namespace zd::ui {

// The key codes the windows' key handlers are given: letters and digits are
// their upper-case characters, whatever the shift state.
enum KeyCode : int {
    kKeyTab = 9,
    kKeyReturn = 13,
    kKeyEscape = 27,
    kKeySpace = 32,
    kKeyLeft = 37,
    kKeyRight = 39,
    kKeyF1 = 112,
    kKeyF12 = 123,
};

}  // namespace zd::ui
