#pragma once

#include <QAbstractNativeEventFilter>
#include <QCursor>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <map>
#include <memory>
#include <set>
#include <vector>

#include "front/qt/ArtCache.h"
#include "ui/model/Toolkit.h"
#include "ui/view/Resync.h"

namespace zd::qt {

class WindowWidget;

// Shows the toolkit's windows as Qt widgets: one top-level widget for every
// model window that is loaded and visible, brought in line with the model
// after every event, and the real input of the user fed back into it.
class QtFrontEnd : public ui::FrontEnd {
public:
    // Rendered art is kept in `artDiskCache` between runs, when given.
    explicit QtFrontEnd(ui::Toolkit& toolkit, QString artDiskCache = {});
    ~QtFrontEnd() override;
    QtFrontEnd(const QtFrontEnd&) = delete;
    QtFrontEnd& operator=(const QtFrontEnd&) = delete;

    ui::Toolkit& toolkit() { return tk_; }
    ArtCache& art() { return art_; }

    // Brings the widgets in line with the model.
    void sync();
    WindowWidget* widgetFor(const ui::Window& w) const;

    // From the toolkit.
    void settled() override { sync(); }
    void modalBegins(ui::Window& w) override;
    // Shown again: restored if the window system minimised it, and raised.
    void broughtToFront(ui::Window& w) override;
    void windowGone(ui::Window& w) override;
    void dragWindow(ui::Window& w) override;
    void programEnded() override;

    // From the widgets.
    void activatedBySystem();
    const QCursor& handCursor(qreal dpr);

private:
    void syncOnce();
    void checkActivation();
    void dropWidget(const ui::Window* w);

    ui::Toolkit& tk_;
    ArtCache art_;
    std::map<const ui::Window*, QPointer<WindowWidget>> widgets_;
    std::set<const ui::Window*> modal_;
    std::set<const ui::Window*> toFront_;
    std::vector<ui::Window*> appliedStacking_;
    ui::Window* appliedActive_ = nullptr;
    // The window we last asked the window system to activate, and when: an
    // activation of another one reported soon after is a stale report.
    ui::Window* requestedActive_ = nullptr;
    QElapsedTimer requestedAt_;
    bool activationCheckQueued_ = false;
    view::Resync resync_;
    std::map<qreal, QCursor> handCursors_;
    std::unique_ptr<QAbstractNativeEventFilter> focusWatch_;
    QObject context_;
};

}  // namespace zd::qt
