#include "ui/forms/Banks.h"

#include <string>

namespace zd::ui {

namespace {

std::string origin(const std::string& window, const char* name, int index) {
    std::string o = window + "." + name;
    if (index >= 0) o += "(" + std::to_string(index) + ")";
    return o;
}

}  // namespace

Image& FrmBilder::bank(const char* name, int index, const char* element, int widthPx,
                       int heightPx) {
    Image& img = add<Image>(name, index);
    img.Width = widthPx * kTwipsPerPixel;
    img.Height = heightPx * kTwipsPerPixel;
    if (element) {
        img.picture = toolkit().pictures().make("bilder", element, widthPx, heightPx,
                                                origin(this->name(), name, index));
    }
    return img;
}

FrmBilder::FrmBilder(Toolkit& tk)
    : Window(tk, "frmBilder"),
      cmdHilfeAuswahl(bank("cmdHilfeAuswahl", -1, "btn_hilfe", 96, 42)),
      cmdHilfeGruen(bank("cmdHilfeGruen", -1, "btn_hilfe_green", 96, 42)),
      cmdBeschreibungenAuswahl(bank("cmdBeschreibungenAuswahl", -1, "btn_info", 96, 42)),
      cmdallgemeinGruen(bank("cmdallgemeinGruen", -1, "btn_info_green", 96, 42)) {
    titleBar = false;
    for (int i = 0; i <= 6; ++i) {
        const std::string element = "die_" + std::to_string(i);
        imgWurf.put(i, bank("imgWurf", i, element.c_str(), 69, 66));
    }
    for (int i = 0; i <= 3; ++i) {
        const std::string element = "spin_" + std::to_string(i);
        imgDreh.put(i, bank("imgDreh", i, element.c_str(), 69, 66));
    }
    imgPfeilLinks.put(0, bank("imgPfeilLinks", 0, "arrow_left_yellow", 33, 24));
    imgPfeilLinks.put(1, bank("imgPfeilLinks", 1, "arrow_left_red", 33, 24));
    imgPfeilLinks.put(2, bank("imgPfeilLinks", 2, nullptr, 33, 24));
    imgPfeilrechts.put(0, bank("imgPfeilrechts", 0, "arrow_right_red", 33, 24));
    imgPfeilrechts.put(1, bank("imgPfeilrechts", 1, "arrow_right_yellow", 33, 24));
    imgPfeilrechts.put(2, bank("imgPfeilrechts", 2, nullptr, 33, 24));
}

FrmDigital::FrmDigital(Toolkit& tk) : Window(tk, "frmDigital") {
    titleBar = false;
    for (int i = 0; i <= 10; ++i) {
        const std::string digit = i == 10 ? "blank" : std::to_string(i);
        Image& green = add(imgDiggi, "imgDiggi", i);
        green.Move(0, 0, 210, 420);
        green.picture = tk.pictures().make("digital", "digit_green_" + digit, 14, 28,
                                           origin(name(), "imgDiggi", i));
        Image& red = add(imgRot, "imgRot", i);
        red.Move(0, 0, 210, 420);
        red.picture = tk.pictures().make("digital", "digit_red_" + digit, 14, 28,
                                         origin(name(), "imgRot", i));
    }
}

}  // namespace zd::ui
