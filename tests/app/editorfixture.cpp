#include "app/editorfixture.h"

#include <QSettings>
#include <QtTest>

#include "model/binfile.h"
#include "model/modelbuilder.h"

namespace veldra::testing {

namespace {

constexpr int kDrawMs = 20000;
constexpr uint8_t kLight = 220;
constexpr uint8_t kDark = 90;

std::vector<uint8_t> Checkerboard() {
  std::vector<uint8_t> texels;
  for (int y = 0; y < 64; ++y)
    for (int x = 0; x < 64; ++x)
      texels.push_back((x / 16 + y / 16) % 2 == 0 ? kLight : kDark);
  return texels;
}

}  // namespace

std::vector<uint8_t> TestPalette() {
  std::vector<uint8_t> palette;
  for (int i = 0; i < 256; ++i)
    palette.insert(palette.end(), {static_cast<uint8_t>(i), 40, static_cast<uint8_t>(255 - i)});
  return palette;
}

CEditorTest::CEditorTest() {
  folder.Write("GRID.RAW", Checkerboard());
  folder.Write("BIG.RAW", std::vector<uint8_t>(128 * 128, kDark));
  settings.defpal = folder.Write("METALCR2.ACT", TestPalette());
  settings.art_dir = folder.Path();
  qputenv("VELDRA_DATA", QByteArray::fromStdString(folder.File("data")));
  settings.bin_dir = folder.Path();
  QSettings(QSettings::IniFormat, QSettings::UserScope, "Veldra", "Veldra").clear();
}

CEditorTest::~CEditorTest() {
  frame.reset();
  app.reset();
  EXPECT_EQ(questions.TakeMessageTexts(), std::vector<std::string>{});
}

std::string CEditorTest::WriteModel(const std::string& name, const SBox& box) const {
  CModelBuilder builder;
  for (const int32_t x : {-1000, 1000})
    for (const int32_t y : {-600, 600})
      for (const int32_t z : {-400, 400})
        builder.model.AddVertex({x + box.shift_x, y + box.shift_y, z});
  CBinTexture& grid = builder.Plain(box.texture);
  const std::vector<std::vector<int32_t>> sides = {{0, 1, 3, 2}, {4, 6, 7, 5}, {0, 4, 5, 1},
                                                   {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 5, 7, 3}};
  for (const auto& side : sides) {
    CBinFace& face = builder.Face(side, &grid);
    for (int k = 0; k < 4; ++k)
      face.SetTexCoord(k, {k == 1 || k == 2 ? 1.0 : 0.0, k >= 2 ? 1.0 : 0.0});
  }
  if (box.unused_vertex) builder.model.AddVertex({box.shift_x, box.shift_y, 0});
  SError error;
  const std::string path = folder.File(name);
  EXPECT_TRUE(SaveBinFile(builder.model, {}, path, &error)) << error.what;
  return path;
}

void CEditorTest::Start(CQuestions* asking) {
  CQuestions& used = asking != nullptr ? *asking : questions;
  SStartup startup;
  startup.settings_path = folder.File("Veldra.cfg");
  startup.settings = settings;
  startup.default_colors = ReadColorTable(settings.defpal).value_or(GreyRamp());
  startup.installation_directory = ".";
  frame.reset();
  app = std::make_unique<CTarn2App>(startup, used, clock);
  frame = std::make_unique<CMainFrame>(*app);
  frame->show();
  frame->activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(frame.get()));
  Settle();
}

CTarnView& CEditorTest::StartWith(const std::string& path) {
  Start();
  EXPECT_TRUE(frame->OpenFile(path));
  CTarnView& view = *frame->ActiveView();
  WaitUntilDrawn(view);
  view.setFocus();
  Settle();
  return view;
}

void CEditorTest::Do(ECommand command) {
  Settle();
  EXPECT_TRUE(frame->Action(command)->isEnabled()) << CommandRow(command).name;
  frame->Action(command)->trigger();
  Settle();
}

void CEditorTest::Settle() {
  for (int i = 0; i < 3; ++i) {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
}

void CEditorTest::WaitUntilDrawn(CTarnView& view) {
  EXPECT_TRUE(QTest::qWaitFor([&view] { return view.HasDrawn(); }, kDrawMs));
}

QImage CEditorTest::Picture(CTarnView& view) {
  return view.Picture().convertToFormat(QImage::Format_RGB32);
}

int CEditorTest::Inked(CTarnView& view) {
  const QImage picture = Picture(view);
  const SColor& background = view.State().background;
  const QRgb empty = qRgb(background.red, background.green, background.blue);
  int count = 0;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x)
      count += picture.pixel(x, y) != empty ? 1 : 0;
  return count;
}

}  // namespace veldra::testing
