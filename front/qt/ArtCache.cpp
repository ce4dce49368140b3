#include "front/qt/ArtCache.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSaveFile>
#include <QSvgRenderer>
#include <cmath>

namespace zd::qt {

namespace {

// A rendering on disk: width, height, then the premultiplied pixels as they
// lie in memory. Reading it back is a plain copy.
QImage readRendering(const QString& path, int width, int height) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    QDataStream in(&file);
    qint32 w = 0;
    qint32 h = 0;
    in >> w >> h;
    if (w != width || h != height) return {};
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    const qint64 bytes = image.sizeInBytes();
    if (file.read(reinterpret_cast<char*>(image.bits()), bytes) != bytes) return {};
    return image;
}

void writeRendering(const QString& path, const QImage& image) {
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return;
    QDataStream out(&file);
    out << qint32(image.width()) << qint32(image.height());
    file.write(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes());
    file.commit();  // a failure only means rendering again next time
}

}  // namespace

ArtCache::ArtCache(std::string folder, QString diskFolder)
    : folder_(std::move(folder)), diskFolder_(std::move(diskFolder)) {}

QString ArtCache::diskPath(const std::string& sheetName, const std::string& element, int width,
                           int height) {
    if (diskFolder_.isEmpty()) return {};
    auto version = sheetVersions_.find(sheetName);
    if (version == sheetVersions_.end()) {
        const QFileInfo info(QDir(QString::fromStdString(folder_))
                                 .filePath(QString::fromStdString(sheetName) + ".svg"));
        QString stamp;
        if (info.isFile()) {
            const QByteArray id = info.absoluteFilePath().toUtf8() + ' ' +
                                  QByteArray::number(info.size()) + ' ' +
                                  QByteArray::number(info.lastModified().toMSecsSinceEpoch());
            stamp = QString::fromLatin1(
                QCryptographicHash::hash(id, QCryptographicHash::Sha1).toHex().left(16));
        }
        version = sheetVersions_.emplace(sheetName, stamp).first;
    }
    if (version->second.isEmpty()) return {};
    return QStringLiteral("%1/%2-%3/%4@%5x%6.argb")
        .arg(diskFolder_, QString::fromStdString(sheetName), version->second,
             QString::fromStdString(element))
        .arg(width)
        .arg(height);
}

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
    return rendered(sheetName, element,
                    QSize(static_cast<int>(std::lround(logicalSize.width() * dpr)),
                          static_cast<int>(std::lround(logicalSize.height() * dpr))),
                    dpr);
}

QPixmap ArtCache::covering(const ui::PictureData& picture, QSize devicePixels, qreal dpr) {
    return rendered(picture.sheet, picture.element, devicePixels, dpr > 0 ? dpr : 1);
}

QPixmap ArtCache::rendered(const std::string& sheetName, const std::string& element,
                           QSize devicePixels, qreal dpr) {
    const int width = devicePixels.width();
    const int height = devicePixels.height();
    if (width <= 0 || height <= 0 || element.empty()) return {};
    Key key{sheetName, element, width, height};
    if (auto it = pixmaps_.find(key); it != pixmaps_.end()) {
        // The same pixels may be asked for at another density, by a window
        // on another screen; they are the same, only counted otherwise.
        QPixmap kept = it->second;
        if (!kept.isNull()) kept.setDevicePixelRatio(dpr);
        return kept;
    }

    QPixmap result;
    const QString onDisk = diskPath(sheetName, element, width, height);
    QImage image = onDisk.isEmpty() ? QImage() : readRendering(onDisk, width, height);
    if (image.isNull()) {
        QSvgRenderer* renderer = sheet(sheetName);
        const QString id = QString::fromStdString(element);
        if (renderer && renderer->elementExists(id)) {
            image = QImage(width, height, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            {
                QPainter painter(&image);
                painter.setRenderHint(QPainter::Antialiasing);
                painter.setRenderHint(QPainter::SmoothPixmapTransform);
                renderer->render(&painter, id, QRectF(0, 0, width, height));
            }
            if (!onDisk.isEmpty()) writeRendering(onDisk, image);
        }
    }
    if (!image.isNull()) {
        result = QPixmap::fromImage(std::move(image));
        result.setDevicePixelRatio(dpr);
    }
    pixmaps_.emplace(std::move(key), result);
    return result;
}

QPixmap ArtCache::pixmap(const ui::PictureData& picture, qreal dpr) {
    return pixmap(picture.sheet, picture.element, QSize(picture.widthPx, picture.heightPx), dpr);
}

}  // namespace zd::qt
