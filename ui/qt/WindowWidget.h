#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>

#include <QPoint>
#include <QRect>
#include <QWidget>

#include "ui/model/Window.h"

class QAction;
class QLineEdit;
class QMenu;
class QMenuBar;
class QPainter;

namespace zd::qt {

class ArtCache;
class QtFrontEnd;

// Where a control is drawn in its window's client area, in logical pixels:
// its own rectangle, and the part of the client area its containers let it
// show in.
struct Placement {
    QRect rect;
    QRect clip;
};

// Twips to logical pixels.
int toPixels(int twips);
Placement placementOf(const ui::Control& control, QSize clientSize);

// Draws the client area of a model window: background, picture and the
// controls in order, each inside its containers.
void paintWindow(QPainter& painter, const ui::Window& window, ArtCache& art, qreal dpr);

// The control a mouse at `pos` is over, topmost first; controls that take
// no mouse (timers, menus, lines, shapes) are passed through.
ui::Control* controlAt(const ui::Window& window, QPoint pos, QSize clientSize);

class WindowWidget;

// The client area below the menu bar: painting, mouse, cursor and tool tips.
class ClientArea : public QWidget {
public:
    explicit ClientArea(WindowWidget& owner);

protected:
    bool event(QEvent* e) override;
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseDoubleClickEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;

private:
    WindowWidget& owner_;
};

// The top-level widget of one shown model window. It holds no state of its
// own that the model does not have; after every event it is brought in line
// with the model by syncFromModel().
class WindowWidget : public QWidget {
public:
    WindowWidget(QtFrontEnd& frontEnd, ui::Window& window);
    ~WindowWidget() override;

    // Null once the model window is gone; then the widget waits for deletion.
    ui::Window* modelWindow() const { return window_; }
    void detach();

    void syncFromModel();
    QWidget* clientArea() const;
    QMenuBar* menuBar() const { return menuBar_; }
    QSize clientSize() const;
    QLineEdit* lineEditFor(const ui::TextBox& box) const;

    // The game asked to drag the window, and the window system cannot.
    void beginManualDrag();
    void dragStarted() { dragged_ = true; }

protected:
    bool event(QEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;
    void closeEvent(QCloseEvent* e) override;
    void moveEvent(QMoveEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;

private:
    friend class ClientArea;

    struct Edit {
        QLineEdit* widget = nullptr;
        std::string text;
        int selStart = -1;
        int selLength = -1;
    };

    void buildMenus();
    // A menu for `item`, with its entries below it.
    void fillMenu(QMenu* menu, ui::MenuItem& item);
    void addMenuItems(QMenu* menu, const std::vector<ui::MenuItem*>& items);
    QAction* makeAction(ui::MenuItem& item, QMenu* parentMenu);
    void syncMenus();
    void syncEdits();
    void syncGeometry();
    void applyFlags();
    void onMenu(ui::MenuItem& item);
    void onEdited(ui::TextBox& box);
    void onSelection(ui::TextBox& box);
    bool handleKey(QKeyEvent* e);
    std::size_t paintKey() const;

    // Mouse input from the client area.
    void onPress(QMouseEvent* e);
    void onRelease(QMouseEvent* e);
    void onMouseMove(QMouseEvent* e);
    void updateCursor(ui::Control* over);

    QtFrontEnd& frontEnd_;
    ui::Window* window_;
    QMenuBar* menuBar_ = nullptr;
    ClientArea* client_ = nullptr;
    std::map<const ui::MenuItem*, QAction*> actions_;
    std::map<const ui::TextBox*, Edit> edits_;
    const ui::TextBox* typing_ = nullptr;
    bool pushing_ = false;
    const ui::TextBox* lastFocus_ = nullptr;

    std::optional<Qt::WindowFlags> appliedFlags_;
    std::optional<QPoint> appliedPos_;
    int appliedLeft_ = 0;
    int appliedTop_ = 0;
    QSize appliedSize_;
    std::optional<std::string> appliedCaption_;
    const ui::PictureData* appliedIcon_ = nullptr;
    std::size_t appliedPaintKey_ = 0;
    bool painted_ = false;

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
