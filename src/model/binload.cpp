#include <algorithm>
#include <new>
#include <utility>
#include <vector>

#include "model/binfile.h"
#include "model/binformat.h"
#include "model/binloader.h"
#include "model/infofile.h"
#include "platform/fileset.h"
#include "platform/text.h"
#include "platform/trace.h"

namespace veldra {

namespace {

constexpr const char* kGroupsDamagedText = "The groups beside this model could not all be read.";
constexpr const char* kUnreadableText = "%s\ncould not be read.";
constexpr size_t kComplaintsShown = 20;

void ShowComplaints(const SModelInfo& info, CQuestions& questions) {
  const std::vector<std::string>& complaints = info.complaints;
  if (complaints.empty()) return;
  SMessage message = {.text = kGroupsDamagedText, .icon = EIcon::kWarning};
  if (!info.path.empty()) message.details = info.path + ":\n";
  const size_t shown = std::min(complaints.size(), kComplaintsShown);
  for (size_t i = 0; i < shown; ++i)
    message.details += complaints[i] + '\n';
  if (shown < complaints.size()) message.details += Format("and %zu more\n", complaints.size() - shown);
  questions.Message(message);
}

bool LoadWithInfo(CBinModel& model, std::span<const uint8_t> file, SModelInfo info, const SLoadContext& context,
                  SDiagnosis* diagnosis) {
  CBinModel::CBusy busy(model);
  model.Clear();
  CBinLoader loader(model, file, info.animations, context);
  if (loader.Load()) {
    AddInfoGroups(model, info);
    ShowComplaints(info, context.questions);
    return true;
  }
  model.Clear();
  const SDiagnosis& fault = loader.Diagnosis();
  Trace(">> CBinModel::LoadBin(): %s\n", fault.Text().c_str());
  if (diagnosis != nullptr) *diagnosis = fault;
  if (loader.IsCorrupt()) {
    context.questions.Message(
        {.text = kCorruptModelText, .caption = kErrorCaption, .icon = EIcon::kError, .details = fault.Text()});
  }
  return false;
}

/// Of a file that is longer than any model of the game: what it is not.
std::string BinStartFault(std::span<const uint8_t> start, uint64_t length) {
  CByteReader reader(start);
  const uint32_t type = reader.ReadU32();
  if (type != kModelType) return Format("is long for a model, and of the unknown type 0x%x", type);
  reader.Seek(kVertexCountOffset);
  const uint32_t count = reader.ReadU32();
  return count <= length / kVertexSize ? "" : Format("has no room for the %u vertices that it tells of", count);
}

/// A model file and its sidecar as one save left them.
struct SModelFiles {
  SError error;
  std::optional<CFileBytes> model;
  SModelInfo info;
};

SModelInfo ReadInfo(const std::string& path) {
  const std::string info_path = FindAnyCase(path);
  if (info_path.empty()) return {};
  SError error;
  const auto text = ReadTextFile(info_path, &error);
  // Groups that only memory was missing for are no groups that cannot be read: a save would lose them.
  if (!text && error.what == kNotEnoughMemory) throw std::bad_alloc();
  SModelInfo info = text ? ParseInfo(text->Text()) : SModelInfo{};
  if (!text) info.complaints.push_back(error.what);
  info.path = info_path;
  return info;
}

SModelFiles ReadModelFiles(const std::string& path) {
  SModelFiles files;
  const std::string paths[] = {path, InfoPath(path)};
  ReadFiles(paths, [&](std::span<const std::string> places) {
    files = {};
    files.model = ReadWholeFile(places[0], &files.error, kLargestFile, BinStartFault);
    if (files.model) files.info = ReadInfo(places[1]);
  });
  return files;
}

}  // namespace

std::string InfoPath(std::string_view path) {
  return std::string(path) + ".info";
}

bool LoadBin(CBinModel& model, std::span<const uint8_t> file, std::string_view info, const SLoadContext& context,
             SDiagnosis* diagnosis) {
  return LoadWithInfo(model, file, ParseInfo(info), context, diagnosis);
}

std::optional<CFileBytes> ReadBinBytes(const std::string& path, SError* error) {
  SettleFiles(std::vector{path, InfoPath(path)});
  return ReadWholeFile(path, error, kLargestFile, BinStartFault);
}

bool LoadBinFile(CBinModel& model, const std::string& path, const SLoadContext& context, SDiagnosis* diagnosis) {
  SModelFiles files = ReadModelFiles(path);
  if (files.model) return LoadWithInfo(model, files.model->View(), std::move(files.info), context, diagnosis);
  model.Clear();
  if (diagnosis != nullptr) *diagnosis = {0, path + ": " + files.error.what};
  context.questions.Message({.text = Format(kUnreadableText, path.c_str()),
                             .caption = kErrorCaption,
                             .icon = EIcon::kError,
                             .details = files.error.what});
  return false;
}

}  // namespace veldra
