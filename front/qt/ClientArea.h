#pragma once

#include <QWidget>

namespace zd::qt {

class WindowWidget;

// The client area of a window below its menu bar: painted from the
// window's scene, its mouse handed to the window, its tool tips shown.
class ClientArea : public QWidget {
public:
    explicit ClientArea(WindowWidget& owner);
    WindowWidget& owner() const { return owner_; }

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

}  // namespace zd::qt
