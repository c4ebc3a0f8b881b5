#include "truckscene/truckcheck.h"

#include <algorithm>

#include "archive/filepart.h"
#include "archive/podnames.h"
#include "model/binfile.h"
#include "platform/files.h"
#include "platform/text.h"

namespace veldra {

namespace {

using EPlace = SDependency::EPlace;

void CheckName(const std::string& name, STruckReport& report) {
  const SNameResult usable = PodEntryName(name);
  if (usable.Ok()) return;
  std::string text = usable.details.empty() ? usable.refusal : usable.refusal + ": " + usable.details;
  std::ranges::replace(text, '\n', ' ');
  report.findings.push_back({"", "unusable-name", {.text = text}, name});
}

}  // namespace

STruckReport CTruckCheck::Run(const CTruck& truck, const std::string& file_name) {
  const STruckDependencies needed = truck.GetDependencies();
  STruckReport report;
  if (!file_name.empty()) CheckName(file_name, report);
  for (const std::string& model : needed.models) {
    CheckName(model, report);
    if (!IsThere(model, report)) continue;
    const SLook& look = LookInto(model);
    if (!look.fault.text.empty()) report.unread.push_back(look.fault);
    for (const SFinding& finding : look.findings)
      report.findings.push_back({model, FindingName(finding.kind), finding, model});
  }
  for (const auto* names : {&needed.textures, &needed.palettes, &needed.sounds})
    CheckNames(*names, report);
  return report;
}

void CTruckCheck::CheckNames(const std::vector<std::string>& names, STruckReport& report) {
  for (const std::string& name : names) {
    CheckName(name, report);
    IsThere(name, report);
  }
}

/// The file itself lies somewhere; a stock file that does not is missed by nobody.
bool CTruckCheck::IsThere(const std::string& name, STruckReport& report) {
  const STruckFile& file = files_.Find(name, kTypeOther);
  if (file.place != EPlace::kMissing) return true;
  if (!file.is_stock) report.findings.push_back({"", "missing-file", {.text = ToUtf8(name) + " is not found"}, name});
  return false;
}

const CTruckCheck::SLook& CTruckCheck::LookInto(const std::string& model) {
  const auto [row, is_new] = models_.try_emplace(model);
  if (is_new) row->second = ReadModel(model);
  return row->second;
}

CTruckCheck::SLook CTruckCheck::ReadModel(const std::string& model) {
  SError error;
  const auto bytes = ReadFilePart(files_.Find(model, kTypeBin).source.bytes, &error);
  if (!bytes) return {{}, {model, Format("\"%s\" could not be opened.", model.c_str()), error.what}};
  SModelRecords records;
  const SDiagnosis fault = ReadModelRecords(bytes->View(), records);
  if (!fault.Empty()) return {{}, {model, kCorruptModelText, ToUtf8(model) + ": " + fault.Text()}};
  return {CheckModel(records, [this](const std::string& name) { return TextureWidth(name); }), {}};
}

std::optional<int> CTruckCheck::TextureWidth(const std::string& name) {
  constexpr int kGoodWidth = 64;
  const STruckFile& file = files_.Find(name, kTypeRaw);
  if (file.place == EPlace::kMissing) return file.is_stock ? std::optional<int>(kGoodWidth) : std::nullopt;
  const SFilePart& part = file.source.bytes;
  return TextureSizeOfLength(part.length ? *part.length : FileLength(part.path).value_or(0));
}

}  // namespace veldra
