// The library that the Explorer asks for thumbnails, in a process that it keeps for such libraries. It only hands the
// file on to the command line beside it, which draws in a process of its own.
#include "platform/com_win32.h"
// Need the one above.
#include <propsys.h>
#include <thumbcache.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <new>
#include <vector>

#include "thumbnails/providerclass.h"
#include "thumbnails/thumbnailmaker.h"

namespace {

using namespace veldra;

constexpr ULONG kPiece = 1 << 16;

std::atomic<long> g_objects = 0;  ///< while there are some, the library stays

/// Counts who uses an object, which goes with the last of them.
template <typename... Interfaces>
class CCounted : public Interfaces... {
 public:
  CCounted() { ++g_objects; }
  virtual ~CCounted() { --g_objects; }
  CCounted(const CCounted&) = delete;
  CCounted& operator=(const CCounted&) = delete;

  ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++uses_); }
  ULONG STDMETHODCALLTYPE Release() override {
    const long left = --uses_;
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

 private:
  std::atomic<long> uses_ = 1;
};

/// The command line lies beside this library.
std::wstring ProgramBesideLibrary() {
  HMODULE library = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&g_objects), &library);
  std::array<wchar_t, 4096> path = {};
  const DWORD length = GetModuleFileNameW(library, path.data(), static_cast<DWORD>(path.size()));
  const std::wstring own(path.data(), length);
  const size_t slash = own.find_last_of(L"\\/");
  return own.substr(0, slash == std::wstring::npos ? 0 : slash + 1) + L"veldra-cli.exe";
}

/// A bitmap of the system's, blue first and colours times alpha, as it wants them; null when there is no memory.
HBITMAP ToBitmap(const SImage& image) {
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = image.width;
  info.bmiHeader.biHeight = -image.height;  // the top row first
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* pixels = nullptr;
  const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
  if (bitmap == nullptr) return nullptr;
  auto* to = static_cast<uint8_t*>(pixels);
  for (size_t i = 0; i + 3 < image.rgba.size(); i += 4) {
    const unsigned alpha = image.rgba[i + 3];
    for (const size_t channel : {2, 1, 0})
      *to++ = static_cast<uint8_t>((image.rgba[i + channel] * alpha + 127) / 255);
    *to++ = static_cast<uint8_t>(alpha);
  }
  return bitmap;
}

class CThumbnailProvider final : public CCounted<IInitializeWithStream, IThumbnailProvider> {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = nullptr;
    if (id == IID_IUnknown || id == IID_IInitializeWithStream) *object = static_cast<IInitializeWithStream*>(this);
    if (id == __uuidof(IThumbnailProvider)) *object = static_cast<IThumbnailProvider*>(this);
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Initialize(IStream* stream, DWORD) override;
  HRESULT STDMETHODCALLTYPE GetThumbnail(UINT side, HBITMAP* bitmap, WTS_ALPHATYPE* alpha) override;

 private:
  HRESULT Read(IStream& stream);

  std::wstring name_;
  std::vector<uint8_t> bytes_;
  bool is_ready_ = false;
};

// No exception may reach the system; those here come of memory alone.
HRESULT STDMETHODCALLTYPE CThumbnailProvider::Initialize(IStream* stream, DWORD) try {
  if (is_ready_) return HRESULT_FROM_WIN32(ERROR_ALREADY_INITIALIZED);
  if (stream == nullptr) return E_INVALIDARG;
  STATSTG state = {};
  if (SUCCEEDED(stream->Stat(&state, STATFLAG_DEFAULT)) && state.pwcsName != nullptr) {
    name_ = state.pwcsName;
    CoTaskMemFree(state.pwcsName);
  }
  return Read(*stream);
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

HRESULT CThumbnailProvider::Read(IStream& stream) {
  std::array<uint8_t, kPiece> piece = {};
  for (;;) {
    ULONG count = 0;
    const HRESULT result = stream.Read(piece.data(), kPiece, &count);
    if (FAILED(result)) return result;
    if (count == 0) break;
    if (bytes_.size() + count > kLargestThumbnailFile) return E_FAIL;
    bytes_.insert(bytes_.end(), piece.data(), piece.data() + count);
  }
  is_ready_ = true;
  return S_OK;
}

HRESULT STDMETHODCALLTYPE CThumbnailProvider::GetThumbnail(UINT side, HBITMAP* bitmap, WTS_ALPHATYPE* alpha) try {
  if (bitmap == nullptr || alpha == nullptr) return E_INVALIDARG;
  *bitmap = nullptr;
  if (!is_ready_) return E_UNEXPECTED;
  const auto image = MakeThumbnail(ProgramBesideLibrary(), name_, bytes_, side);
  if (!image) return E_FAIL;
  *bitmap = ToBitmap(*image);
  *alpha = WTSAT_ARGB;
  return *bitmap != nullptr ? S_OK : E_OUTOFMEMORY;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

class CProviderFactory final : public CCounted<IClassFactory> {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = id == IID_IUnknown || id == IID_IClassFactory ? static_cast<IClassFactory*>(this) : nullptr;
    if (*object == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    auto* provider = new (std::nothrow) CThumbnailProvider;
    if (provider == nullptr) return E_OUTOFMEMORY;
    const HRESULT result = provider->QueryInterface(id, object);
    provider->Release();
    return result;
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    g_objects += lock != FALSE ? 1 : -1;
    return S_OK;
  }
};

}  // namespace

// The system finds these by name; thumbnails.def lists them.

STDAPI DllGetClassObject(REFCLSID class_id, REFIID id, void** object) {
  *object = nullptr;
  if (class_id != kThumbnailProvider) return CLASS_E_CLASSNOTAVAILABLE;
  auto* factory = new (std::nothrow) CProviderFactory;
  if (factory == nullptr) return E_OUTOFMEMORY;
  const HRESULT result = factory->QueryInterface(id, object);
  factory->Release();
  return result;
}

STDAPI DllCanUnloadNow() {
  return g_objects == 0 ? S_OK : S_FALSE;
}
