// Turns one Markdown file with pictures into an A4 PDF, in the look of the
// game: Liberation Sans, dark blue headings, pictures fitted to the page,
// page numbers at the foot.      make_pdf INPUT.md OUTPUT.pdf
//
// Pictures are found relative to the Markdown file. A picture is as large on
// paper as its own resolution says (a 192 dpi screenshot of a window at
// scale 2 comes out as large as the window at scale 1), and never wider
// than the text.
#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QScreen>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFragment>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>

#include <cmath>
#include <cstdio>
#include <functional>

namespace {

const QColor kHeading(0x1a, 0x2a, 0x6c);
const QColor kText(0x22, 0x22, 0x22);
const QColor kRule(0xb8, 0xbe, 0xd4);
const QColor kTableHead(0xe4, 0xe8, 0xf4);
const QColor kFoot(0x66, 0x6e, 0x8a);
const QString kSans = QStringLiteral("Liberation Sans");
const QString kMono = QStringLiteral("Liberation Mono");

// The page, in millimetres.
constexpr double kPageWidthMm = 210.0;
constexpr double kPageHeightMm = 297.0;
constexpr double kMarginSideMm = 22.0;
constexpr double kMarginTopMm = 20.0;
constexpr double kMarginBottomMm = 22.0;
// The page number sits this far below the text.
constexpr double kFootGapMm = 9.0;
constexpr double kBodyPoints = 11.0;

int fail(const char* what, const QString& detail = {}) {
    std::fprintf(stderr, "make_pdf: %s%s%s\n", what, detail.isEmpty() ? "" : ": ",
                 qPrintable(detail));
    return 1;
}

// The document is laid out in the units Qt text layout uses without a
// paint device: pixels of the screen's logical resolution.
class Units {
public:
    explicit Units(qreal layoutDpi) : dpi_(layoutDpi) {}
    qreal fromMm(double mm) const { return mm / 25.4 * dpi_; }
    qreal fromPoints(double pt) const { return pt / 72.0 * dpi_; }
    qreal dpi() const { return dpi_; }

private:
    qreal dpi_;
};

void forEachBlock(QTextDocument& doc, const std::function<void(QTextBlock)>& f) {
    for (QTextBlock b = doc.begin(); b.isValid(); b = b.next()) f(b);
}

void forEachTable(QTextFrame* frame, const std::function<void(QTextTable*)>& f) {
    for (QTextFrame* child : frame->childFrames()) {
        if (auto* table = qobject_cast<QTextTable*>(child)) f(table);
        forEachTable(child, f);
    }
}

void styleBlocks(QTextDocument& doc, const Units& u) {
    forEachBlock(doc, [&](QTextBlock block) {
        QTextCursor cursor(block);
        QTextBlockFormat bf = block.blockFormat();
        const int level = bf.headingLevel();
        const bool inTable = cursor.currentTable() != nullptr;
        const bool inList = block.textList() != nullptr;
        QTextCharFormat cf;
        if (level > 0) {
            const qreal sizes[] = {0, 21, 14.5, 12.5, 11.5, 11, 11};
            cf.setFontPointSize(sizes[std::min(level, 6)]);
            cf.setFontWeight(QFont::Bold);
            cf.setForeground(kHeading);
            bf.setTopMargin(u.fromPoints(level == 1 ? 0 : 15));
            bf.setBottomMargin(u.fromPoints(level == 1 ? 12 : 5));
            bf.setLineHeight(100, QTextBlockFormat::SingleHeight);
        } else {
            cf.setForeground(kText);
            bf.setLineHeight(118, QTextBlockFormat::ProportionalHeight);
            if (inTable) {
                bf.setTopMargin(0);
                bf.setBottomMargin(0);
            } else if (inList) {
                bf.setTopMargin(0);
                bf.setBottomMargin(u.fromPoints(3));
            } else {
                bf.setTopMargin(0);
                bf.setBottomMargin(u.fromPoints(7));
            }
        }
        cursor.setBlockFormat(bf);
        cursor.select(QTextCursor::BlockUnderCursor);
        // BlockUnderCursor takes the separator before the block too; the
        // formats only touch the block's own characters.
        QTextCursor own(block);
        own.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        own.mergeCharFormat(cf);
        if (level > 0) {
            QTextCharFormat whole = cf;
            cursor.setBlockCharFormat(whole);
        }
    });
}

void styleCode(QTextDocument& doc) {
    forEachBlock(doc, [&](QTextBlock block) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (!fragment.isValid() || !fragment.charFormat().fontFixedPitch()) continue;
            QTextCursor c(&doc);
            c.setPosition(fragment.position());
            c.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
            QTextCharFormat f;
            f.setFontFamilies(QStringList{kMono});
            f.setFontPointSize(kBodyPoints - 1);
            f.setBackground(QColor(0xf0, 0xf1, 0xf6));
            c.mergeCharFormat(f);
        }
    });
}

