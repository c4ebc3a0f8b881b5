#include "app/fileopeners.h"

#include <algorithm>

#include "app/mainfrm.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr SFileOpener kOpeners[] = {
    {"bin", [](CMainFrame& frame, const std::string& path,
               bool read_only) { return frame.Files().OpenModel(path, read_only); }},
    {"trk", [](CMainFrame& frame, const std::string& path, bool) { return frame.Tools().OpenTruck(path); }},
    {"pod", [](CMainFrame& frame, const std::string& path, bool) { return frame.Tools().OpenArchive(path); }},
    {"3ds", [](CMainFrame& frame, const std::string& path, bool) { return frame.Tools().Import3dsFile(path); }},
    {"obj", [](CMainFrame& frame, const std::string& path, bool) { return frame.Tools().ImportWavefrontFile(path); }},
};

}  // namespace

std::span<const SFileOpener> FileOpeners() {
  return kOpeners;
}

const SFileOpener* FindFileOpener(const std::string& path) {
  const std::string name = LowerCase(FileNamePart(path));
  const auto row = std::find_if(std::begin(kOpeners), std::end(kOpeners), [&](const SFileOpener& opener) {
    return name.ends_with(std::string(".") + opener.extension);
  });
  return row != std::end(kOpeners) ? &*row : nullptr;
}

}  // namespace veldra
