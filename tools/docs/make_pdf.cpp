// Turns one Markdown file with pictures into an A4 PDF, in the look of the
// game: Liberation Sans, dark blue headings, pictures fitted to the page,
// page numbers at the foot.      make_pdf INPUT.md OUTPUT.pdf
//
// Pictures are found relative to the Markdown file. A picture's size on
// paper follows its own resolution (a 192 dpi screenshot of a window at
// scale 2 comes out as large as the one at scale 1), a little reduced, and
// never wider than the text.
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
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <utility>
#include <vector>

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
// A window on paper, read from close by, looks right a little smaller than
// on the screen.
constexpr double kPictureScale = 0.8;

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
    forEachBlock(doc, [&](const QTextBlock& block) {
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
            // Extra room below each line rather than a taller line, which
            // would lift the line above its list number.
            bf.setLineHeight(u.fromPoints(2.2), QTextBlockFormat::LineDistanceHeight);
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
        // The block's own character format draws its list marker, which
        // must look the same in every item.
        QTextCharFormat marker = cf;
        if (level == 0) marker.setFontPointSize(kBodyPoints);
        cursor.mergeBlockCharFormat(marker);
        QTextCursor own(block);
        own.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        own.mergeCharFormat(cf);
    });
}

void styleCode(QTextDocument& doc) {
    // Collected first: changing a format can merge fragments under our feet.
    std::vector<std::pair<int, int>> code;
    forEachBlock(doc, [&](const QTextBlock& block) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (fragment.isValid() && fragment.charFormat().fontFixedPitch()) {
                code.emplace_back(fragment.position(), fragment.length());
            }
        }
    });
    QTextCharFormat f;
    f.setFontFamilies(QStringList{kMono});
    f.setFontPointSize(kBodyPoints - 1);
    f.setBackground(QColor(0xf0, 0xf1, 0xf6));
    for (const auto& [position, length] : code) {
        QTextCursor c(&doc);
        c.setPosition(position);
        c.setPosition(position + length, QTextCursor::KeepAnchor);
        c.mergeCharFormat(f);
    }
}

void styleTables(QTextDocument& doc, const Units& u) {
    forEachTable(doc.rootFrame(), [&](QTextTable* table) {
        // Rules between the rows only; the cells draw them.
        QTextTableFormat tf = table->format();
        tf.setBorder(0);
        tf.setBorderCollapse(true);
        tf.setCellSpacing(0);
        tf.setCellPadding(u.fromPoints(4));
        tf.setWidth(QTextLength(QTextLength::PercentageLength, 100));
        tf.setHeaderRowCount(1);
        tf.setTopMargin(u.fromPoints(3));
        tf.setBottomMargin(u.fromPoints(10));
        table->setFormat(tf);
        for (int row = 0; row < table->rows(); ++row) {
            for (int col = 0; col < table->columns(); ++col) {
                QTextTableCell cell = table->cellAt(row, col);
                QTextTableCellFormat cf = cell.format().toTableCellFormat();
                cf.setBottomBorder(row == 0 ? 1.2 : 0.7);
                cf.setBottomBorderBrush(row == 0 ? kHeading : kRule);
                cf.setBottomBorderStyle(QTextFrameFormat::BorderStyle_Solid);
                if (row == 0) cf.setBackground(kTableHead);
                cell.setFormat(cf);
            }
        }
        for (int col = 0; col < table->columns(); ++col) {
            QTextTableCell cell = table->cellAt(0, col);
            QTextCursor c = cell.firstCursorPosition();
            c.setPosition(cell.lastCursorPosition().position(), QTextCursor::KeepAnchor);
            QTextCharFormat bold;
            bold.setFontWeight(QFont::Bold);
            bold.setForeground(kHeading);
            c.mergeCharFormat(bold);
        }
    });
}

bool isPictureBlock(const QTextBlock& block) {
    bool anyImage = false;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        if (!fragment.isValid()) continue;
        if (fragment.charFormat().isImageFormat()) {
            anyImage = true;
        } else if (!fragment.text().trimmed().isEmpty()) {
            return false;
        }
    }
    return anyImage;
}

bool isAllItalic(const QTextBlock& block) {
    bool any = false;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        if (!fragment.isValid() || fragment.text().trimmed().isEmpty()) continue;
        if (!fragment.charFormat().fontItalic()) return false;
        any = true;
    }
    return any;
}

