#include "ui/view/Scene.h"

#include <algorithm>

#include "ui/view/Overloaded.h"
#include "ui/view/Placement.h"

namespace zd::view {

namespace {}  // namespace

Look lookOf(const ui::Control& c, Size clientSize) {
    if (!c.shown()) return {};
    const auto [rect, clip] = placementOf(c, clientSize);
    if (const auto* label = dynamic_cast<const ui::Label*>(&c)) {
        return TextLook{.rect = rect,
                        .clip = clip,
                        .caption = label->Caption,
                        .fore = label->ForeColor,
                        .back = label->BackColor,
                        .transparent = label->transparent,
                        .font = label->font,
                        .align = label->Alignment};
    }
    if (const auto* image = dynamic_cast<const ui::Image*>(&c)) {
        return PictureLook{
            .rect = rect, .clip = clip, .picture = image->picture, .stretch = image->Stretch};
    }
    if (const auto* box = dynamic_cast<const ui::PictureBox*>(&c)) {
        return BoxLook{.rect = rect,
                       .clip = clip,
                       .inner = innerOf(*box, rect),
                       .picture = box->picture,
                       .back = box->BackColor,
                       .border = box->border};
    }
    if (const auto* shape = dynamic_cast<const ui::Shape*>(&c)) {
        return FrameLook{.rect = rect,
                         .clip = clip,
                         .color = shape->BorderColor,
                         .width = std::max(1, shape->BorderWidth)};
    }
    if (const auto* line = dynamic_cast<const ui::Line*>(&c)) {
        // The ends are in the container's coordinates, as the control's place.
        const Point origin = rect.topLeft() - Point{toPixels(c.Left), toPixels(c.Top)};
        return LineLook{.clip = clip,
                        .from = origin + Point{toPixels(line->X1), toPixels(line->Y1)},
                        .to = origin + Point{toPixels(line->X2), toPixels(line->Y2)},
                        .color = line->BorderColor,
                        .width = std::max(1, line->BorderWidth)};
    }
    return {};
}

Rect boundsOf(const Look& look) {
    return std::visit(Overloaded{
                          [](std::monostate) { return Rect{}; },
                          [](const LineLook& l) {
                              const int w = l.width;
                              return intersect(spanning(l.from, l.to).adjusted(-w, -w, w, w),
                                               l.clip);
                          },
                          [](const auto& l) { return intersect(l.rect, l.clip); },
                      },
                      look);
}

std::string captionLines(const std::string& caption) {
    std::string out;
    out.reserve(caption.size());
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] != '\r') {
            out += caption[i];
            continue;
        }
        out += '\n';
        if (i + 1 < caption.size() && caption[i + 1] == '\n') ++i;
    }
    return out;
}

const ui::Control* markedControl(const ui::Window& window, bool keyboardUsed) {
    const ui::Control* active = window.activeControl();
    if (!keyboardUsed || !active || dynamic_cast<const ui::TextBox*>(active)) return nullptr;
    return active;
}

std::vector<Rect> Scene::refresh(const ui::Window& window, const ui::Control* marked) {
    const Backdrop backdrop{clientSizeOf(window), window.BackColor, window.picture};
    const auto& controls = window.controls();
    std::vector<Rect> changed;
    if (!(backdrop == backdrop_) || looks_.size() != controls.size()) {
        backdrop_ = backdrop;
        looks_.assign(controls.size(), Look{});
        changed.push_back(Rect{0, 0, backdrop.size.width, backdrop.size.height});
    }
    for (std::size_t i = 0; i < controls.size(); ++i) {
        Look now = lookOf(*controls[i], backdrop.size);
        if (now == looks_[i]) continue;
        // Where it was and where it is now.
        for (const Rect& r : {boundsOf(looks_[i]), boundsOf(now)}) {
            if (!r.empty()) changed.push_back(r);
        }
        looks_[i] = std::move(now);
    }
    Rect mark;
    if (marked && marked->shown()) {
        const Placement place = placementOf(*marked, backdrop.size);
        if (!intersect(place.rect, place.clip).empty()) {
            mark = intersect(place.rect.adjusted(-kMarkGap, -kMarkGap, kMarkGap, kMarkGap),
                             Rect{0, 0, backdrop.size.width, backdrop.size.height});
        }
    }
    if (!(mark == mark_)) {
        for (const Rect& r : {mark_, mark}) {
            if (!r.empty()) changed.push_back(r);
        }
        mark_ = mark;
    }
    return changed;
}

}  // namespace zd::view
