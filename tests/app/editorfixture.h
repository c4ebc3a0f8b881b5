#pragma once

#include <gtest/gtest.h>

#include <QImage>
#include <memory>
#include <string>

#include "app/mainfrm.h"
#include "app/tarn2.h"
#include "support/scriptedquestions.h"
#include "support/testfiles.h"

namespace veldra::testing {

inline constexpr EGroupKind kFaces = EGroupKind::kFaces;
inline constexpr EGroupKind kVertices = EGroupKind::kVertices;

/// The editor's real window over a folder with a palette, a texture and models that the test writes.
class CEditorTest : public ::testing::Test {
 protected:
  CEditorTest();
  ~CEditorTest() override;

  /// What a model of the tests looks like: a textured box, its middle at (SHIFT_X, SHIFT_Y, 0).
  struct SBox {
    int32_t shift_x = 0;
    int32_t shift_y = 0;
    bool unused_vertex = false;
    const char* texture = "GRID.RAW";  ///< or BIG.RAW, of a size that the game does not take
  };
  std::string WriteModel(const std::string& name, const SBox& box) const;
  std::string WriteModel(const std::string& name) const { return WriteModel(name, SBox()); }

  /// Makes and shows the main frame. ASKING stands in for the scripted questions.
  void Start(CQuestions* asking = nullptr);
  /// Start with one model, drawn.
  CTarnView& StartWith(const std::string& path);
  void Do(ECommand command);
  /// Lets everything that is due happen.
  static void Settle();
  static void WaitUntilDrawn(CTarnView& view);
  /// What the view shows now.
  static QImage Picture(CTarnView& view);
  /// Pixels of the view that are not its background.
  static int Inked(CTarnView& view);

  CTempFolder folder;
  CScriptedQuestions questions;
  CSettings settings;  ///< of the next Start
  /// Likewise, of the recovery copies.
  CRecoveryKeeper::ClockReader clock = CRecoverySchedule::Clock::now;
  std::unique_ptr<CTarn2App> app;
  std::unique_ptr<CMainFrame> frame;
};

/// Colours of the palette that the tests write: red grows, blue shrinks.
std::vector<uint8_t> TestPalette();

}  // namespace veldra::testing
