#include "front/qt/TextBoxMirror.h"

#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QRegion>
#include <algorithm>

#include "front/qt/Guard.h"
#include "front/qt/Placement.h"
#include "front/qt/QtFrontEnd.h"
#include "front/qt/QtValues.h"
#include "front/qt/WindowWidget.h"
#include "ui/model/Toolkit.h"

namespace zd::qt {

TextBoxMirror::TextBoxMirror(WindowWidget& owner, QWidget* clientArea)
    : owner_(owner), client_(clientArea) {
    for (const auto& c : owner.modelWindow()->controls()) {
        auto* box = dynamic_cast<ui::TextBox*>(c.get());
        if (!box) continue;
        auto* edit = new QLineEdit(client_);
        edit->installEventFilter(this);
        edit->hide();
        connect(edit, &QLineEdit::textEdited, this,
                [this, box] { guarded([this, box] { onEdited(*box); }); });
        connect(edit, &QLineEdit::cursorPositionChanged, this,
                [this, box] { guarded([this, box] { onSelection(*box); }); });
        connect(edit, &QLineEdit::selectionChanged, this,
                [this, box] { guarded([this, box] { onSelection(*box); }); });
        edits_[box].widget = edit;
    }
}

QLineEdit* TextBoxMirror::lineEditFor(const ui::TextBox& box) const {
    auto it = edits_.find(const_cast<ui::TextBox*>(&box));
    return it == edits_.end() ? nullptr : it->second.widget;
}

ui::TextBox* TextBoxMirror::boxOf(const QLineEdit* widget) const {
    for (const auto& [box, edit] : edits_) {
        if (edit.widget == widget) return box;
    }
    return nullptr;
}

void TextBoxMirror::sync(QSize clientSize) {
    const ui::Window* window = owner_.modelWindow();
    if (!window) return;
    pushing_ = true;
    for (auto& [box, edit] : edits_) {
        syncLook(*box, edit.widget, clientSize);
        syncText(*box, edit);
    }
    const auto* box = dynamic_cast<const ui::TextBox*>(window->activeControl());
    const ui::TextBox* focus = box && !box->Locked ? box : nullptr;
    if (focus != lastFocus_) {
        lastFocus_ = focus;
        QLineEdit* wanted = focus ? lineEditFor(*focus) : nullptr;
        if (wanted) wanted->setFocus(Qt::OtherFocusReason);
        // Moved on to a button: the keys go to the window again.
        for (const auto& entry : edits_) {
            QLineEdit* e = entry.second.widget;
            if (e != wanted && e->hasFocus()) e->clearFocus();
        }
    }
    pushing_ = false;
}

void TextBoxMirror::syncLook(const ui::TextBox& box, QLineEdit* e, QSize clientSize) {
    const Placement place = placementOf(box, clientSize);
    const QRect visible = place.rect & place.clip;
    if (e->geometry() != place.rect) e->setGeometry(place.rect);
    const QRegion mask =
        visible == place.rect ? QRegion() : QRegion(visible.translated(-place.rect.topLeft()));
    if (e->mask() != mask) {
        if (mask.isEmpty()) {
            e->clearMask();
        } else {
            e->setMask(mask);
        }
    }
    const QFont font = fontOf(box.font);
    if (e->font() != font) e->setFont(font);
    const Qt::Alignment align = horizontal(box.Alignment) | Qt::AlignVCenter;
    if (e->alignment() != align) e->setAlignment(align);
    if (e->hasFrame() != box.border) e->setFrame(box.border);
    if (e->isReadOnly() != box.Locked) e->setReadOnly(box.Locked);
    // Out of the tab order it can still be clicked into. A locked box takes
    // no focus at all: a focus frame would make it look editable.
    const Qt::FocusPolicy policy = box.Locked    ? Qt::NoFocus
                                   : box.TabStop ? Qt::StrongFocus
                                                 : Qt::ClickFocus;
    if (e->focusPolicy() != policy) e->setFocusPolicy(policy);
    if (box.Locked && e->hasFocus()) e->clearFocus();
    if (e->isEnabled() != box.takesInput()) e->setEnabled(box.takesInput());
    const bool shown = box.shown() && !visible.isEmpty();
    if (e->isVisibleTo(client_) != shown) e->setVisible(shown);
}

void TextBoxMirror::syncText(const ui::TextBox& box, Edit& edit) {
    QLineEdit* e = edit.widget;
    const bool textChanged = box.Text != edit.text;
    if (textChanged) {
        edit.text = box.Text;
        const QString t = text(box.Text);
        if (e->text() != t) e->setText(t);
    }
    if (typing_ == &box) {
        // The caret stays where the user's typing left it.
        edit.selStart = box.SelStart;
        edit.selLength = box.SelLength;
    } else if (textChanged || box.SelStart != edit.selStart || box.SelLength != edit.selLength) {
        edit.selStart = box.SelStart;
        edit.selLength = box.SelLength;
        const int length = static_cast<int>(e->text().size());
        const int start = std::clamp(box.SelStart, 0, length);
        const int selected = std::clamp(box.SelLength, 0, length - start);
        if (selected > 0) {
            e->setSelection(start, selected);
        } else {
            e->setCursorPosition(start);
        }
    }
}

void TextBoxMirror::onEdited(ui::TextBox& box) {
    if (!owner_.modelWindow()) return;
    QLineEdit* e = lineEditFor(box);
    QPointer<TextBoxMirror> self(this);
    typing_ = &box;
    const bool taken = owner_.frontEnd().toolkit().type(box, e->text().toStdString());
    if (!self) return;
    typing_ = nullptr;
    if (!owner_.modelWindow()) return;
    Edit& edit = edits_[&box];
    if (!taken) {
        pushing_ = true;
        e->setText(text(box.Text));
        pushing_ = false;
    }
    edit.text = box.Text;
    onSelection(box);
}

void TextBoxMirror::onSelection(ui::TextBox& box) {
    if (pushing_ || !owner_.modelWindow()) return;
    const QLineEdit* e = lineEditFor(box);
    // The model's selection follows the user's, as it is read live.
    const bool selected = e->hasSelectedText();
    owner_.frontEnd().toolkit().selected(box, selected ? e->selectionStart() : e->cursorPosition(),
                                         selected ? static_cast<int>(e->selectedText().size()) : 0);
    Edit& edit = edits_[&box];
    edit.selStart = box.SelStart;
    edit.selLength = box.SelLength;
}

bool TextBoxMirror::eventFilter(QObject* watched, QEvent* e) {
    auto* edit = qobject_cast<QLineEdit*>(watched);
    if (!edit || !owner_.modelWindow()) return false;
    if (e->type() == QEvent::FocusIn && !pushing_) {
        // Where the user puts the focus, the model has it too.
        ui::TextBox* box = boxOf(edit);
        if (box && owner_.frontEnd().toolkit().focused(*box)) lastFocus_ = box;
    } else if (e->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(e);
        // Access keys and the way to the buttons belong to the window, not
        // to the text in the box.
        if ((key->modifiers() & Qt::AltModifier) || key->key() == Qt::Key_Tab ||
            key->key() == Qt::Key_Backtab) {
            bool handled = false;
            guarded([&] { handled = owner_.handleKey(key); });
            if (handled) return true;
        }
    }
    return false;
}

}  // namespace zd::qt
