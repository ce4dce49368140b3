#pragma once

#include <QPoint>
#include <QRect>
#include <QRegion>
#include <QSize>
#include <string>
#include <variant>
#include <vector>

#include "ui/model/Window.h"

class QPainter;

namespace zd::qt {

class ArtCache;

// What one control shows, in the client area's logical pixels: everything
// its painting reads and nothing more. Two equal looks paint the same
// pixels, so any change of the model that shows is a change of look.
struct TextLook {
    QRect rect, clip;
    std::string caption;
    ui::Color fore, back;
    bool transparent = true;
    ui::Font font;
    ui::Align align = ui::Align::Left;
    bool operator==(const TextLook&) const = default;
};
struct PictureLook {
    QRect rect, clip;
    ui::Picture picture;
    bool stretch = false;
    bool operator==(const PictureLook&) const = default;
};
struct BoxLook {
    QRect rect, clip, inner;
    ui::Picture picture;
    ui::Color back;
    bool border = false;
    bool operator==(const BoxLook&) const = default;
};
struct FrameLook {
    QRect rect, clip;
    ui::Color color;
    int width = 1;
    bool operator==(const FrameLook&) const = default;
};
struct LineLook {
    QRect clip;
    QPoint from, to;
    ui::Color color;
    int width = 1;
    bool operator==(const LineLook&) const = default;
};
// Nothing drawn: hidden, or a control without a face (timer, menu, list).
using Look = std::variant<std::monostate, TextLook, PictureLook, BoxLook, FrameLook, LineLook>;

Look lookOf(const ui::Control& control, QSize clientSize);
// Where a look's pixels may lie.
QRect boundsOf(const Look& look);

// A window's client area as it was last taken from the model: its
// background and the look of every control, in drawing order. The widget
// paints only from here, and repaints where a refresh found a change.
class ClientScene {
public:
    // Takes what the window shows now, with the focus mark round `marked`
    // if given; returns where that differs.
    QRegion refresh(const ui::Window& window, const ui::Control* marked = nullptr);
    // Paints the part `area` of the client area, at the density of what
    // the painter paints on.
    void paint(QPainter& painter, const QRect& area, ArtCache& art) const;

private:
    struct Backdrop {
        QSize size;
        ui::Color back;
        ui::Picture picture;
        bool operator==(const Backdrop&) const = default;
    };
    Backdrop backdrop_;
    std::vector<Look> looks_;
    QRect mark_;
};

}  // namespace zd::qt
