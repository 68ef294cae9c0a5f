#include "PngEncoder.h"

#include <initguid.h>
#include <objbase.h>
#include <wincodec.h>

#include <vector>

namespace {

constexpr double kDotsPerInch = 96.0;

// Releases a COM object at the end of a block.
template <class Interface>
class Held {
public:
    Held() = default;
    ~Held() {
        if (m_p != nullptr) {
            m_p->Release();
        }
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    Interface** operator&() { return &m_p; }
    Interface* operator->() const { return m_p; }
    operator Interface*() const { return m_p; }

private:
    Interface* m_p = nullptr;
};

// Initializes COM for the length of a block. A thread that has it in another mode keeps that one.
class ComScope {
public:
    ComScope() : m_Begun(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
    ~ComScope() {
        if (m_Begun) {
            ::CoUninitialize();
        }
    }
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;

private:
    bool m_Begun;
};

std::vector<BYTE> PackRow(const DWORD* row, int width, PngEncoder::Depth depth) {
    std::vector<BYTE> packed;
    if (depth == PngEncoder::OneBit) {
        packed.resize(static_cast<size_t>(width + 7) / 8);
        for (int x = 0; x < width; ++x) {
            if ((row[x] & 0x8000) != 0) {
                packed[static_cast<size_t>(x) / 8] =
                    static_cast<BYTE>(packed[static_cast<size_t>(x) / 8] | (0x80 >> (x % 8)));
            }
        }
        return packed;
    }
    packed.reserve(static_cast<size_t>(width) * 4);
    for (int x = 0; x < width; ++x) {
        packed.push_back(static_cast<BYTE>(row[x]));
        packed.push_back(static_cast<BYTE>(row[x] >> 8));
        packed.push_back(static_cast<BYTE>(row[x] >> 16));
        if (depth == PngEncoder::WithAlpha) {
            packed.push_back(static_cast<BYTE>(row[x] >> 24));
        }
    }
    return packed;
}

bool Written(IWICBitmapFrameEncode* frame, const DWORD* pixels, int width, int height, PngEncoder::Depth depth) {
    const GUID wanted = depth == PngEncoder::OneBit  ? GUID_WICPixelFormatBlackWhite
                        : depth == PngEncoder::Plain ? GUID_WICPixelFormat24bppBGR
                                                     : GUID_WICPixelFormat32bppBGRA;
    WICPixelFormatGUID format = wanted;
    if (FAILED(frame->Initialize(nullptr)) ||
        FAILED(frame->SetSize(static_cast<UINT>(width), static_cast<UINT>(height))) ||
        FAILED(frame->SetResolution(kDotsPerInch, kDotsPerInch)) || FAILED(frame->SetPixelFormat(&format)) ||
        format != wanted) {
        return false;
    }
    for (int y = 0; y < height; ++y) {
        std::vector<BYTE> row = PackRow(pixels + static_cast<size_t>(y) * static_cast<size_t>(width), width, depth);
        const UINT bytes = static_cast<UINT>(row.size());
        if (FAILED(frame->WritePixels(1, bytes, bytes, row.data()))) {
            return false;
        }
    }
    return SUCCEEDED(frame->Commit());
}

} // namespace

bool PngEncoder::Encode(const DWORD* pixels, int width, int height, Depth depth, CByteArray& file) {
    file.RemoveAll();
    const ComScope com;
    Held<IWICImagingFactory> factory;
    Held<IWICBitmapEncoder> encoder;
    Held<IWICBitmapFrameEncode> frame;
    Held<IStream> stream;
    if (FAILED(::CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                  reinterpret_cast<void**>(&factory))) ||
        FAILED(::CreateStreamOnHGlobal(nullptr, TRUE, &stream)) ||
        FAILED(factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &encoder)) ||
        FAILED(encoder->Initialize(stream, WICBitmapEncoderNoCache)) ||
        FAILED(encoder->CreateNewFrame(&frame, nullptr)) || !Written(frame, pixels, width, height, depth) ||
        FAILED(encoder->Commit())) {
        return false;
    }
    STATSTG facts = {};
    const LARGE_INTEGER begin = {};
    if (FAILED(stream->Stat(&facts, STATFLAG_NONAME)) || FAILED(stream->Seek(begin, STREAM_SEEK_SET, nullptr))) {
        return false;
    }
    const ULONG length = static_cast<ULONG>(facts.cbSize.QuadPart);
    file.SetSize(static_cast<INT_PTR>(length));
    ULONG got = 0;
    return SUCCEEDED(stream->Read(file.GetData(), length, &got)) && got == length;
}
