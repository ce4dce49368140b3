#include "best/CodePage.h"

#include <array>
#include <cstdint>

namespace zd {

namespace {

// Windows-1252 bytes 0x80 to 0x9F; 0 where the code page has no character.
constexpr std::array<char32_t, 32> kUpperControlRange = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

std::optional<unsigned char> toWindows1252(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<unsigned char>(c);
    for (std::size_t i = 0; i < kUpperControlRange.size(); ++i) {
        if (kUpperControlRange[i] == c && c != 0) return static_cast<unsigned char>(0x80 + i);
    }
    return std::nullopt;
}

// Decodes strict UTF-8; nothing when the bytes are not valid UTF-8.
std::optional<std::u32string> decodeUtf8(const std::string& bytes) {
    std::u32string out;
    for (std::size_t i = 0; i < bytes.size();) {
        const auto b0 = static_cast<unsigned char>(bytes[i]);
        int length = 0;
        char32_t c = 0;
        if (b0 < 0x80) {
            length = 1;
            c = b0;
        } else if ((b0 & 0xE0) == 0xC0) {
            length = 2;
            c = b0 & 0x1F;
        } else if ((b0 & 0xF0) == 0xE0) {
            length = 3;
            c = b0 & 0x0F;
        } else if ((b0 & 0xF8) == 0xF0) {
            length = 4;
            c = b0 & 0x07;
        } else {
            return std::nullopt;
        }
        if (i + static_cast<std::size_t>(length) > bytes.size()) return std::nullopt;
        for (int k = 1; k < length; ++k) {
            const auto b = static_cast<unsigned char>(bytes[i + static_cast<std::size_t>(k)]);
            if ((b & 0xC0) != 0x80) return std::nullopt;
            c = (c << 6) | (b & 0x3F);
        }
        const char32_t smallest[5] = {0, 0, 0x80, 0x800, 0x10000};
        if (c < smallest[length] || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) {
            return std::nullopt;
        }
        out.push_back(c);
        i += static_cast<std::size_t>(length);
    }
    return out;
}

void appendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (c >> 6)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (c >> 12)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (c >> 18)));
        out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
}

}  // namespace

std::string toFileText(const std::string& utf8) {
    const auto chars = decodeUtf8(utf8);
    if (!chars) return utf8;
    std::string singleBytes;
    for (char32_t c : *chars) {
        const auto b = toWindows1252(c);
        if (!b) return utf8;
        singleBytes.push_back(static_cast<char>(*b));
    }
    // A Windows-1252 text that happens to be valid UTF-8 would read back as
    // UTF-8 and change; such a list stays in UTF-8.
    if (singleBytes != utf8 && decodeUtf8(singleBytes)) return utf8;
    return singleBytes;
}

std::string fromFileText(const std::string& bytes) {
    if (decodeUtf8(bytes)) return bytes;
    std::string out;
    for (char ch : bytes) {
        const auto b = static_cast<unsigned char>(ch);
        char32_t c = b;
        if (b >= 0x80 && b < 0xA0) {
            c = kUpperControlRange[b - 0x80];
            if (c == 0) c = b;  // undefined in the code page: keep the control character
        }
        appendUtf8(out, c);
    }
    return out;
}

}  // namespace zd
