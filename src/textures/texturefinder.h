#pragma once

#include <map>
#include <string>

#include "platform/questions.h"
#include "textures/texturestore.h"

namespace veldra {

/// Finds the textures that one model names: in the texture directory, in any letter case, and by asking the user where
/// a file is missing. The answer for a name holds for the finder's life, so each missing one is asked for once.
class CTextureFinder {
 public:
  CTextureFinder(CTextureStore& store, CQuestions& questions, std::string art_directory);
  virtual ~CTextureFinder() = default;

  /// The texture of file NAME. While none can be loaded: "Texture %s not found. Please select another texture." and
  /// another file is picked, which stands in for it under the same name. Null when the user gives up.
  virtual const STextureImage* Find(const std::string& name);

 private:
  /// The texture's file; "" when there is none in the texture directory.
  std::string Look(const std::string& name) const;
  const STextureImage* Ask(const std::string& name);

  CTextureStore& store_;
  CQuestions& questions_;
  std::string art_directory_;
  std::map<std::string, const STextureImage*> found_;  ///< by upper-cased name
};

}  // namespace veldra
