#include "document/filestamp.h"

#include <algorithm>
#include <utility>

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

CDocumentStamp::CDocumentStamp(std::vector<std::string> files) {
  // That an interrupted save is taken back is no news afterwards.
  if (!files.empty()) SettleFiles(files);
  for (std::string& file : files)
    files_.emplace_back(std::move(file));
}

bool CDocumentStamp::IsChanged() {
  return std::ranges::any_of(files_, &CFileStamp::IsChanged);
}

std::string CDocumentStamp::Gone() const {
  const auto gone = std::ranges::find_if(files_, &CFileStamp::IsGone);
  return gone != files_.end() ? gone->Path() : "";
}

EFileNews CDocumentStamp::TakeNews() {
  const std::string gone = Gone();
  const bool is_news = std::exchange(told_gone_, gone) != gone;
  if (!gone.empty()) return is_news ? EFileNews::kGone : EFileNews::kNone;
  if (!IsChanged()) return EFileNews::kNone;
  std::optional<int64_t> written;  // nothing, for a file that is not there, is less than every time
  for (const CFileStamp& file : files_)
    written = std::max(written, FileWriteTime(file.Path()));
  return std::exchange(told_change_, written) != written ? EFileNews::kChanged : EFileNews::kNone;
}

}  // namespace veldra
