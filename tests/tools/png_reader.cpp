#include "png_reader.h"

#include <memory>
#include <stdexcept>

#include "platform/windows.h"

#include <objbase.h>
#include <wincodec.h>

namespace dialwright::testing {
namespace {

struct Releaser {
    void operator()(IUnknown* object) const noexcept { object->Release(); }
};

template <class Interface, class Create>
std::unique_ptr<Interface, Releaser> Made(Create create) {
    Interface* made = nullptr;
    if (FAILED(create(&made))) throw std::runtime_error("no picture can be read from these bytes");
    return std::unique_ptr<Interface, Releaser>(made);
}

}  // namespace

tools::Picture DecodePng(const std::string& bytes) {
    ::CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    const auto factory = Made<IWICImagingFactory>([](IWICImagingFactory** made) {
        return ::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                  reinterpret_cast<void**>(made));
    });
    std::string copy = bytes;
    const auto stream = Made<IWICStream>([&](IWICStream** made) { return factory->CreateStream(made); });
    stream->InitializeFromMemory(reinterpret_cast<BYTE*>(copy.data()), static_cast<DWORD>(copy.size()));
    const auto decoder = Made<IWICBitmapDecoder>([&](IWICBitmapDecoder** made) {
        return factory->CreateDecoderFromStream(stream.get(), nullptr, WICDecodeMetadataCacheOnDemand, made);
    });
    const auto frame =
        Made<IWICBitmapFrameDecode>([&](IWICBitmapFrameDecode** made) { return decoder->GetFrame(0, made); });
    const auto converter =
        Made<IWICFormatConverter>([&](IWICFormatConverter** made) { return factory->CreateFormatConverter(made); });
    converter->Initialize(frame.get(), GUID_WICPixelFormat32bppBGR, WICBitmapDitherTypeNone, nullptr, 0,
                          WICBitmapPaletteTypeCustom);
    UINT width = 0;
    UINT height = 0;
    converter->GetSize(&width, &height);
    tools::Picture picture(static_cast<int>(width), static_cast<int>(height));
    const UINT size = width * height * 4;
    if (FAILED(converter->CopyPixels(nullptr, width * 4, size, reinterpret_cast<BYTE*>(picture.pixels.data())))) {
        throw std::runtime_error("the pixels cannot be read");
    }
    for (tools::Colour& colour : picture.pixels) colour &= 0xFFFFFFU;
    return picture;
}

}  // namespace dialwright::testing
