#pragma once

#include <gtest/gtest.h>

#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "cli/cli.h"
#include "cli/values.h"
#include "model/binfile.h"
#include "platform/paths.h"
#include "support/modelparts.h"
#include "support/scriptedquestions.h"
#include "support/testfiles.h"
#include "textures/texturestore.h"

namespace veldra::testing {

/// A folder with settings that name it as the texture directory, and command lines run in it.
class CCliTest : public ::testing::Test {
 protected:
  struct SResult {
    int status;
    std::string out;
    std::string err;
  };

  CCliTest() { folder.Write("Veldra.cfg", "ARTDIR " + folder.Path() + "\nDEFPAL none\n"); }

  /// LINE is split at blanks; "$" stands for the test's folder, a word '' for an empty one.
  SResult Run(const std::string& line) const {
    std::vector<std::string> arguments = {"--cfg", folder.File("Veldra.cfg")};
    for (std::string& word : SplitText(line, ' ')) {
      const size_t mark = word.find('$');
      if (mark != std::string::npos) word.replace(mark, 1, folder.Path());
      if (!word.empty()) arguments.push_back(word == "''" ? "" : word);
    }
    std::ostringstream out;
    std::ostringstream err;
    const int status = RunCli(arguments, out, err);
    return {status, out.str(), err.str()};
  }
  /// What a line must do; OUT and ERR are parts of what it prints, "" where it prints nothing.
  struct SLine {
    std::string line;
    int status = 0;
    std::string out = {};
    std::string err = {};
  };
  void Expect(const std::vector<SLine>& lines) const {
    const auto has = [](const std::string& text, const std::string& part) {
      return part.empty() ? text.empty() : text.find(part) != std::string::npos;
    };
    for (const SLine& line : lines) {
      const SResult result = Run(line.line);
      EXPECT_EQ(result.status, line.status) << line.line << '\n' << result.err;
      EXPECT_TRUE(has(result.out, line.out)) << line.line << "\nprinted:\n" << result.out;
      EXPECT_TRUE(has(result.err, line.err)) << line.line << "\nsaid:\n" << result.err;
    }
  }
  nlohmann::json JsonOf(const std::string& name) const {
    return nlohmann::json::parse(Run("json $/" + name).out, nullptr, false);
  }

  struct SModelParts {
    std::vector<SPoint> points = {{0, -10, 0}, {10, -10, 0}, {10, 10, 0}};
    std::vector<std::vector<int32_t>> faces = {{0, 1, 2}};
    uint32_t type = kFaceTextured;
    std::string texture = "ROAD.RAW";  ///< "" for none
    int width = 64;
    int32_t scale_word = 0x10000;
  };
  /// Writes a model, and its texture when that is not there yet.
  void WriteModel(const std::string& name, const SModelParts& parts) {
    const auto& [points, faces, type, texture, width, scale_word] = parts;
    CBinModel model;
    for (const SPoint& point : points)
      model.AddVertex(point);
    CBinTexture* entry = nullptr;
    if (!texture.empty()) {
      const STextureImage* const image = store_.GetBlankTexture(texture, width);
      entry = &model.AddTexture(std::make_unique<CBinTexture>(model, texture, image));
      folder.Write(texture, std::string(static_cast<size_t>(width * width), '\1'));
    }
    for (const auto& corners : faces)
      MakeFace(model, corners, entry, type);
    EXPECT_TRUE(SaveBinFile(model, {.scale_word = scale_word}, folder.File(name), nullptr));
  }

  CTempFolder folder;

 private:
  CScriptedQuestions questions_;
  CTextureStore store_{questions_, GreyRamp()};
};

}  // namespace veldra::testing
