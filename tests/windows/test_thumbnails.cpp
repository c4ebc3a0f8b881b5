#include <gtest/gtest.h>

#include "platform/com_win32.h"
#include "platform/paths.h"
#include "support/testfiles.h"
#include "thumbnails/providerclass.h"
// Need the system's header, which the first one includes in the right order.
#include <propsys.h>
#include <shlwapi.h>
#include <thumbcache.h>

namespace veldra::testing {

namespace {

constexpr int kSide = 64;

/// As the Explorer does it, but for the registry: the library's factory, a provider, a stream, a bitmap.
class CThumbnailTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::wstring library = ToWide(JoinPath(DirectoryPart(FromWide(ProgramPath())), "veldra-thumbnails.dll"));
    library_ = LoadLibraryW(library.c_str());
    ASSERT_NE(library_, nullptr);
    const auto get = reinterpret_cast<HRESULT(STDMETHODCALLTYPE*)(REFCLSID, REFIID, void**)>(
        reinterpret_cast<void*>(GetProcAddress(library_, "DllGetClassObject")));
    ASSERT_NE(get, nullptr);
    CComObject<IClassFactory> factory;
    ASSERT_EQ(get(kThumbnailProvider, IID_IClassFactory, reinterpret_cast<void**>(factory.Receive())), S_OK);
    ASSERT_EQ(
        factory->CreateInstance(nullptr, __uuidof(IThumbnailProvider), reinterpret_cast<void**>(provider_.Receive())),
        S_OK);
  }
  void Open(const std::string& path) {
    CComObject<IInitializeWithStream> side;
    CComObject<IStream> stream;
    ASSERT_EQ(provider_.As(IID_IInitializeWithStream, side), S_OK);
    ASSERT_EQ(SHCreateStreamOnFileEx(ToWide(path).c_str(), STGM_READ, 0, FALSE, nullptr, stream.Receive()), S_OK);
    ASSERT_EQ(side->Initialize(stream.Get(), STGM_READ), S_OK);
  }
  HRESULT Draw() { return provider_->GetThumbnail(kSide, &bitmap_, &alpha_); }

  CComUse com_;
  CTempFolder folder_;
  HMODULE library_ = nullptr;
  CComObject<IThumbnailProvider> provider_;
  HBITMAP bitmap_ = nullptr;
  WTS_ALPHATYPE alpha_ = WTSAT_UNKNOWN;
};

TEST_F(CThumbnailTest, ATextureIsDrawnByTheCommandLine) {
  std::vector<uint8_t> colors(768, 0);
  colors[3 * 7] = 255;  // entry 7 is red
  folder_.Write("T.ACT", colors);
  Open(folder_.Write("T.RAW", std::vector<uint8_t>(size_t{kSide} * kSide, 7)));
  ASSERT_EQ(Draw(), S_OK);
  EXPECT_EQ(alpha_, WTSAT_ARGB);
  DIBSECTION section = {};
  ASSERT_EQ(GetObjectW(bitmap_, sizeof(section), &section), int{sizeof(section)});
  EXPECT_EQ(section.dsBm.bmWidth, kSide);
  EXPECT_EQ(static_cast<const uint8_t*>(section.dsBm.bmBits)[3], 255);  // opaque
  DeleteObject(bitmap_);
}

TEST_F(CThumbnailTest, WhatIsNoModelHasNoPicture) {
  Open(folder_.Write("M.BIN", "no model"));
  EXPECT_EQ(Draw(), E_FAIL);
  EXPECT_EQ(bitmap_, nullptr);
}

}  // namespace

}  // namespace veldra::testing
