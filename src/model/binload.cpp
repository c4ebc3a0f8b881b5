#include <algorithm>

#include "model/binfile.h"
#include "model/binformat.h"
#include "model/binloader.h"
#include "model/infofile.h"
#include "platform/text.h"
#include "platform/trace.h"

namespace veldra {

namespace {

constexpr const char* kGroupsDamagedText = "The groups beside this model could not all be read.";
constexpr const char* kUnreadableText = "%s\ncould not be read.";
constexpr size_t kComplaintsShown = 20;

void ShowComplaints(const std::vector<std::string>& complaints, CQuestions& questions) {
  if (complaints.empty()) return;
  SMessage message = {.text = kGroupsDamagedText, .icon = EIcon::kWarning};
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
    ShowComplaints(info.complaints, context.questions);
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

SModelInfo ReadInfoBeside(const std::string& path) {
  const std::string info_path = FindAnyCase(InfoPath(path));
  if (info_path.empty()) return {};
  SError error;
  const auto text = ReadTextFile(info_path, &error);
  if (text) return ParseInfo(text->Text());
  SModelInfo unread;
  unread.complaints.push_back(info_path + ": " + error.what);
  return unread;
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

}  // namespace

std::string InfoPath(std::string_view path) {
  return std::string(path) + ".info";
}

bool LoadBin(CBinModel& model, std::span<const uint8_t> file, std::string_view info, const SLoadContext& context,
             SDiagnosis* diagnosis) {
  return LoadWithInfo(model, file, ParseInfo(info), context, diagnosis);
}

bool LoadBinFile(CBinModel& model, const std::string& path, const SLoadContext& context, SDiagnosis* diagnosis) {
  SError error;
  const auto file = ReadWholeFile(path, &error, kLargestFile, BinStartFault);
  if (file) return LoadWithInfo(model, file->View(), ReadInfoBeside(path), context, diagnosis);
  model.Clear();
  if (diagnosis != nullptr) *diagnosis = {0, path + ": " + error.what};
  context.questions.Message({.text = Format(kUnreadableText, path.c_str()),
                             .caption = kErrorCaption,
                             .icon = EIcon::kError,
                             .details = error.what});
  return false;
}

}  // namespace veldra
