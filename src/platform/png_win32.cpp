#include <algorithm>
#include <array>

#include "platform/com_win32.h"
#include "platform/png_codec.h"
#include "platform/text.h"
// Needs the one above.
#include <wincodec.h>

namespace veldra::png_codec {

namespace {

constexpr UINT kPixelWidth = 4;

/// Whether all STEPS were done.
bool Well(const CComSteps& steps, SError* error) {
  if (FAILED(steps.Result()) && error != nullptr)
    error->what = Format("the system's PNG library refuses (error %08lx)", static_cast<unsigned long>(steps.Result()));
  return SUCCEEDED(steps.Result());
}

HRESULT CreateFactory(CComObject<IWICImagingFactory>& factory) {
  return factory.Create(CLSID_WICImagingFactory, IID_IWICImagingFactory);
}

/// The library's blue, green, red, alpha and our red, green, blue, alpha, one to the other.
void SwapRedAndBlue(std::vector<uint8_t>& pixels) {
  for (size_t i = 0; i + 2 < pixels.size(); i += kPixelWidth)
    std::swap(pixels[i], pixels[i + 2]);
}

UINT RowWidth(const SImage& image) {
  return static_cast<UINT>(image.width) * kPixelWidth;
}

HRESULT TakeBytes(IStream* stream, std::vector<uint8_t>& bytes) {
  STATSTG status;
  HGLOBAL memory = nullptr;
  HRESULT result = stream->Stat(&status, STATFLAG_NONAME);
  if (SUCCEEDED(result)) result = GetHGlobalFromStream(stream, &memory);
  if (FAILED(result)) return result;
  const auto* data = static_cast<const uint8_t*>(GlobalLock(memory));
  if (data == nullptr) return E_OUTOFMEMORY;
  bytes.assign(data, data + status.cbSize.QuadPart);
  GlobalUnlock(memory);
  return S_OK;
}

/// Entry by entry what the library keeps as one number of alpha, red, green, blue.
void FillTable(const std::array<WICColor, 256>& colors, UINT count, SIndexedImage& image) {
  for (size_t entry = 0; entry < colors.size(); ++entry) {
    const WICColor color = entry < count ? colors[entry] : 0xFF000000U;
    for (size_t c = 0; c < 4; ++c)
      image.table[entry * 4 + c] = static_cast<uint8_t>(color >> (c < 3 ? 16 - 8 * c : 24));
  }
}

std::array<WICColor, 256> ColorsOf(const SIndexedImage& image) {
  std::array<WICColor, 256> colors = {};
  for (size_t entry = 0; entry < colors.size(); ++entry)
    for (size_t c = 0; c < 4; ++c)
      colors[entry] |= WICColor{image.table[entry * 4 + c]} << (c < 3 ? 16 - 8 * c : 24);
  return colors;
}

/// Bits a pixel of FORMAT, which has a table; 0 for any other.
UINT BitsOf(const WICPixelFormatGUID& format) {
  if (IsEqualGUID(format, GUID_WICPixelFormat1bppIndexed)) return 1;
  if (IsEqualGUID(format, GUID_WICPixelFormat2bppIndexed)) return 2;
  if (IsEqualGUID(format, GUID_WICPixelFormat4bppIndexed)) return 4;
  return IsEqualGUID(format, GUID_WICPixelFormat8bppIndexed) ? 8 : 0;
}

/// The rows of FRAME, whose pixels are packed.
HRESULT CopyIndices(IWICBitmapFrameDecode* frame, SIndexedImage& image) {
  WICPixelFormatGUID format;
  HRESULT result = frame->GetPixelFormat(&format);
  const UINT bits = SUCCEEDED(result) ? BitsOf(format) : 0;
  if (bits == 0) return FAILED(result) ? result : E_NOTIMPL;
  const UINT row_width = (static_cast<UINT>(image.width) * bits + 7) / 8;
  std::vector<uint8_t> packed(size_t{row_width} * static_cast<size_t>(image.height));
  result = frame->CopyPixels(nullptr, row_width, static_cast<UINT>(packed.size()), packed.data());
  if (FAILED(result)) return result;
  for (size_t i = 0; i < image.indices.size(); ++i) {
    const size_t row = i / static_cast<size_t>(image.width);
    const size_t bit = i % static_cast<size_t>(image.width) * bits;
    const uint8_t byte = packed[row * row_width + bit / 8];
    image.indices[i] = static_cast<uint8_t>(byte >> (8 - bits - bit % 8) & ((1U << bits) - 1));
  }
  return S_OK;
}

/// A picture that is read, up to its only frame.
struct SReading {
  explicit SReading(std::span<const uint8_t> png);

