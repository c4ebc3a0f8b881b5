#include "truckeditor/truckcopy.h"

#include <new>
#include <string_view>

namespace veldra {

namespace {

/// The types of the lights come first: a truck file is not read back with all of those that the editor offers.
std::vector<uint8_t> WriteContent(const CTruck& truck) {
  CByteWriter out;
  for (const TruckLight& light : truck.lights)
    out.WriteI32(light.type);
  out.WriteText(truck.FileText());
  return {out.Bytes().begin(), out.Bytes().end()};
}

CTruck ReadContent(std::span<const uint8_t> content, SDiagnosis& diagnosis) {
  CByteReader in(content);
  std::array<int32_t, kTruckLights> types{};
  for (int32_t& type : types)
    type = in.ReadI32();
  const auto text = in.ReadBytes(in.Remaining());
  CTruck truck;
  if (in.Failed()) diagnosis = {in.Position(), "ends too early"};
  truck.Parse({reinterpret_cast<const char*>(text.data()), text.size()});
  for (size_t light = 0; light < types.size(); ++light)
    truck.lights[light].type = types[light];
  return truck;
}

}  // namespace

std::vector<uint8_t> WriteTruckCopy(SCopyLabel label, const CTruck& truck) {
  label.kind = ECopyKind::kTruck;
  return WriteCopy(label, WriteContent(truck));
}

std::optional<CTruck> ReadTruckCopy(const SCopyFile& file, SDiagnosis& diagnosis) try {
  diagnosis = {0, file.fault};
  if (!file.fault.empty()) return std::nullopt;
  const auto content = ReadCopy(file.bytes.View(), ECopyKind::kTruck, diagnosis);
  if (!content) return std::nullopt;
  CTruck truck = ReadContent(*content, diagnosis);
  return diagnosis.Empty() ? std::optional(std::move(truck)) : std::nullopt;
} catch (const std::bad_alloc&) {
  diagnosis = {0, kNotEnoughMemory};
  return std::nullopt;
}

}  // namespace veldra
