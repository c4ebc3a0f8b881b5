#include "cli/findings.h"

#include <nlohmann/json.hpp>

#include "cli/commandrow.h"
#include "model/binfile.h"
#include "platform/text.h"

namespace veldra {

void CFindings::Add(const std::string& file, const std::vector<SFinding>& findings) {
  for (const SFinding& finding : findings)
    Add(file, FindingName(finding.kind), finding);
}

void CFindings::Add(const std::string& file, const std::string& kind, const SFinding& finding) {
  rows_.push_back({file, kind, finding});
}

std::string CFindings::Text() const {
  std::string text;
  for (const SRow& row : rows_)
    text += row.file + ": " + row.kind + ": " + row.finding.text + "\n";
  return text;
}

std::string CFindings::Json() const {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const SRow& row : rows_) {
    list.push_back({{"model", ToUtf8(row.file)},
                    {"kind", row.kind},
                    {"text", ToUtf8(row.finding.text)},
                    {"faces", row.finding.faces},
                    {"vertices", row.finding.vertices},
                    {"texture", nullptr}});
    if (!row.finding.texture.empty()) list.back()["texture"] = ToUtf8(row.finding.texture);
  }
  return DisplayJson(list.dump(1)) + "\n";
}

int CFindings::Print(CSession& session, bool json) const {
  if (session.Print(json ? Json() : Text()) != kDone) return kFailed;
  return rows_.empty() ? kDone : kFailed;
}

bool CheckModelBytes(CSession& session, const std::string& name, std::span<const uint8_t> file,
                     const FindTextureWidth& texture_width, CFindings& findings) {
  SModelRecords records;
  const SDiagnosis fault = ReadModelRecords(file, records);
  if (!fault.Empty()) {
    session.Fail(kCorruptModelText, name + ": " + fault.Text());
    return false;
  }
  findings.Add(name, CheckModel(records, texture_width));
  return true;
}

}  // namespace veldra