void styleTables(QTextDocument& doc, const Units& u) {
    forEachTable(doc.rootFrame(), [&](QTextTable* table) {
        QTextTableFormat tf = table->format();
        tf.setBorder(0.8);
        tf.setBorderBrush(kRule);
        tf.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        tf.setBorderCollapse(true);
        tf.setCellSpacing(0);
        tf.setCellPadding(u.fromPoints(4));
        tf.setWidth(QTextLength(QTextLength::PercentageLength, 100));
        tf.setHeaderRowCount(1);
        tf.setTopMargin(u.fromPoints(3));
        tf.setBottomMargin(u.fromPoints(10));
        table->setFormat(tf);
        for (int col = 0; col < table->columns(); ++col) {
            QTextTableCell cell = table->cellAt(0, col);
            QTextCharFormat cf = cell.format();
            cf.setBackground(kTableHead);
            cell.setFormat(cf);
            QTextCursor c = cell.firstCursorPosition();
            c.setPosition(cell.lastCursorPosition().position(), QTextCursor::KeepAnchor);
            QTextCharFormat bold;
            bold.setFontWeight(QFont::Bold);
            bold.setForeground(kHeading);
            c.mergeCharFormat(bold);
        }
    });
}

// Loads every picture, gives it its size on paper and centres a picture
// that stands alone in its paragraph. False if one cannot be read.
bool placeImages(QTextDocument& doc, const Units& u, qreal textWidth, const QString& baseDir) {
    bool ok = true;
    forEachBlock(doc, [&](QTextBlock block) {
        bool onlyImages = true;
        bool anyImage = false;
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (!fragment.isValid()) continue;
            if (!fragment.charFormat().isImageFormat()) {
                if (!fragment.text().trimmed().isEmpty()) onlyImages = false;
                continue;
            }
            anyImage = true;
            QTextImageFormat f = fragment.charFormat().toImageFormat();
            const QString path = QFileInfo(baseDir + QLatin1Char('/') + f.name()).absoluteFilePath();
            QImage image(path);
            if (image.isNull()) {
                fail("cannot read the picture", path);
                ok = false;
                continue;
            }
            doc.addResource(QTextDocument::ImageResource, QUrl(f.name()), image);
            const qreal imageDpi =
                image.dotsPerMeterX() > 0 ? image.dotsPerMeterX() * 0.0254 : 96.0;
            qreal width = image.width() * u.dpi() / imageDpi;
            qreal height = image.height() * u.dpi() / imageDpi;
            if (width > textWidth) {
                height *= textWidth / width;
                width = textWidth;
            }
            f.setWidth(width);
            f.setHeight(height);
            QTextCursor c(&doc);
            c.setPosition(fragment.position());
            c.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
            c.setCharFormat(f);
        }
        if (anyImage && onlyImages) {
            QTextCursor c(block);
            QTextBlockFormat bf = block.blockFormat();
            bf.setAlignment(Qt::AlignHCenter);
            bf.setLineHeight(100, QTextBlockFormat::SingleHeight);
            bf.setTopMargin(u.fromPoints(4));
            bf.setBottomMargin(u.fromPoints(12));
            c.setBlockFormat(bf);
        }
    });
    return ok;
}

int pageOf(qreal y, qreal pageHeight) { return static_cast<int>(std::floor(y / pageHeight)); }

// A heading never ends a page: it goes over to the text it heads. Also a
// short paragraph that introduces a picture stays with it.
void keepHeadingsWithText(QTextDocument& doc, qreal pageHeight) {
    for (int round = 0; round < 20; ++round) {
        bool changed = false;
        QAbstractTextDocumentLayout* layout = doc.documentLayout();
        for (QTextBlock b = doc.begin(); b.isValid(); b = b.next()) {
            if (b.blockFormat().headingLevel() == 0) continue;
            if (b.blockFormat().pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore) continue;
            const QTextBlock next = b.next();
            if (!next.isValid()) continue;
            const QRectF here = layout->blockBoundingRect(b);
            const QRectF there = layout->blockBoundingRect(next);
            // The first line of what follows, on the same page as the heading?
            qreal firstLineBottom = there.top();
            if (next.layout() && next.layout()->lineCount() > 0) {
                const QTextLine line = next.layout()->lineAt(0);
                firstLineBottom = there.top() + line.y() + line.height();
            } else {
                firstLineBottom = there.bottom();
            }
            if (pageOf(here.top(), pageHeight) != pageOf(firstLineBottom - 1, pageHeight)) {
                QTextCursor c(b);
                QTextBlockFormat bf = b.blockFormat();
                bf.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
                c.setBlockFormat(bf);
                changed = true;
                break;  // the layout below has moved; look again
            }
        }
        if (!changed) return;
    }
}

