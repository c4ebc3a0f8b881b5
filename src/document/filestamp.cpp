#include "document/filestamp.h"

#include <algorithm>
#include <utility>

#include "model/binfile.h"
#include "platform/compress.h"
#include "platform/files.h"
#include "platform/fileset.h"
#include "platform/filetime.h"

namespace veldra {

namespace {

constexpr size_t kLargestChecked = size_t{32} << 20;

}  // namespace

CFileStamp::CFileStamp(std::string path) : path_(std::move(path)) {
  if (!IsFile(path_)) return;
  length_ = FileLength(path_);
  time_ = FileWriteTime(path_);
  if (const auto bytes = ReadWholeFile(path_, nullptr, kLargestChecked)) checksum_ = Checksum(bytes->View());
}

bool CFileStamp::IsChanged() {
  if (path_.empty() || !IsFile(path_)) return false;
  if (length_ && FileLength(path_) == length_ && FileWriteTime(path_) == time_) return false;
  CFileStamp now(path_);
  if (!now.length_) return false;  // gone meanwhile
  const bool is_same = checksum_ && now.length_ == length_ && now.checksum_ == checksum_;
  if (is_same) *this = std::move(now);
  return !is_same;
}

bool CFileStamp::IsGone() const {
  return length_ && !IsFile(path_);
}

CModelFileStamp::CModelFileStamp(const std::string& path) {
  if (path.empty()) return;
  // That an interrupted save is taken back is no news afterwards.
  SettleFiles(std::vector{path, InfoPath(path)});
  model_ = CFileStamp(path);
  info_ = CFileStamp(InfoPath(path));
}

std::string CModelFileStamp::Gone() const {
  if (model_.IsGone()) return model_.Path();
  return info_.IsGone() ? info_.Path() : "";
}

EFileNews CModelFileStamp::TakeNews() {
  const std::string gone = Gone();
  const bool is_news = std::exchange(told_gone_, gone) != gone;
  if (!gone.empty()) return is_news ? EFileNews::kGone : EFileNews::kNone;
  if (!IsChanged()) return EFileNews::kNone;
  // Nothing, for a file that is not there, is less than every time.
  const auto written = std::max(FileWriteTime(model_.Path()), FileWriteTime(info_.Path()));
  return std::exchange(told_change_, written) != written ? EFileNews::kChanged : EFileNews::kNone;
}

}  // namespace veldra
