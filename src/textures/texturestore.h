#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/png.h"
#include "platform/questions.h"
#include "textures/texturefiles.h"

namespace veldra {

/// Tells one image from all others that this process ever had: whoever caches compares it, as addresses are used again.
/// A copy is another image.
class CImageId {
 public:
  CImageId();
  CImageId(const CImageId&) : CImageId() {}
  CImageId& operator=(const CImageId&);
  uint64_t Number() const { return number_; }  ///< never 0

 private:
  uint64_t number_;
};

/// A loaded texture in the layouts that its users want. Owned by the store, valid as long as the store.
struct STextureImage {
  CImageId id = {};
  std::string path;                          ///< full path of the RAW file as it was asked for: the store's key
  std::function<STextureFiles()> read = {};  ///< for one that is no file of its own
  std::string name;                          ///< the file-name part of the path, extension kept
  int32_t size = 0;                          ///< edge length in texels
  std::vector<uint8_t> rgba;    ///< size × size × 4, rows in file order; near-black texels have alpha 0, others 255
  std::vector<uint8_t> rgb;     ///< size × size × 3, last file row first
  std::vector<uint8_t> bgr;     ///< rgb with red and blue exchanged
  bool is_stand_in = false;     ///< blank, for a file that could not be loaded
  bool has_own_colors = false;  ///< from the ACT file beside it, and not the default ones
};

/// The texture as it is stored now; IMAGE must be no stand-in.
STextureFiles FilesOf(const STextureImage& image);

/// Loads textures and keeps each under its path, so that one named by several faces or models is read once. One store
/// serves the whole application.
class CTextureStore {
 public:
  /// QUESTIONS shows the error messages; DEFAULT_COLORS stands in for a texture's missing ACT file.
  CTextureStore(CQuestions& questions, const ColorTable& default_colors);

  /// Another default. The stored textures that have no colours of their own get it as well; one whose file cannot be
  /// read any more keeps what it has.
  void SetDefaultColors(const ColorTable& colors);

  /// The texture stored under PATH, loaded when it is not there yet. Null when that fails. Paths that differ in letter
  /// case only are two keys.
  const STextureImage* GetTexture(const std::string& path);

  /// The same for one that is no file of its own: READ gives its texels and colours, now and whenever they are wanted
  /// again, so that it must not refer to what goes before the store.
  const STextureImage* GetTexture(const std::string& path, std::function<STextureFiles()> read);

  /// Loads a texture that is not in the store yet (else a programming error). Null without a message when no file is at
  /// PATH; null after "Error: Unsupported texture size." when its length is that of no texture. The ACT file is found
  /// beside it in any letter case; a missing, short or unreadable one is replaced by the default colour table.
  const STextureImage* LoadTexture(const std::string& path);

  /// Called when a texture was added, or has other texels now.
  void SetOnChanged(std::function<void()> on_changed) { on_changed_ = std::move(on_changed); }

  /// Stores TEXELS under PATH, where their file will be; what is stored of that file already shows them from now on.
  /// Forget takes it out again, when that came to nothing; nobody may use it any more.
  const STextureImage* AddTexture(const std::string& path, const SIndexedTexture& texels);
  void Forget(const std::string& path) { images_.erase(path); }

  /// Of the stored textures.
  size_t Count() const { return images_.size(); }
  /// The files of the stored textures, those of archives apart.
  std::vector<std::string> Files() const;
  /// Shows what the file PATH, one of these, holds now. False where that is nothing else, or it cannot be read.
  bool Reload(const std::string& path);

  const ColorTable& DefaultColors() const { return default_colors_; }

  /// What a texture looks like that is not loaded for that: without holes, the first row at the top. Without pixels,
  /// and without a message, when there is none at PATH.
  SImage Picture(const std::string& path) const;

  /// A black, fully transparent stand-in of WIDTH (a member of kTextureSizes), from now on what is stored under PATH;
  /// the stored texture when there is one already. One image stands in for all of its width: it has no path of its own.
  const STextureImage* GetBlankTexture(const std::string& path, int width);

 private:
  const STextureImage* Blank(int width);
  const STextureImage* Stored(const std::string& path) const;
  STextureImage* OfFile(const std::string& path);
  const STextureImage* Load(const std::string& path, std::function<STextureFiles()> read);

  CQuestions& questions_;
  ColorTable default_colors_;
  std::function<void()> on_changed_;
  std::map<std::string, std::unique_ptr<STextureImage>> images_;
  std::map<std::string, const STextureImage*> stand_ins_;  ///< by path, as images_; each one of blanks_
  std::map<int, std::unique_ptr<STextureImage>> blanks_;   ///< by width
};

/// Fills the three layouts of IMAGE from size × size texel INDICES and COLORS.
void DecodeTexture(std::span<const uint8_t> indices, const ColorTable& colors, STextureImage& image);
/// The size and the pixels of IMAGE from FILES, which have texels.
void DecodeTexture(const STextureFiles& files, const ColorTable& default_colors, STextureImage& image);

}  // namespace veldra
