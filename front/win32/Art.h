#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include <windows.h>

#include <wincodec.h>

#include "ui/model/Picture.h"

namespace zd::win32 {

// Pixels of a picture, premultiplied blue, green, red, alpha, top row first.
struct Bitmap {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;
};

// The program's pictures, carried inside the program as PNG renderings of
// the SVG art at the display scales Windows offers (100, 125, 150, 200 and
// 300 %), made on the build machine by tools/art. A size between them is
// scaled down from the next larger rendering with the Fant filter, so every
// scale is sharp; what was decoded is kept by its size in pixels.
class Art {
public:
    Art();
    ~Art();
    Art(const Art&) = delete;
    Art& operator=(const Art&) = delete;

    // The picture at width by height physical pixels; null when the
    // program holds no such picture. A picture stretched beyond its own
    // size is scaled up from the rendering for the screen's `percent`: a
    // soft backdrop loses nothing by it, and a rendering of the size of the
    // screen would cost the start megabytes and milliseconds.
    const Bitmap* picture(const ui::PictureData& picture, int width, int height, int percent = 0);
    const Bitmap* picture(const std::string& sheet, const std::string& element, int baseWidth,
                          int baseHeight, int width, int height, int percent = 0);

private:
    bool decode(const std::string& resource, int width, int height, Bitmap& out);

    IWICImagingFactory* wic_ = nullptr;
    bool comStarted_ = false;
    using Key = std::tuple<std::string, std::string, int, int>;
    std::map<Key, Bitmap> cache_;
};

}  // namespace zd::win32
