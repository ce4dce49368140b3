#include "ui/qt/ArtCache.h"

#include <cmath>

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

namespace zd::qt {

ArtCache::ArtCache(std::string folder) : folder_(std::move(folder)) {}

ArtCache::~ArtCache() = default;

QSvgRenderer* ArtCache::sheet(const std::string& name) {
    auto it = sheets_.find(name);
    if (it != sheets_.end()) return it->second.get();
    std::unique_ptr<QSvgRenderer> renderer;
    const QString file =
        QDir(QString::fromStdString(folder_)).filePath(QString::fromStdString(name) + ".svg");
    // Checked first: a sheet still missing is no reason for warnings.
    if (QFileInfo(file).isFile()) {
        renderer = std::make_unique<QSvgRenderer>(file);
        if (!renderer->isValid()) renderer.reset();
    }
    return sheets_.emplace(name, std::move(renderer)).first->second.get();
}

QPixmap ArtCache::pixmap(const std::string& sheetName, const std::string& element,
                         QSize logicalSize, qreal dpr) {
    if (dpr <= 0) dpr = 1;
    const int width = static_cast<int>(std::lround(logicalSize.width() * dpr));
    const int height = static_cast<int>(std::lround(logicalSize.height() * dpr));
    if (width <= 0 || height <= 0 || element.empty()) return {};
    Key key{sheetName, element, width, height};
    if (auto it = pixmaps_.find(key); it != pixmaps_.end()) return it->second;

    QPixmap result;
    QSvgRenderer* renderer = sheet(sheetName);
    const QString id = QString::fromStdString(element);
    if (renderer && renderer->elementExists(id)) {
        QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        {
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            renderer->render(&painter, id, QRectF(0, 0, width, height));
        }
        result = QPixmap::fromImage(std::move(image));
        result.setDevicePixelRatio(dpr);
    }
    pixmaps_.emplace(std::move(key), result);
    return result;
}

QPixmap ArtCache::pixmap(const ui::PictureData& picture, QSize logicalSize, qreal dpr) {
    return pixmap(picture.sheet, picture.element, logicalSize, dpr);
}

QPixmap ArtCache::pixmap(const ui::PictureData& picture, qreal dpr) {
    return pixmap(picture, QSize(picture.widthPx, picture.heightPx), dpr);
}

}  // namespace zd::qt