// A thin frame, so that the light edge of a window does not fade into the
// paper.
void framePicture(QImage& image) {
    if (image.format() != QImage::Format_ARGB32_Premultiplied &&
        image.format() != QImage::Format_RGB32) {
        image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    }
    const int width = std::max(1, qRound(image.dotsPerMeterX() * 0.0254 / 96.0));
    QPainter painter(&image);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x9a, 0xa0, 0xb4));
    const int w = image.width();
    const int h = image.height();
    painter.drawRect(0, 0, w, width);
    painter.drawRect(0, h - width, w, width);
    painter.drawRect(0, 0, width, h);
    painter.drawRect(w - width, 0, width, h);
}

// Loads every picture, gives it its size on paper and centres a picture
// that stands alone in its paragraph. False if one cannot be read.
bool placeImages(QTextDocument& doc, const Units& u, qreal textWidth, const QString& baseDir) {
    struct Picture {
        int position;
        int length;
        QTextImageFormat format;
    };
    std::vector<Picture> pictures;
    forEachBlock(doc, [&](const QTextBlock& block) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (fragment.isValid() && fragment.charFormat().isImageFormat()) {
                pictures.push_back({fragment.position(), fragment.length(),
                                    fragment.charFormat().toImageFormat()});
            }
        }
    });
    bool ok = true;
    for (Picture& picture : pictures) {
        QTextImageFormat& f = picture.format;
        const QString path = QFileInfo(baseDir + QLatin1Char('/') + f.name()).absoluteFilePath();
        QImage image(path);
        if (image.isNull()) {
            fail("cannot read the picture", path);
            ok = false;
            continue;
        }
        framePicture(image);
        doc.addResource(QTextDocument::ImageResource, QUrl(f.name()), image);
        const qreal imageDpi = image.dotsPerMeterX() > 0 ? image.dotsPerMeterX() * 0.0254 : 96.0;
        qreal width = image.width() * u.dpi() / imageDpi * kPictureScale;
        qreal height = image.height() * u.dpi() / imageDpi * kPictureScale;
        if (width > textWidth) {
            height *= textWidth / width;
            width = textWidth;
        }
        f.setWidth(width);
        f.setHeight(height);
        QTextCursor c(&doc);
        c.setPosition(picture.position);
        c.setPosition(picture.position + picture.length, QTextCursor::KeepAnchor);
        c.setCharFormat(f);
    }
    forEachBlock(doc, [&](const QTextBlock& block) {
        if (!isPictureBlock(block)) return;
        QTextCursor c(block);
        QTextBlockFormat bf = block.blockFormat();
        bf.setAlignment(Qt::AlignHCenter);
        bf.setLineHeight(100, QTextBlockFormat::SingleHeight);
        bf.setTopMargin(u.fromPoints(4));
        bf.setBottomMargin(u.fromPoints(12));
        c.setBlockFormat(bf);
    });
    return ok;
}

// A paragraph in italics right below a picture is its caption: small,
// grey, centred, close to the picture.
void styleCaptions(QTextDocument& doc, const Units& u) {
    for (QTextBlock b = doc.begin(); b.isValid(); b = b.next()) {
        const QTextBlock next = b.next();
        if (!next.isValid() || !isPictureBlock(b) || !isAllItalic(next)) continue;
        QTextCursor picture(b);
        QTextBlockFormat pf = b.blockFormat();
        pf.setBottomMargin(u.fromPoints(4));
        picture.setBlockFormat(pf);
        QTextCursor caption(next);
        QTextBlockFormat cf = next.blockFormat();
        cf.setAlignment(Qt::AlignHCenter);
        cf.setTopMargin(0);
        cf.setBottomMargin(u.fromPoints(14));
        cf.setLeftMargin(u.fromMm(12));
        cf.setRightMargin(u.fromMm(12));
        cf.setLineHeight(u.fromPoints(1.2), QTextBlockFormat::LineDistanceHeight);
        caption.setBlockFormat(cf);
        caption.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        QTextCharFormat f;
        f.setFontPointSize(kBodyPoints - 1.5);
        f.setForeground(QColor(0x55, 0x5b, 0x70));
        caption.mergeCharFormat(f);
    }
}

int pageOf(qreal y, qreal pageHeight) {
    return static_cast<int>(std::floor(y / pageHeight));
}

// A heading never ends a page, a picture keeps its caption, and a paragraph
// that ends in a colon stays with what it introduces: each goes over to the
// next page with what follows it. Short tables and paragraphs are kept
// whole.
bool keepsWithNext(const QTextBlock& b) {
    if (b.blockFormat().headingLevel() > 0) return true;
    const QTextBlock next = b.next();
    if (!next.isValid()) return false;
    if (isPictureBlock(b) && isAllItalic(next)) return true;
    return !b.textList() && !QTextCursor(b).currentTable() && b.text().trimmed().endsWith(u':');
}

