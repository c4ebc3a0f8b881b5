#include "platform/inputfile.h"

#include <string>
#include <utility>

#include "platform/files_system.h"
#include "platform/filewriting.h"

namespace veldra {

CInputFile::~CInputFile() {
  Close();
}

CInputFile::CInputFile(CInputFile&& other) noexcept
    : handle_(std::exchange(other.handle_, kClosed)), version_(other.version_), modified_(other.modified_) {}

CInputFile& CInputFile::operator=(CInputFile&& other) noexcept {
  std::swap(handle_, other.handle_);
  version_ = other.version_;
  modified_ = other.modified_;
  return *this;
}

bool CInputFile::Open(std::string_view path, SError* error) {
  Close();
  disk::SStatus status;
  const int number = disk::OpenToRead(disk::SystemPath(path), handle_, status);
  if (number == 0 && status.kind == disk::EKind::kFile) {
    version_ = {status.length, status.ticks};
    modified_ = status.modified;
    return true;
  }
  Close();
  if (number != 0) return Fail(error, disk::ErrorText(number));
  return Fail(error, status.kind == disk::EKind::kDirectory ? "is a folder" : "is not a file");
}

void CInputFile::Close() {
  if (IsOpen()) disk::Close(std::exchange(handle_, kClosed));
}

std::optional<uint64_t> CInputFile::LengthNow() const {
  disk::SStatus status;
  return disk::StatusOf(handle_, status) == 0 ? std::optional<uint64_t>(status.length) : std::nullopt;
}

bool CInputFile::ReadAt(uint64_t offset, std::span<uint8_t> buffer, SError* error) const {
  while (!buffer.empty()) {
    size_t count = 0;
    const int number = disk::ReadAt(handle_, offset, buffer, count);
    if (number != 0) return Fail(error, disk::ErrorText(number));
    if (count == 0) return Fail(error, "the file ends before its time");
    buffer = buffer.subspan(count);
    offset += count;
  }
  return true;
}

}  // namespace veldra
