#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "platform/questions.h"

namespace veldra {

/// One texture of a pool. Who wants its memory back frees PIXELS with std::free and deletes the entry before the pool
/// goes away: the pool does neither.
struct TexPoolEntry {
  std::string name;         ///< the key
  std::string color_table;  ///< path of the ACT file that it was loaded with
  int32_t width = 0;
  int32_t height = 0;
  uint8_t* pixels = nullptr;  ///< width × height × 3 bytes, blue, green, red, rows in file order; from std::malloc
};

/// Loads textures from RAW and ACT files in folders and keeps each under its upper-cased file name, so that
/// C:\A\Sky.raw and D:\B\SKY.RAW are one texture, the first that was loaded. There is no removal and no reload. The
/// program itself never calls it (CTextureStore is what it uses); kept for textures given with their sizes.
class CMTMTexPool {
 public:
  using Map = std::unordered_map<std::string, TexPoolEntry*>;

  explicit CMTMTexPool(CQuestions& questions);
  virtual ~CMTMTexPool();  ///< leaves the entries to their users
  CMTMTexPool(const CMTMTexPool&) = delete;
  CMTMTexPool& operator=(const CMTMTexPool&) = delete;

  /// Loads the first WIDTH × HEIGHT bytes of RAW with the colours of ACT. Returns WIDTH × HEIGHT; 0, nothing read, when
  /// the pool has a texture of this name; -1, after a message, on failure. Sides are taken as given, powers of two or
  /// not; a texture without texels is loaded and returns 0 too.
  int32_t ReadTexACT(const std::string& raw, int32_t width, int32_t height, const std::string& act);

  /// By key.
  const Map& Textures() const { return textures_; }

  static std::string KeyOf(const std::string& raw);

 private:
  int32_t Fail(std::string text);

  CQuestions& questions_;
  Map textures_;
  Map others_;  ///< made and destroyed with the pool; nothing fills it
};

}  // namespace veldra