  const CComUse com = {};
  CComObject<IWICImagingFactory> factory = {};
  CComObject<IWICStream> stream = {};
  CComObject<IWICBitmapDecoder> decoder = {};
  CComObject<IWICBitmapFrameDecode> frame = {};
  CComSteps steps = {};
};

SReading::SReading(std::span<const uint8_t> png) {
  steps.Then([&] { return CreateFactory(factory); })
      .Then([&] { return factory->CreateStream(stream.Receive()); })
      .Then([&] {
        // The interface takes no const pointer, but a decoder only reads.
        return stream->InitializeFromMemory(const_cast<BYTE*>(png.data()), static_cast<DWORD>(png.size()));
      })
      .Then([&] { return factory->CreateDecoder(GUID_ContainerFormatPng, nullptr, decoder.Receive()); })
      .Then([&] { return decoder->Initialize(stream.Get(), WICDecodeMetadataCacheOnDemand); })
      .Then([&] { return decoder->GetFrame(0, frame.Receive()); });
}

/// A picture of WIDTH x HEIGHT pixels of FORMAT that is written, up to what its frame holds.
struct SWriting {
  SWriting(int width, int height, const WICPixelFormatGUID& format);
  /// PIXELS, in rows of ROW_WIDTH bytes, are the last that the frame wants.
  bool Finish(UINT row_width, std::vector<uint8_t>& pixels, std::vector<uint8_t>& png, SError* error);

  const CComUse com = {};
  UINT height = 0;
  CComObject<IWICImagingFactory> factory = {};
  CComObject<IStream> stream = {};
  CComObject<IWICBitmapEncoder> encoder = {};
  CComObject<IWICBitmapFrameEncode> frame = {};
  CComSteps steps = {};
};

SWriting::SWriting(int width, int rows, const WICPixelFormatGUID& format) : height(static_cast<UINT>(rows)) {
  WICPixelFormatGUID given = format;
  steps.Then([&] { return CreateFactory(factory); })
      .Then([&] { return CreateStreamOnHGlobal(nullptr, TRUE, stream.Receive()); })
      .Then([&] { return factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, encoder.Receive()); })
      .Then([&] { return encoder->Initialize(stream.Get(), WICBitmapEncoderNoCache); })
      .Then([&] { return encoder->CreateNewFrame(frame.Receive(), nullptr); })
      .Then([&] { return frame->Initialize(nullptr); })
      .Then([&] { return frame->SetSize(static_cast<UINT>(width), height); })
      .Then([&] { return frame->SetPixelFormat(&given); })
      .Then([&] { return IsEqualGUID(given, format) ? S_OK : E_NOTIMPL; });
}

bool SWriting::Finish(UINT row_width, std::vector<uint8_t>& pixels, std::vector<uint8_t>& png, SError* error) {
  steps.Then([&] { return frame->WritePixels(height, row_width, static_cast<UINT>(pixels.size()), pixels.data()); })
      .Then([&] { return frame->Commit(); })
      .Then([&] { return encoder->Commit(); })
      .Then([&] { return TakeBytes(stream.Get(), png); });
  return Well(steps, error);
}

}  // namespace

bool Decode(std::span<const uint8_t> png, SImage& image, SError* error) {
  SReading reading(png);
  CComObject<IWICFormatConverter> converter;
  reading.steps.Then([&] { return reading.factory->CreateFormatConverter(converter.Receive()); })
      .Then([&] {
        return converter->Initialize(reading.frame.Get(), GUID_WICPixelFormat32bppBGRA, WICBitmapDitherTypeNone,
                                     nullptr, 0, WICBitmapPaletteTypeCustom);
      })
      .Then([&] {
        return converter->CopyPixels(nullptr, RowWidth(image), static_cast<UINT>(image.rgba.size()), image.rgba.data());
      });
  SwapRedAndBlue(image.rgba);
  return Well(reading.steps, error);
}

bool Encode(const SImage& image, std::vector<uint8_t>& png, SError* error) {
  SWriting writing(image.width, image.height, GUID_WICPixelFormat32bppBGRA);
  std::vector<uint8_t> pixels = image.rgba;
  SwapRedAndBlue(pixels);
  return writing.Finish(RowWidth(image), pixels, png, error);
}

bool Decode(std::span<const uint8_t> png, SIndexedImage& image, SError* error) {
  SReading reading(png);
  CComObject<IWICPalette> palette;
  std::array<WICColor, 256> colors = {};
  UINT count = 0;
  reading.steps.Then([&] { return CopyIndices(reading.frame.Get(), image); })
      .Then([&] { return reading.factory->CreatePalette(palette.Receive()); })
      .Then([&] { return reading.frame->CopyPalette(palette.Get()); })
      .Then([&] { return palette->GetColors(static_cast<UINT>(colors.size()), colors.data(), &count); });
  FillTable(colors, count, image);
  return Well(reading.steps, error);
}

bool Encode(const SIndexedImage& image, std::vector<uint8_t>& png, SError* error) {
  SWriting writing(image.width, image.height, GUID_WICPixelFormat8bppIndexed);
  CComObject<IWICPalette> palette;
  std::array<WICColor, 256> colors = ColorsOf(image);
  std::vector<uint8_t> pixels = image.indices;
  writing.steps.Then([&] { return writing.factory->CreatePalette(palette.Receive()); })
      .Then([&] { return palette->InitializeCustom(colors.data(), static_cast<UINT>(colors.size())); })
      .Then([&] { return writing.frame->SetPalette(palette.Get()); });
  return writing.Finish(static_cast<UINT>(image.width), pixels, png, error);
}

}  // namespace veldra::png_codec
