#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/bytes.h"
#include "platform/files.h"
#include "platform/png.h"

/// The files in which the program keeps documents for itself: a label that tells the user what it is, and the packed
/// content, which each kind of document knows how to read.
namespace veldra {

/// What a copy holds.
enum class ECopyKind { kModel, kTruck, kArchive };

struct SCopyLabel {
  std::string title = {};       ///< the document's title, or the command that led to this state
  std::string path = {};        ///< of the document's file; "" while it was never saved
  std::string states_key = {};  ///< where the document's earlier states are; "" for nowhere
  int64_t time = 0;             ///< when it was written: seconds since 1970, UTC
  int32_t vertices = 0;         ///< of a model
  int32_t faces = 0;
  SImage picture = {};  ///< small; without pixels when there is none
  ECopyKind kind = ECopyKind::kModel;
};

/// A copy as it was read from the disk.
struct SCopyFile {
  CFileBytes bytes = {};
  std::string fault = {};  ///< "" or why there are no bytes
};

/// Pictures with a longer side are left out.
inline constexpr int kLargestCopyPicture = 512;

/// The whole file.
std::vector<uint8_t> WriteCopy(const SCopyLabel& label, std::span<const uint8_t> content);

/// Makes the file for a label.
using CopyWriter = std::function<std::vector<uint8_t>(const SCopyLabel& label)>;
/// What WRITE makes of LABEL; empty, with the reason, when memory runs out.
std::vector<uint8_t> PackCopy(const SCopyLabel& label, const CopyWriter& write, SError* error);

/// The label of FILE, whose every byte is checked but for what only the content's reader sees.
std::optional<SCopyLabel> ReadCopyLabel(std::span<const uint8_t> file, SDiagnosis* diagnosis = nullptr);

/// That of the copy at PATH; nothing when FAULT says what is wrong with it.
std::optional<SCopyLabel> ReadLabelOf(const std::string& path, std::string& fault);

/// What FILE, a copy of this KIND, holds; nothing when it is damaged. May throw std::bad_alloc.
std::optional<std::vector<uint8_t>> ReadCopy(std::span<const uint8_t> file, ECopyKind kind, SDiagnosis& diagnosis);

/// Whether two files hold the same content exactly, whatever their labels say.
bool IsSameContent(std::span<const uint8_t> a, std::span<const uint8_t> b);

/// The copy at PATH.
SCopyFile ReadCopyFile(const std::string& path);

/// Seconds since 1970, UTC.
int64_t PresentTime();

}  // namespace veldra
