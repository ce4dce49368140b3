#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace zd::ui {

// What a picture shows: one element of an art sheet at its pixel size.
// Identity is the handle: two pictures that look alike are still different
// objects, and game logic compares handles, never pixels.
struct PictureData {
    std::string sheet;    // art sheet, e.g. "bilder"
    std::string element;  // element of that sheet, e.g. "die_3"
    int widthPx = 0;
    int heightPx = 0;
    std::int64_t handle = 0;
    std::string origin;  // the bank control it stands in, or "(design)"
};

// Assigning a Picture shares the object; an empty Picture is "no picture".
using Picture = std::shared_ptr<const PictureData>;

// Hands out pictures with handles unique within one program.
class PictureFactory {
public:
    Picture make(std::string sheet, std::string element, int widthPx, int heightPx,
                 std::string origin);

private:
    std::int64_t nextHandle_ = 1;
};

inline bool sameObject(const Picture& a, const Picture& b) {
    return a.get() == b.get();
}

}  // namespace zd::ui
