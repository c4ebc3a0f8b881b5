#include "interchange/3dstudiofile.h"

#include <new>

#include "interchange/3dstudioreader.h"
#include "platform/bytes.h"
#include "platform/files.h"
#include "platform/trace.h"

namespace veldra {

namespace {

constexpr float kScaleFactor = 10000.0F;

bool ReadAll(CStudioReader& reader, SImportFault& fault) {
  try {
    const bool is_read = reader.Read();
    fault = reader.Fault();
    return is_read;
  } catch (const std::bad_alloc&) {
    fault = kNoMemory;
    return false;
  }
}

std::string StudioStartFault(std::span<const uint8_t> start, uint64_t) {
  return CByteReader(start).ReadU16() == 0x4D4D ? "" : "is not a 3D Studio file";
}

}  // namespace

bool C3DStudioFile::ReadFile(CQuestions& questions, SImportFault* fault) {
  SError error;
  const auto bytes = ReadWholeFile(path_, &error, kLargestFile, StudioStartFault);
  if (bytes) return ReadBytes(bytes->View(), questions, fault);
  if (fault != nullptr) *fault = {error.what, false};
  return false;
}

bool C3DStudioFile::ReadBytes(std::span<const uint8_t> bytes, CQuestions& questions, SImportFault* fault) {
  *this = C3DStudioFile(path_, wants_extras_);
  CStudioReader reader(*this, bytes, questions);
  SImportFault found;
  if (ReadAll(reader, found)) {
    scale_factor_ = kScaleFactor;
    size_ = bytes.size();
    return true;
  }
  *this = C3DStudioFile(path_, wants_extras_);
  Trace(">> C3DStudioFile::ReadFile(): %s\n", found.what.c_str());
  if (fault != nullptr) *fault = found;
  return false;
}

}  // namespace veldra
