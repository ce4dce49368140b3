#include "ui/model/Picture.h"

namespace zd::ui {

Picture PictureFactory::make(std::string sheet, std::string element, int widthPx, int heightPx,
                             std::string origin) {
    auto data = std::make_shared<PictureData>();
    data->sheet = std::move(sheet);
    data->element = std::move(element);
    data->widthPx = widthPx;
    data->heightPx = heightPx;
    data->handle = nextHandle_++;
    data->origin = std::move(origin);
    return data;
}

}  // namespace zd::ui
