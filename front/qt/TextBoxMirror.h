#pragma once

#include <QObject>
#include <QSize>
#include <map>
#include <string>

#include "ui/model/Window.h"

class QLineEdit;

namespace zd::qt {

class WindowWidget;

// The text boxes of a window as line edits on its client area. Their look,
// text, selection and focus follow the model after every event; what the
// user types, selects or focuses goes back through the toolkit.
class TextBoxMirror : public QObject {
public:
    TextBoxMirror(WindowWidget& owner, QWidget* clientArea);

    void sync(QSize clientSize);
    QLineEdit* lineEditFor(const ui::TextBox& box) const;

protected:
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    struct Edit {
        QLineEdit* widget = nullptr;
        std::string text;
        int selStart = -1;
        int selLength = -1;
    };

    void syncLook(const ui::TextBox& box, QLineEdit* e, QSize clientSize);
    void syncText(const ui::TextBox& box, Edit& edit);
    void onEdited(ui::TextBox& box);
    void onSelection(ui::TextBox& box);
    ui::TextBox* boxOf(const QLineEdit* widget) const;

    WindowWidget& owner_;
    QWidget* client_;
    std::map<ui::TextBox*, Edit> edits_;
    // While the model is being pushed into the widgets, their signals are
    // echoes, not the user.
    bool pushing_ = false;
    const ui::TextBox* typing_ = nullptr;
    const ui::TextBox* lastFocus_ = nullptr;
};

}  // namespace zd::qt
