#pragma once

#include <QPixmap>
#include <QSize>
#include <QString>
#include <map>
#include <memory>
#include <string>
#include <tuple>

#include "ui/model/Picture.h"

class QSvgRenderer;

namespace zd::qt {

// The program's pictures, drawn from the art sheets beside the program at
// the pixel density of the screen they are shown on. Every size is rendered
// from the vector art, never scaled from another pixmap, so pictures stay
// sharp at any scale. Missing sheets and elements give a null pixmap.
//
// Rendering the vector art is the slow part of starting, so what has been
// rendered once is also kept on disk, in `diskFolder` (none when empty), and
// read back on later starts; a changed sheet is rendered anew.
class ArtCache {
public:
    explicit ArtCache(std::string folder, QString diskFolder = {});
    ~ArtCache();
    ArtCache(const ArtCache&) = delete;
    ArtCache& operator=(const ArtCache&) = delete;

    // The picture at its own pixel size, rendered with `dpr` physical
    // pixels per logical pixel.
    QPixmap pixmap(const ui::PictureData& picture, qreal dpr);
    // An element at `logicalSize` device-independent pixels.
    QPixmap pixmap(const std::string& sheet, const std::string& element, QSize logicalSize,
                   qreal dpr);
    // The picture rendered to fill exactly `devicePixels`: a place whose
    // edges were rounded to the screen's pixels may be one pixel wider or
    // narrower than the picture's size times `dpr`.
    QPixmap covering(const ui::PictureData& picture, QSize devicePixels, qreal dpr);

private:
    QPixmap rendered(const std::string& sheet, const std::string& element, QSize devicePixels,
                     qreal dpr);
    QSvgRenderer* sheet(const std::string& name);
    // Where a rendering of the sheet as it is now lies on disk; empty when
    // there is no disk cache or no such sheet.
    QString diskPath(const std::string& sheet, const std::string& element, int width, int height);

    using Key = std::tuple<std::string, std::string, int, int>;
    std::string folder_;
    QString diskFolder_;
    std::map<std::string, QString> sheetVersions_;
    // A sheet that could not be loaded is kept as null so it is tried once.
    std::map<std::string, std::unique_ptr<QSvgRenderer>> sheets_;
    std::map<Key, QPixmap> pixmaps_;
};

}  // namespace zd::qt
