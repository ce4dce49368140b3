#include "front/drive/Printing.h"

#include "ui/forms/frmSpielfeldDesign.h"

namespace zd::drive {

namespace {

std::string printablePicture(const ui::Picture& p) {
    return p ? p->origin : "(none)";
}

template <class C>
const C* as(const ui::Control& c) {
    return dynamic_cast<const C*>(&c);
}

// What every control has.
std::optional<std::string> common(const ui::Control& c, std::string_view prop) {
    if (prop == "Visible") return printableBool(c.Visible);
    if (prop == "Enabled") return printableBool(c.Enabled);
    if (prop == "Left") return std::to_string(c.Left);
    if (prop == "Top") return std::to_string(c.Top);
    if (prop == "Width") return std::to_string(c.Width);
    if (prop == "Height") return std::to_string(c.Height);
    return std::nullopt;
}

// What only some kinds of control have.
std::optional<std::string> own(const ui::Control& c, std::string_view prop,
                               std::optional<int> arg) {
    if (const auto* label = as<ui::Label>(c); label && prop == "Caption") {
        return printableText(label->Caption);
    }
    if (const auto* image = as<ui::Image>(c); image && prop == "Picture") {
        return printablePicture(image->picture);
    }
    if (const auto* box = as<ui::PictureBox>(c); box && prop == "Picture") {
        return printablePicture(box->picture);
    }
    if (const auto* list = as<ui::ListBox>(c)) {
        if (prop == "ListCount") return std::to_string(list->ListCount());
        if (prop == "List" && arg) return printableText(list->List(*arg));
    }
    if (const auto* text = as<ui::TextBox>(c)) {
        if (prop == "Text") return printableText(text->Text);
        if (prop == "SelStart") return std::to_string(text->SelStart);
        if (prop == "SelLength") return std::to_string(text->SelLength);
        if (prop == "Locked") return printableBool(text->Locked);
        if (prop == "TabStop") return printableBool(text->TabStop);
    }
    if (const auto* button = as<ui::CommandButton>(c); button && prop == "Caption") {
        return printableText(button->Caption);
    }
    if (const auto* timer = as<ui::Timer>(c)) {
        // A timer's own Enabled goes through the timer queue.
        if (prop == "Enabled") return printableBool(timer->Enabled);
        if (prop == "Interval") return std::to_string(timer->Interval);
    }
    if (const auto* item = as<ui::MenuItem>(c)) {
        if (prop == "Caption") return printableText(item->Caption);
        if (prop == "Checked") return printableBool(item->Checked);
    }
    return std::nullopt;
}

}  // namespace

std::string printableText(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
            out += "\\r\\n";
            ++i;
        } else {
            out += text[i];
        }
    }
    return out;
}

std::string printableBool(bool value) {
    return value ? "True" : "False";
}

std::optional<std::string> printProperty(const ui::Window& w, std::string_view prop) {
    // The playing field's own variables read like properties.
    if (const auto* field = dynamic_cast<const ui::FrmSpielfeld*>(&w)) {
        if (prop == "Wurf") return std::to_string(field->Wurf);
        if (prop == "DrehBild") return std::to_string(field->DrehBild);
        if (prop == "PfeilBild") return std::to_string(field->PfeilBild);
    }
    if (prop == "Caption") return printableText(w.Caption);
    if (prop == "Visible") return printableBool(w.visible());
    if (prop == "Left") return std::to_string(w.Left);
    if (prop == "Top") return std::to_string(w.Top);
    if (prop == "Width") return std::to_string(w.Width);
    if (prop == "Height") return std::to_string(w.Height);
    if (prop == "Enabled") return printableBool(true);
    if (prop == "Picture") return printablePicture(w.picture);
    if (prop == "ActiveControl") {
        const ui::Control* c = w.activeControl();
        if (!c) return "(none)";
        return c->name() + (c->index() >= 0 ? "(" + std::to_string(c->index()) + ")" : "");
    }
    return std::nullopt;
}

std::optional<std::string> printProperty(const ui::Control& c, std::string_view prop,
                                         std::optional<int> arg) {
    if (auto value = own(c, prop, arg)) return value;
    return common(c, prop);
}

}  // namespace zd::drive
