#pragma once

#include <QPoint>
#include <QSize>
#include <QWidget>
#include <memory>
#include <optional>
#include <string>

#include "front/qt/ClientScene.h"
#include "front/qt/Placement.h"
#include "ui/model/Window.h"

class QLineEdit;
class QMenuBar;

namespace zd::qt {

class ClientArea;
class WindowAccess;
class MenuMirror;
class QtFrontEnd;
class TextBoxMirror;

// The top-level widget of one shown model window: its flags, title, icon
// and place, the mouse and the keys. It holds no state of its own that the
// model does not have; after every event it is brought in line with the
// model by syncFromModel(), its client area repainted where it changed.
class WindowWidget : public QWidget {
public:
    WindowWidget(QtFrontEnd& frontEnd, ui::Window& window);
    ~WindowWidget() override;

    // Null once the model window is gone; then the widget waits for deletion.
    ui::Window* modelWindow() const { return window_; }
    void detach();
    QtFrontEnd& frontEnd() const { return frontEnd_; }

    void syncFromModel();
    QWidget* clientArea() const;
    QMenuBar* menuBar() const;
    QSize clientSize() const;
    // How the client area lies on the screen's pixels, for the hit test.
    PixelGrid pixelGrid() const;
    QLineEdit* lineEditFor(const ui::TextBox& box) const;
    const ClientScene& scene() const { return scene_; }
    // What a screen reader finds in the window.
    WindowAccess& access() const { return *access_; }

    // The game asked to drag the window, and the window system cannot.
    void beginManualDrag();
    void dragStarted() { dragged_ = true; }

    // A key for the window: Alt with a letter, or a key its KeyDown takes.
    bool handleKey(QKeyEvent* e);

    // Mouse input from the client area.
    void onPress(QMouseEvent* e);
    void onRelease(QMouseEvent* e);
    void onMouseMove(QMouseEvent* e);

protected:
    bool event(QEvent* e) override;
    void closeEvent(QCloseEvent* e) override;
    void moveEvent(QMoveEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    bool focusNextPrevChild(bool next) override;

private:
    void syncTitleAndIcon();
    void syncGeometry();
    void applyFlags();
    void updateCursor(ui::Control* over);
    // Where the mouse of an event from the client area is, in its
    // coordinates, as exactly as the window system said.
    QPointF clientPos(const QMouseEvent* e) const;

    QtFrontEnd& frontEnd_;
    ui::Window* window_;
    ClientArea* client_ = nullptr;
    std::unique_ptr<MenuMirror> menus_;
    std::unique_ptr<TextBoxMirror> edits_;
    std::unique_ptr<WindowAccess> access_;
    ClientScene scene_;

    std::optional<Qt::WindowFlags> appliedFlags_;
    std::optional<QPoint> appliedPos_;
    int appliedLeft_ = 0;
    int appliedTop_ = 0;
    QSize appliedSize_;
    std::optional<std::string> appliedCaption_;
    const ui::PictureData* appliedIcon_ = nullptr;

    // Mouse state: the control pressed, if any, takes the moves and the
    // release, as the mouse is captured by what it went down on.
    ui::Control* pressed_ = nullptr;
    bool pressedWindow_ = false;
    bool dragged_ = false;
    bool manualDrag_ = false;
    QPoint dragOffset_;
    bool handShown_ = false;
};

}  // namespace zd::qt
