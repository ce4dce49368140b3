#include "front/win32/Art.h"

#include <cmath>

namespace zd::win32 {

namespace {

constexpr int kScales[] = {100, 125, 150, 200, 300};

template <class T>
struct Released {
    T* p = nullptr;
    ~Released() {
        if (p) p->Release();
    }
    T** operator&() { return &p; }
    T* operator->() const { return p; }
    explicit operator bool() const { return p != nullptr; }
};

int scaledBy(int base, int percent) {
    return static_cast<int>(std::lround(base * percent / 100.0));
}

}  // namespace

Art::Art() {
    const HRESULT started = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    comStarted_ = SUCCEEDED(started);
    CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&wic_));
}

Art::~Art() {
    if (wic_) wic_->Release();
    if (comStarted_) CoUninitialize();
}

const Bitmap* Art::picture(const ui::PictureData& p, int width, int height, int percent) {
    return picture(p.sheet, p.element, p.widthPx, p.heightPx, width, height, percent);
}

const Bitmap* Art::picture(const std::string& sheet, const std::string& element, int baseWidth,
                           int baseHeight, int width, int height, int percent) {
    if (width <= 0 || height <= 0 || element.empty()) return nullptr;
    Key key{sheet, element, width, height};
    if (auto it = cache_.find(key); it != cache_.end()) {
        return it->second.pixels.empty() ? nullptr : &it->second;
    }
    // The rendering made for this size (or scale), else the next larger one.
    const int wanted = percent;
    percent = kScales[std::size(kScales) - 1];
    for (int p : kScales) {
        const bool large =
            wanted > 0 ? p >= wanted
                       : scaledBy(baseWidth, p) >= width && scaledBy(baseHeight, p) >= height;
        if (large) {
            percent = p;
            break;
        }
    }
    Bitmap& bitmap = cache_[key];
    const std::string name = sheet + "_" + element + "_" + std::to_string(percent);
    if (!decode(name, width, height, bitmap)) bitmap = Bitmap{};
    return bitmap.pixels.empty() ? nullptr : &bitmap;
}

bool Art::decode(const std::string& resource, int width, int height, Bitmap& out) {
    if (!wic_) return false;
    HRSRC found = FindResourceA(nullptr, resource.c_str(), MAKEINTRESOURCEA(10));  // RT_RCDATA
    if (!found) return false;
    HGLOBAL loaded = LoadResource(nullptr, found);
    const DWORD size = SizeofResource(nullptr, found);
    auto* bytes = static_cast<BYTE*>(LockResource(loaded));
    if (!bytes || size == 0) return false;

    Released<IWICStream> stream;
    Released<IWICBitmapDecoder> decoder;
    Released<IWICBitmapFrameDecode> frame;
    Released<IWICFormatConverter> converter;
    if (FAILED(wic_->CreateStream(&stream)) || FAILED(stream->InitializeFromMemory(bytes, size)) ||
        FAILED(wic_->CreateDecoderFromStream(stream.p, nullptr, WICDecodeMetadataCacheOnDemand,
                                             &decoder)) ||
        FAILED(decoder->GetFrame(0, &frame)) || FAILED(wic_->CreateFormatConverter(&converter)) ||
        FAILED(converter->Initialize(frame.p, GUID_WICPixelFormat32bppPBGRA,
                                     WICBitmapDitherTypeNone, nullptr, 0,
                                     WICBitmapPaletteTypeCustom))) {
        return false;
    }
    IWICBitmapSource* source = converter.p;
    UINT w = 0;
    UINT h = 0;
    converter->GetSize(&w, &h);
    Released<IWICBitmapScaler> scaler;
    if (static_cast<int>(w) != width || static_cast<int>(h) != height) {
        if (FAILED(wic_->CreateBitmapScaler(&scaler)) ||
            FAILED(scaler->Initialize(converter.p, static_cast<UINT>(width),
                                      static_cast<UINT>(height), WICBitmapInterpolationModeFant))) {
            return false;
        }
        source = scaler.p;
    }
    out.width = width;
    out.height = height;
    out.pixels.assign(static_cast<std::size_t>(width) * height, 0);
    const UINT stride = static_cast<UINT>(width) * 4;
    return SUCCEEDED(source->CopyPixels(nullptr, stride, stride * static_cast<UINT>(height),
                                        reinterpret_cast<BYTE*>(out.pixels.data())));
}

}  // namespace zd::win32
