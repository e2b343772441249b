#include "images.h"

#include <windows.h>

#include <wincodec.h>

#include <algorithm>
#include <vector>

#include "tool_error.h"

namespace skinc {

namespace {

template <class Interface>
class Com {
public:
    Com() = default;
    ~Com() {
        if (m_pointer) m_pointer->Release();
    }
    Com(const Com&) = delete;
    Com& operator=(const Com&) = delete;
    Interface** Out() { return &m_pointer; }
    Interface* operator->() const { return m_pointer; }
    Interface* Get() const { return m_pointer; }

private:
    Interface* m_pointer = nullptr;
};

// Larger images have no place in a skin and would only exhaust memory.
constexpr UINT kMaxSide = 8192;

class PngReader {
public:
    PngReader(const std::filesystem::path& file, const std::string& manifest, const std::string& key)
        : m_file(file), m_manifest(manifest), m_key(key) {}

    std::unique_ptr<CBitmap> Read() {
        Com<IWICImagingFactory> factory;
        Check(::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                 IID_IWICImagingFactory, reinterpret_cast<void**>(factory.Out())),
              "the platform's imaging component is not to be had");
        Com<IWICBitmapDecoder> decoder;
        Check(factory->CreateDecoderFromFilename(m_file.c_str(), nullptr, GENERIC_READ,
                                                 WICDecodeMetadataCacheOnDemand, decoder.Out()),
              "is no image that can be read; a PNG or BMP file was expected");
        Com<IWICBitmapFrameDecode> frame;
        Check(decoder->GetFrame(0, frame.Out()), "holds no picture; a PNG or BMP file was expected");
        Com<IWICFormatConverter> converter;
        Check(factory->CreateFormatConverter(converter.Out()), "the platform can't convert images");
        Check(converter->Initialize(frame.Get(), GUID_WICPixelFormat32bppBGRA, WICBitmapDitherTypeNone,
                                    nullptr, 0.0, WICBitmapPaletteTypeCustom),
              "is in a form that the platform can't convert; save it as 24-bit PNG");
        UINT width = 0;
        UINT height = 0;
        Check(converter->GetSize(&width, &height), "has no size");
        if (width == 0 || height == 0 || width > kMaxSide || height > kMaxSide)
            Fail("is " + std::to_string(width) + "x" + std::to_string(height) + "; 1 to " +
                 std::to_string(kMaxSide) + " pixels a side were expected");
        std::vector<BYTE> pixels(std::size_t{width} * height * 4);
        Check(converter->CopyPixels(nullptr, width * 4, static_cast<UINT>(pixels.size()), pixels.data()),
              "is damaged; save it anew");
        return ToBitmap(pixels, width, height);
    }

private:
    [[noreturn]] void Fail(const std::string& what) const {
        throw ToolError(m_manifest, m_key, "'" + m_file.string() + "' " + what);
    }
    void Check(HRESULT result, const char* what) const {
        if (FAILED(result)) Fail(what);
    }

    std::unique_ptr<CBitmap> ToBitmap(const std::vector<BYTE>& pixels, UINT width, UINT height) const {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = static_cast<LONG>(width);
        info.bmiHeader.biHeight = -static_cast<LONG>(height);
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 24;
        void* bits = nullptr;
        auto bitmap = std::make_unique<CBitmap>();
        if (!bitmap->Attach(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0)))
            Fail("is too large");
        const std::size_t stride = (std::size_t{width} * 3 + 3) & ~std::size_t{3};
        for (UINT y = 0; y < height; ++y) {
            const BYTE* from = pixels.data() + std::size_t{y} * width * 4;
            BYTE* to = static_cast<BYTE*>(bits) + y * stride;
            for (UINT x = 0; x < width; ++x, from += 4, to += 3) {
                if (from[3] != 0xFF)
                    Fail("is transparent at " + std::to_string(x) + "," + std::to_string(y) +
                         "; opaque pixels were expected: paint what is to be seen through in the key colour");
                std::copy_n(from, 3, to);
            }
        }
        return bitmap;
    }

    std::filesystem::path m_file;
    std::string m_manifest;
    std::string m_key;
};

bool HasExtension(const std::filesystem::path& file, const wchar_t* extension) {
    return ::lstrcmpiW(file.extension().c_str(), extension) == 0;
}

}  // namespace

std::unique_ptr<CBitmap> ReadImage(const std::filesystem::path& file, const std::string& manifest,
                                   const std::string& key) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        throw ToolError(manifest, key,
                        "'" + file.string() + "' does not exist; a PNG or BMP file was expected");
    if (HasExtension(file, L".bmp")) {
        auto bitmap = std::make_unique<CBitmap>();
        constexpr UINT kFlags = LR_LOADFROMFILE | LR_CREATEDIBSECTION;
        if (bitmap->Attach(::LoadImageW(nullptr, file.c_str(), IMAGE_BITMAP, 0, 0, kFlags))) return bitmap;
        throw ToolError(
            manifest, key,
            "'" + file.string() + "' is no bitmap that can be read; an uncompressed BMP file was expected");
    }
    return PngReader(file, manifest, key).Read();
}

}  // namespace skinc