// Where a block's first line starts and ends: a block can begin on one page
// and have its first line moved to the next.
QRectF firstLine(QAbstractTextDocumentLayout* layout, const QTextBlock& b) {
    const QRectF r = layout->blockBoundingRect(b);
    if (!b.layout() || b.layout()->lineCount() == 0) return r;
    const QTextLine line = b.layout()->lineAt(0);
    return QRectF(r.left(), r.top() + line.y(), r.width(), line.height());
}

bool breaksBefore(const QTextBlock& b) {
    return b.blockFormat().pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore;
}

// The layout follows a change only as far as it thinks it must, and after
// a table moved by a page break it may stop short. A new layout is made
// whole, before anything is measured or drawn.
QAbstractTextDocumentLayout* freshLayout(QTextDocument& doc) {
    doc.setDocumentLayout(nullptr);
    QAbstractTextDocumentLayout* layout = doc.documentLayout();
    doc.pageCount();
    return layout;
}

// Puts a page break before `b`, or before what keeps with it on its page.
void breakBefore(QAbstractTextDocumentLayout* layout, QTextBlock b, qreal pageHeight) {
    const int page = pageOf(firstLine(layout, b).top(), pageHeight);
    while (!breaksBefore(b) && b.previous().isValid() && keepsWithNext(b.previous()) &&
           pageOf(firstLine(layout, b.previous()).top(), pageHeight) == page) {
        b = b.previous();
    }
    QTextCursor c(b);
    QTextBlockFormat bf = b.blockFormat();
    bf.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    c.setBlockFormat(bf);
}

// One change at a time, as each moves everything below it.
bool keepOnePieceTogether(QTextDocument& doc, qreal pageHeight) {
    QAbstractTextDocumentLayout* layout = freshLayout(doc);
    bool changed = false;
    forEachTable(doc.rootFrame(), [&](QTextTable* table) {
        QTextTableFormat tf = table->format();
        if (changed || (tf.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore)) return;
        const QRectF r = layout->frameBoundingRect(table);
        if (r.height() > pageHeight / 3) return;
        if (pageOf(r.top(), pageHeight) == pageOf(r.bottom() - 1, pageHeight)) return;
        const QTextBlock before = table->cellAt(0, 0).firstCursorPosition().block().previous();
        if (before.isValid() && keepsWithNext(before)) {
            breakBefore(layout, before, pageHeight);
        } else {
            tf.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
            table->setFormat(tf);
        }
        changed = true;
    });
    if (changed) return true;
    for (QTextBlock b = doc.begin(); b.isValid(); b = b.next()) {
        // A short paragraph is not split either.
        const QTextLayout* lines = b.layout();
        if (lines && lines->lineCount() >= 2 && lines->lineCount() <= 4 && !breaksBefore(b) &&
            !QTextCursor(b).currentTable()) {
            const qreal top = layout->blockBoundingRect(b).top();
            const QTextLine last = lines->lineAt(lines->lineCount() - 1);
            if (pageOf(firstLine(layout, b).top(), pageHeight) !=
                pageOf(top + last.y() + last.height() - 1, pageHeight)) {
                breakBefore(layout, b, pageHeight);
                return true;
            }
        }
        if (!keepsWithNext(b) || breaksBefore(b)) continue;
        const int here = pageOf(firstLine(layout, b).top(), pageHeight);
        if (here == pageOf(firstLine(layout, b.next()).bottom() - 1, pageHeight)) continue;
        breakBefore(layout, b, pageHeight);
        return true;
    }
    return false;
}

void keepTogether(QTextDocument& doc, qreal pageHeight) {
    for (int round = 0; round < 50 && keepOnePieceTogether(doc, pageHeight); ++round) {
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
    // Whole units, so that a line moved to the next page starts exactly
    // where the clip of the page before ends.
    const qreal textHeight = std::floor(u.fromMm(kPageHeightMm - kMarginTopMm - kMarginBottomMm));

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
    styleCaptions(doc, u);

    doc.setPageSize(QSizeF(textWidth, textHeight));
    keepTogether(doc, textHeight);
    freshLayout(doc);
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
        // A picture moved to the next page starts right on the edge, and
        // its first row must not show at the foot of this one.
        const QRectF visible(0, page * textHeight, textWidth, textHeight - 0.75);
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
