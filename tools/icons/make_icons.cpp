// Renders the program's icon from its SVG art into the PNG sizes a desktop
// menu asks for.   make_icons ASSET_DIR OUTPUT_DIR
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

int main(int argc, char* argv[]) {
    QGuiApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: make_icons ASSET_DIR OUTPUT_DIR\n");
        return 2;
    }
    QSvgRenderer renderer(QDir(argv[1]).filePath(QStringLiteral("spielfeld.svg")));
    if (!renderer.isValid() || !renderer.elementExists(QStringLiteral("icon_transparent"))) {
        std::fprintf(stderr, "no icon in %s\n", argv[1]);
        return 1;
    }
    for (int size : {16, 24, 32, 48, 64, 128, 256}) {
        QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        renderer.render(&painter, QStringLiteral("icon_transparent"), QRectF(0, 0, size, size));
        painter.end();
        const QString dir =
            QStringLiteral("%1/%2x%2").arg(QString::fromLocal8Bit(argv[2])).arg(size);
        QDir().mkpath(dir);
        if (!image.save(dir + QStringLiteral("/zifferndach.png"))) return 1;
        std::printf("%s/zifferndach.png\n", qPrintable(dir));
    }
    return 0;
}
