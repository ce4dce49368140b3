#pragma once

#include <string>

namespace zd::win32 {

// The model's texts are UTF-8; the wide functions of Windows take UTF-16.
std::wstring wide(const std::string& utf8);
std::string utf8(const std::wstring& text);

}  // namespace zd::win32