QString titleOf(const QTextDocument& doc) {
    for (QTextBlock b = doc.begin(); b.isValid(); b = b.next()) {
        if (b.blockFormat().headingLevel() == 1) return b.text();
    }
    return {};
}

}  // namespace

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: make_pdf INPUT.md OUTPUT.pdf\n");
        return 2;
    }
    const QString input = QString::fromLocal8Bit(argv[1]);
    const QString output = QString::fromLocal8Bit(argv[2]);
    QFile file(input);
    if (!file.open(QIODevice::ReadOnly)) return fail("cannot read", input);
    const QString markdown = QString::fromUtf8(file.readAll());

    qreal layoutDpi = 96.0;
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        layoutDpi = screen->logicalDotsPerInchY();
    }
    const Units u(layoutDpi);
    const qreal textWidth = u.fromMm(kPageWidthMm - 2 * kMarginSideMm);
    const qreal textHeight = u.fromMm(kPageHeightMm - kMarginTopMm - kMarginBottomMm);

    QTextDocument doc;
    doc.setUseDesignMetrics(true);
    doc.setDocumentMargin(0);
    QFont body(kSans);
    body.setPointSizeF(kBodyPoints);
    body.setStyleHint(QFont::SansSerif);
    doc.setDefaultFont(body);
    doc.setIndentWidth(u.fromMm(6));
    doc.setMarkdown(markdown, QTextDocument::MarkdownDialectGitHub);

    styleBlocks(doc, u);
    styleCode(doc);
    styleTables(doc, u);
    if (!placeImages(doc, u, textWidth, QFileInfo(input).absolutePath())) return 1;

    doc.setPageSize(QSizeF(textWidth, textHeight));
    keepHeadingsWithText(doc, textHeight);
    const int pages = doc.pageCount();

    QPdfWriter writer(output);
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                     QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter));
    writer.setResolution(600);
    writer.setTitle(titleOf(doc));
    writer.setCreator(QStringLiteral("Zifferndach"));

    QPainter painter;
    if (!painter.begin(&writer)) return fail("cannot write", output);
    const qreal scale = writer.resolution() / layoutDpi;
    QFont foot(kSans);
    foot.setPointSizeF(9);
    for (int page = 0; page < pages; ++page) {
        if (page > 0) writer.newPage();
        painter.save();
        painter.scale(scale, scale);
        painter.translate(u.fromMm(kMarginSideMm), u.fromMm(kMarginTopMm) - page * textHeight);
        const QRectF visible(0, page * textHeight, textWidth, textHeight);
        painter.setClipRect(visible);
        QAbstractTextDocumentLayout::PaintContext context;
        context.clip = visible;
        context.palette.setColor(QPalette::Text, kText);
        doc.documentLayout()->draw(&painter, context);
        painter.restore();

        // The foot, in the writer's own units so that its font has its
        // size in points: a thin rule, the title left, the page right.
        const auto mm = [&writer](double v) { return v / 25.4 * writer.resolution(); };
        const qreal footTop = mm(kPageHeightMm - kMarginBottomMm + kFootGapMm);
        const qreal left = mm(kMarginSideMm);
        const qreal width = mm(kPageWidthMm - 2 * kMarginSideMm);
        painter.setPen(QPen(kRule, mm(0.2)));
        painter.drawLine(QPointF(left, footTop - mm(2)), QPointF(left + width, footTop - mm(2)));
        painter.setFont(foot);
        painter.setPen(kFoot);
        const QRectF line(left, footTop, width, mm(6));
        painter.drawText(line, Qt::AlignLeft | Qt::AlignTop, titleOf(doc));
        painter.drawText(line, Qt::AlignRight | Qt::AlignTop,
                         QStringLiteral("Seite %1 von %2").arg(page + 1).arg(pages));
    }
    painter.end();
    std::printf("%s  %d %s\n", qPrintable(output), pages, pages == 1 ? "Seite" : "Seiten");
    return 0;
}
