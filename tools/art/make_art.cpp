// Renders every picture the windows of the game can show, from the SVG art,
// at the display scales a Windows desktop offers, as PNG files, and the
// program's icon as a Windows icon file. The Windows program carries these
// inside itself, as it has no SVG renderer of its own.
//   make_art ASSET_DIR OUTPUT_DIR
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cmath>
#include <cstdio>
#include <map>
#include <memory>
#include <set>
#include <tuple>

#include "ui/forms/Banks.h"
#include "ui/forms/MessageWindows.h"
#include "ui/forms/frmBesteDesign.h"
#include "ui/forms/frmHintergrundDesign.h"
#include "ui/forms/frmSpielfeldDesign.h"
#include "ui/model/Toolkit.h"
#include "ui/model/VirtualLoop.h"

namespace {

// Percent of the display's scale; between two of them the program scales
// the larger rendering down.
constexpr int kScales[] = {100, 125, 150, 200, 300};

using Key = std::tuple<std::string, std::string, int, int>;

void collect(std::set<Key>& keys, const zd::ui::Picture& picture) {
    if (picture) {
        keys.emplace(picture->sheet, picture->element, picture->widthPx, picture->heightPx);
    }
}

// Every picture of every window's design and of the banks: what the game
// can put on a control is always one of these.
std::set<Key> picturesOfTheWindows() {
    using namespace zd::ui;
    VirtualLoop loop;
    Toolkit tk(loop, 1024 * kTwipsPerPixel, 768 * kTwipsPerPixel);
    std::vector<std::unique_ptr<Window>> windows;
    windows.push_back(std::make_unique<FrmSpielfeld>(tk));
    windows.push_back(std::make_unique<FrmBilder>(tk));
    windows.push_back(std::make_unique<FrmDigital>(tk));
    windows.push_back(std::make_unique<FrmBeste>(tk));
    windows.push_back(std::make_unique<FrmMsgOk>(tk));
    windows.push_back(std::make_unique<FrmMsgJa>(tk));
    windows.push_back(std::make_unique<FrmHintergrund>(tk));
    std::set<Key> keys;
    for (const auto& w : windows) {
        collect(keys, w->picture);
        for (const auto& c : w->controls()) {
            if (const auto* image = dynamic_cast<const Image*>(c.get()))
                collect(keys, image->picture);
            if (const auto* box = dynamic_cast<const PictureBox*>(c.get()))
                collect(keys, box->picture);
        }
    }
    // The front end's own: the hand over the buttons.
    keys.emplace("spielfeld", "cursor_hand", 32, 32);
    return keys;
}

QImage render(QSvgRenderer& renderer, const QString& element, int width, int height) {
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    renderer.render(&painter, element, QRectF(0, 0, width, height));
    return image;
}

// An icon file of PNG images, which every Windows since Vista reads.
bool writeIcon(QSvgRenderer& renderer, const QString& path) {
    const int sizes[] = {16, 20, 24, 32, 40, 48, 64, 256};
    std::vector<QByteArray> images;
    for (int size : sizes) {
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        render(renderer, QStringLiteral("icon_transparent"), size, size).save(&buffer, "PNG");
        images.push_back(png);
    }
    QByteArray ico;
    const auto u16 = [&ico](int v) {
        ico.append(char(v & 0xff));
        ico.append(char((v >> 8) & 0xff));
    };
    const auto u32 = [&](int v) {
        u16(v & 0xffff);
        u16((v >> 16) & 0xffff);
    };
    u16(0);
    u16(1);  // an icon
    u16(static_cast<int>(images.size()));
    int offset = 6 + 16 * static_cast<int>(images.size());
    for (std::size_t i = 0; i < images.size(); ++i) {
        const int size = sizes[i];
        ico.append(char(size >= 256 ? 0 : size));
        ico.append(char(size >= 256 ? 0 : size));
        ico.append(char(0));  // no palette
        ico.append(char(0));
        u16(1);   // planes
        u16(32);  // bits per pixel
        u32(static_cast<int>(images[i].size()));
        u32(offset);
        offset += static_cast<int>(images[i].size());
    }
    for (const QByteArray& png : images) ico.append(png);
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(ico) == ico.size();
}

}  // namespace

int main(int argc, char* argv[]) {
    QGuiApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: make_art ASSET_DIR OUTPUT_DIR\n");
        return 2;
    }
    const QDir assets(QString::fromLocal8Bit(argv[1]));
    const QDir out(QString::fromLocal8Bit(argv[2]));
    out.mkpath(QStringLiteral("."));
    std::map<std::string, std::unique_ptr<QSvgRenderer>> sheets;
    int written = 0;
    for (const auto& [sheet, element, width, height] : picturesOfTheWindows()) {
        auto& renderer = sheets[sheet];
        if (!renderer) {
            renderer = std::make_unique<QSvgRenderer>(
                assets.filePath(QString::fromStdString(sheet) + QStringLiteral(".svg")));
        }
        const QString id = QString::fromStdString(element);
        if (!renderer->isValid() || !renderer->elementExists(id)) {
            std::fprintf(stderr, "no %s in %s.svg\n", element.c_str(), sheet.c_str());
            return 1;
        }
        for (int percent : kScales) {
            const int w = static_cast<int>(std::lround(width * percent / 100.0));
            const int h = static_cast<int>(std::lround(height * percent / 100.0));
            const QString name =
                QStringLiteral("%1.%2.%3.png").arg(QString::fromStdString(sheet), id).arg(percent);
            if (!render(*renderer, id, w, h).save(out.filePath(name))) return 1;
            ++written;
        }
    }
    if (!writeIcon(*sheets["spielfeld"], out.filePath(QStringLiteral("zifferndach.ico")))) {
        return 1;
    }
    std::printf("%d pictures and the icon in %s\n", written, argv[2]);
    return 0;
}
