#include "look/png.h"

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <vector>

#include "platform/windows.h"

#include <objbase.h>
#include <wincodec.h>

namespace dialwright::tools {
namespace {

struct Releaser {
    void operator()(IUnknown* object) const noexcept { object->Release(); }
};
template <class Interface>
using ComPointer = std::unique_ptr<Interface, Releaser>;

void Want(HRESULT result, const char* step) {
    if (SUCCEEDED(result)) return;
    char text[96];
    std::snprintf(text, sizeof text, "no PNG can be made: %s fails with 0x%08lX", step,
                  static_cast<unsigned long>(result));
    throw std::runtime_error(text);
}

/// Calls that give an interface through their last argument.
template <class Interface, class Create>
ComPointer<Interface> Made(const char* step, Create create) {
    Interface* made = nullptr;
    Want(create(&made), step);
    return ComPointer<Interface>(made);
}

/// The component library on this thread, for as long as this lives.
class ComLibrary {
public:
    ComLibrary() : ours(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_MULTITHREADED))) {}
    ~ComLibrary() {
        if (ours) ::CoUninitialize();
    }
    ComLibrary(const ComLibrary&) = delete;
    ComLibrary& operator=(const ComLibrary&) = delete;

private:
    bool ours;
};

constexpr UINT kBytesPerPixel = 3;

/// Blue, green, red for each pixel.
std::vector<BYTE> BytesOf(const Picture& picture) {
    std::vector<BYTE> bytes;
    bytes.reserve(picture.pixels.size() * kBytesPerPixel);
    for (const Colour colour : picture.pixels) {
        bytes.push_back(static_cast<BYTE>(colour));
        bytes.push_back(static_cast<BYTE>(colour >> 8U));
        bytes.push_back(static_cast<BYTE>(colour >> 16U));
    }
    return bytes;
}

void WriteFrame(IWICBitmapEncoder& encoder, const Picture& picture) {
    const auto frame = Made<IWICBitmapFrameEncode>(
        "a frame", [&](IWICBitmapFrameEncode** made) { return encoder.CreateNewFrame(made, nullptr); });
    const auto width = static_cast<UINT>(picture.width);
    const auto height = static_cast<UINT>(picture.height);
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    Want(frame->Initialize(nullptr), "Initialize");
    Want(frame->SetSize(width, height), "SetSize");
    Want(frame->SetPixelFormat(&format), "SetPixelFormat");
    std::vector<BYTE> bytes = BytesOf(picture);
    Want(frame->WritePixels(height, width * kBytesPerPixel, static_cast<UINT>(bytes.size()), bytes.data()),
         "WritePixels");
    Want(frame->Commit(), "Commit");
}

std::string ContentOf(IStream& stream) {
    STATSTG status{};
    Want(stream.Stat(&status, STATFLAG_NONAME), "Stat");
    std::string content(static_cast<std::size_t>(status.cbSize.QuadPart), '\0');
    Want(stream.Seek({}, STREAM_SEEK_SET, nullptr), "Seek");
    ULONG read = 0;
    Want(stream.Read(content.data(), static_cast<ULONG>(content.size()), &read), "Read");
    content.resize(read);
    return content;
}

}  // namespace

std::string EncodePng(const Picture& picture) {
    const ComLibrary library;
    const auto factory = Made<IWICImagingFactory>("the imaging component", [](IWICImagingFactory** made) {
        return ::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                  reinterpret_cast<void**>(made));
    });
    const auto stream =
        Made<IStream>("a stream", [](IStream** made) { return ::CreateStreamOnHGlobal(nullptr, TRUE, made); });
    const auto encoder = Made<IWICBitmapEncoder>("an encoder", [&](IWICBitmapEncoder** made) {
        return factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, made);
    });
    Want(encoder->Initialize(stream.get(), WICBitmapEncoderNoCache), "Initialize");
    WriteFrame(*encoder, picture);
    Want(encoder->Commit(), "Commit");
    return ContentOf(*stream);
}

}  // namespace dialwright::tools
