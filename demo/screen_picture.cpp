#include "screen_picture.h"

#include <wincodec.h>

#include <algorithm>
#include <cstdio>
#include <memory>

#include "failure.h"
#include "handles.h"

namespace gallery {

namespace {

constexpr char backdrop_class[] = "GalleryBackdrop";
constexpr COLORREF backdrop_colour = RGB(58, 110, 165);
constexpr WORD bits_per_pixel = 24;

struct ComRelease {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <class Interface>
using ComObject = std::unique_ptr<Interface, ComRelease>;

/* COM on this thread, for as long as a picture is written. */
class ComApartment {
public:
    ComApartment() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    ~ComApartment() {
        if (SUCCEEDED(result_)) CoUninitialize();
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

private:
    HRESULT result_;
};

/* Deletes the unfinished file unless it was kept. */
class UnfinishedFile {
public:
    explicit UnfinishedFile(std::filesystem::path path) : path_(std::move(path)) {}
    ~UnfinishedFile() {
        if (!path_.empty()) DeleteFileW(path_.c_str());
    }
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;

    const std::filesystem::path& path() const { return path_; }
    bool rename_to(const std::filesystem::path& final_path) {
        if (!MoveFileExW(path_.c_str(), final_path.c_str(), MOVEFILE_REPLACE_EXISTING)) return false;
        path_.clear();
        return true;
    }

private:
    std::filesystem::path path_;
};

void require(HRESULT result, const char* step) {
    if (SUCCEEDED(result)) return;
    char text[128];
    std::snprintf(text, sizeof(text), "The picture can't be written: %s fails with 0x%08lX", step,
                  static_cast<unsigned long>(result));
    throw Failure(text);
}

/* Calls `make` with a place for an interface pointer, and owns what comes of it. */
template <class Interface, class Make>
ComObject<Interface> obtain(const char* step, Make make) {
    Interface* object = nullptr;
    require(make(&object), step);
    return ComObject<Interface>(object);
}

void encode_png(const std::filesystem::path& file, UINT width, UINT height, UINT stride,
                const std::vector<BYTE>& pixels) {
    const ComApartment apartment;
    const auto factory = obtain<IWICImagingFactory>("starting the imaging component", [](auto** out) {
        return CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                                IID_IWICImagingFactory, reinterpret_cast<void**>(out));
    });
    const auto stream =
        obtain<IWICStream>("making a stream", [&](auto** out) { return factory->CreateStream(out); });
    require(stream->InitializeFromFilename(file.c_str(), GENERIC_WRITE), "making the file");
    const auto encoder = obtain<IWICBitmapEncoder>("finding the PNG encoder", [&](auto** out) {
        return factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, out);
    });
    require(encoder->Initialize(stream.get(), WICBitmapEncoderNoCache), "starting the PNG encoder");
    const auto frame = obtain<IWICBitmapFrameEncode>(
        "adding a frame", [&](auto** out) { return encoder->CreateNewFrame(out, nullptr); });
    require(frame->Initialize(nullptr), "starting the frame");
    require(frame->SetSize(width, height), "setting the size");
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    require(frame->SetPixelFormat(&format), "setting the pixel format");
    if (!IsEqualGUID(format, GUID_WICPixelFormat24bppBGR))
        throw Failure("The picture can't be written: the PNG encoder takes no 24-bit pixels");
    // The encoder takes a pointer to pixels that it doesn't change.
    require(frame->WritePixels(height, stride, static_cast<UINT>(pixels.size()),
                               const_cast<BYTE*>(pixels.data())),
            "writing the pixels");
    require(frame->Commit(), "finishing the frame");
    require(encoder->Commit(), "finishing the file");
}

}  // namespace

ScreenPicture::ScreenPicture(const RECT& area)
    : width_(area.right - area.left), height_(area.bottom - area.top), stride_((width_ * 3 + 3) & ~3u) {
    if (area.right <= area.left || area.bottom <= area.top) throw Failure("Nothing is on the screen to take");
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = static_cast<LONG>(width_);
    info.bmiHeader.biHeight = -static_cast<LONG>(height_);  // rows from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = bits_per_pixel;
    info.bmiHeader.biCompression = BI_RGB;

    const ScreenDc screen;
    const OwnedMemoryDc memory(CreateCompatibleDC(screen));
    void* bits = nullptr;
    const OwnedBitmap bitmap(CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!memory || !bitmap) fail_with_last_error("The memory for a picture can't be had");
    const Selection selection(memory.get(), bitmap.get());
    if (!BitBlt(memory.get(), 0, 0, static_cast<int>(width_), static_cast<int>(height_), screen, area.left,
                area.top, SRCCOPY))
        fail_with_last_error("The screen can't be read");
    GdiFlush();
    const auto* const first = static_cast<const BYTE*>(bits);
    pixels_.assign(first, first + static_cast<size_t>(stride_) * height_);
    // Some desktops hand out a blank picture instead of a refusal. No page is of one colour.
    if (is_one_colour()) throw Failure("The screen gives no pixels: the picture would be blank");
}

void ScreenPicture::write(const std::filesystem::path& file) const {
    std::filesystem::path unfinished_path = file;
    unfinished_path += L".part";
    UnfinishedFile unfinished(unfinished_path);
    encode_png(unfinished.path(), width_, height_, stride_, pixels_);
    if (!unfinished.rename_to(file))
        fail_with_last_error("The picture '" + file.string() + "' can't be put in its place");
}

bool ScreenPicture::is_one_colour() const {
    for (UINT y = 0; y < height_; ++y) {
        const BYTE* const row = pixels_.data() + static_cast<size_t>(y) * stride_;
        for (UINT x = 0; x < width_; ++x) {
            if (!std::equal(row + 3 * x, row + 3 * x + 3, pixels_.data())) return false;
        }
    }
    return true;
}

Backdrop::Backdrop() {
    const HINSTANCE instance = GetModuleHandleA(nullptr);
    WNDCLASSEXA description = {};
    description.cbSize = sizeof(description);
    description.lpfnWndProc = DefWindowProcA;
    description.hInstance = instance;
    description.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    description.hbrBackground = CreateSolidBrush(backdrop_colour);  // the class deletes it
    description.lpszClassName = backdrop_class;
    if (!RegisterClassExA(&description)) fail_with_last_error("The backdrop's class can't be registered");
    window_ = CreateWindowExA(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, backdrop_class, "", WS_POPUP | WS_VISIBLE,
                              0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN), nullptr,
                              nullptr, instance, nullptr);
    if (!window_) fail_with_last_error("The backdrop can't be made");
}

Backdrop::~Backdrop() {
    DestroyWindow(window_);
    UnregisterClassA(backdrop_class, GetModuleHandleA(nullptr));
}

}  // namespace gallery
