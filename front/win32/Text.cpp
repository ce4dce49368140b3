#include "front/win32/Text.h"

#include <windows.h>

namespace zd::win32 {

std::wstring wide(const std::string& utf8Text) {
    if (utf8Text.empty()) return {};
    const int n = MultiByteToWideChar(CP_UTF8, 0, utf8Text.data(),
                                      static_cast<int>(utf8Text.size()), nullptr, 0);
    std::wstring out(static_cast<std::size_t>(n), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8Text.data(), static_cast<int>(utf8Text.size()), out.data(),
                        n);
    return out;
}

std::string utf8(const std::wstring& text) {
    if (text.empty()) return {};
    const int n = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                      nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<std::size_t>(n), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out.data(), n,
                        nullptr, nullptr);
    return out;
}

}  // namespace zd::win32
