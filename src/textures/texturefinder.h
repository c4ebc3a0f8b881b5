#pragma once

#include <map>
#include <string>

#include "platform/questions.h"
#include "textures/texturestore.h"

namespace veldra {

/// Finds the textures that one model names: where a derived finder looks first, in the texture directory, in any letter
/// case, where else a derived finder looks, and by asking the user where a file is missing. The answer for a name holds
/// for the finder's life, so each missing one is asked for once.
class CTextureFinder {
 public:
  CTextureFinder(CTextureStore& store, CQuestions& questions, std::string art_directory);
  virtual ~CTextureFinder() = default;

  /// The texture of file NAME. While none can be loaded: "Texture %s not found. Please select another texture." and
  /// another file is picked, which stands in for it under the same name. Null when the user gives up.
  virtual const STextureImage* Find(const std::string& name);

 protected:
  /// Called before the texture directory is looked into. Null when NAME is not there.
  virtual const STextureImage* FindFirst(const std::string&) { return nullptr; }
  /// Called where the texture directory has no file NAME. Null when there is none elsewhere either.
  virtual const STextureImage* FindElsewhere(const std::string&) { return nullptr; }
  CTextureStore& Store() { return store_; }

 private:
  const STextureImage* FindOrAsk(const std::string& name);
  const STextureImage* FindUnasked(const std::string& name);
  const STextureImage* LoadFrom(const std::string& folder, const std::string& name, bool& is_there);
  const STextureImage* Ask(const std::string& name);
  const STextureImage* Blank(const std::string& name, int width);

  CTextureStore& store_;
  CQuestions& questions_;
  std::string art_directory_;
  std::string chosen_folder_;  ///< by the user, for all that are missing
  std::string last_folder_;    ///< where the last one was found
  int blank_width_ = 0;        ///< of what stands in for all that are missing; 0: they are asked for
  std::map<std::string, const STextureImage*> found_;  ///< by upper-cased name
};

}  // namespace veldra
