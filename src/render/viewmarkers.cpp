#include "render/viewmarkers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "render/glstate.h"

namespace veldra {

namespace {

constexpr double kAxisLength = 0.88;
constexpr double kLetterPlace = 0.95;
constexpr double kLetterSize = 0.035;

struct SStroke {
  double x1, y1, x2, y2;  ///< -1..1
};
constexpr std::array<SStroke, 2> kLetterX = {{{-0.7, -1, 0.7, 1}, {-0.7, 1, 0.7, -1}}};
constexpr std::array<SStroke, 3> kLetterY = {{{-0.7, 1, 0, 0}, {0.7, 1, 0, 0}, {0, 0, 0, -1}}};
constexpr std::array<SStroke, 3> kLetterZ = {{{-0.7, 1, 0.7, 1}, {0.7, 1, -0.7, -1}, {-0.7, -1, 0.7, -1}}};

// Seven strokes make a digit, as on a pocket calculator: upper, upper right, lower right, lower, lower left, upper
// left, middle. Downwards, 0..1 by 0..2.
constexpr std::array<SStroke, 7> kDigitStrokes = {
    {{0, 0, 1, 0}, {1, 0, 1, 1}, {1, 1, 1, 2}, {0, 2, 1, 2}, {0, 1, 0, 2}, {0, 0, 0, 1}, {0, 1, 1, 1}}};
/// Bit k for stroke k, of 0 to 9.
constexpr std::array<unsigned, 10> kDigits = {0x3F, 0x06, 0x5B, 0x4F, 0x66, 0x6D, 0x7D, 0x07, 0x7F, 0x6F};

/// Cross hairs in pixels: a gap, then the hair.
constexpr double kHairFrom = 5.0;
constexpr double kHairTo = 15.0;
constexpr std::array<SStroke, 4> kHairs = {{{kHairFrom, 0, kHairTo, 0},
                                            {-kHairFrom, 0, -kHairTo, 0},
                                            {0, kHairFrom, 0, kHairTo},
                                            {0, -kHairFrom, 0, -kHairTo}}};

/// DIGIT: 0 to 9.
std::vector<SStroke> StrokesOf(int digit) {
  std::vector<SStroke> strokes;
  for (size_t k = 0; k < kDigitStrokes.size(); ++k)
    if ((kDigits[static_cast<size_t>(digit)] >> k & 1U) != 0) strokes.push_back(kDigitStrokes[k]);
  return strokes;
}

void DrawStrokes(std::span<const SStroke> strokes, double left, double top, double scale) {
  glBegin(GL_LINES);
  for (const SStroke& stroke : strokes) {
    glVertex2d(left + stroke.x1 * scale, top + stroke.y1 * scale);
    glVertex2d(left + stroke.x2 * scale, top + stroke.y2 * scale);
  }
  glEnd();
}

/// Keeps the place of the matrix, drops its rotation: what is drawn then faces the viewer.
void TurnToViewer() {
  std::array<double, 16> matrix;
  glGetDoublev(GL_MODELVIEW_MATRIX, matrix.data());
  const double scale = std::hypot(matrix[0], matrix[1], matrix[2]);
  for (size_t column = 0; column < 3; ++column) {
    for (size_t row = 0; row < 3; ++row)
      matrix[column * 4 + row] = column == row ? scale : 0.0;
  }
  glLoadMatrixd(matrix.data());
}

template <size_t N>
void DrawAxis(const std::array<double, 3>& direction, const SColor& color, const std::array<SStroke, N>& letter) {
  SetColor(color);
  glBegin(GL_LINES);
  glVertex3d(0, 0, 0);
  glVertex3d(direction[0] * kAxisLength, direction[1] * kAxisLength, direction[2] * kAxisLength);
  glEnd();
  glPushMatrix();
  glTranslated(direction[0] * kLetterPlace, direction[1] * kLetterPlace, direction[2] * kLetterPlace);
  TurnToViewer();
  glBegin(GL_LINES);
  for (const SStroke& stroke : letter) {
    glVertex3d(stroke.x1 * kLetterSize, stroke.y1 * kLetterSize, 0);
    glVertex3d(stroke.x2 * kLetterSize, stroke.y2 * kLetterSize, 0);
  }
  glEnd();
  glPopMatrix();
}

/// How bright the mirrored world is where the sphere map has x, y: -1..1, right and up.
double Shine(double x, double y) {
  const double spot = std::exp(-9.0 * ((x - 0.25) * (x - 0.25) + (y - 0.4) * (y - 0.4)));
  const double sky = std::clamp(y + 0.2, 0.0, 1.0) * 0.22;
  return std::min(1.0, 0.8 * spot + sky);
}

}  // namespace

SInk SInk::For(const SColor& background) {
  // The eye's weights of the three colours.
  const int brightness = background.red * 299 + background.green * 587 + background.blue * 114;
  if (brightness < 128 * 1000) return {.line = {225, 230, 238}, .marker = {255, 196, 48}};
  return {.line = {24, 28, 36}, .marker = {176, 32, 0}};
}

void DrawAxes() {
  DrawAxis({1, 0, 0}, {230, 60, 50}, kLetterX);
  DrawAxis({0, 1, 0}, {50, 175, 70}, kLetterY);
  DrawAxis({0, 0, 1}, {70, 110, 245}, kLetterZ);
}

void DrawBall(double radius) {
  GLUquadric* quadric = gluNewQuadric();
  if (quadric == nullptr) return;
  gluQuadricNormals(quadric, GLU_SMOOTH);
  gluSphere(quadric, radius, 8, 6);
  gluDeleteQuadric(quadric);
}

void EnterWindow(int width, int height) {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(0.0, width, height, 0.0, -1.0, 1.0);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  glDisable(GL_DEPTH_TEST);
}

void DrawCrossHairs(const SScreenPoint& at, double pixel_ratio) {
  glLineWidth(static_cast<float>(5.0 * pixel_ratio));
  SetColor({0, 0, 0});
  DrawStrokes(kHairs, at.x, at.y, pixel_ratio);
  glLineWidth(static_cast<float>(2.0 * pixel_ratio));
  SetColor({255, 255, 255});
  DrawStrokes(kHairs, at.x, at.y, pixel_ratio);
}

void DrawNumber(const SScreenPoint& at, int number, double pixel_ratio) {
  const double left = at.x + 9.0 * pixel_ratio;
  const double top = at.y - 24.0 * pixel_ratio;
  const double right = left + 14.0 * pixel_ratio;
  const double bottom = top + 18.0 * pixel_ratio;
  const std::array<std::array<double, 2>, 6> flag = {{{at.x, at.y},
                                                      {left, bottom - 6.0 * pixel_ratio},
                                                      {left, top},
                                                      {right, top},
                                                      {right, bottom},
                                                      {left + 6.0 * pixel_ratio, bottom}}};
  glLineWidth(static_cast<float>(1.5 * pixel_ratio));
  for (const auto& [shape, color] : {std::pair{GL_POLYGON, SColor{0, 0, 0}}, {GL_LINE_LOOP, {255, 255, 255}}}) {
    SetColor(color);
    glBegin(static_cast<GLenum>(shape));
    for (const auto& corner : flag)
      glVertex2dv(corner.data());
    glEnd();
  }
  DrawStrokes(StrokesOf(number % 10), left + 4.0 * pixel_ratio, top + 3.0 * pixel_ratio, 6.0 * pixel_ratio);
}

void DrawBand(const SScreenPoint& from, const SScreenPoint& to, double pixel_ratio) {
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_FALSE);
  glColor4ub(130, 180, 230, 90);
  glRectd(from.x, from.y, to.x, to.y);
  glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  glLineWidth(static_cast<float>(pixel_ratio));
  SetColor({70, 140, 210});
  glRectd(from.x, from.y, to.x, to.y);
}

void AppendNumber(int32_t number, double left, double top, double scale, std::vector<FloatPoint>& ends) {
  constexpr double kDigitSize = 5.0;
  const auto append = [&](double x, double y) {
    ends.push_back(
        {static_cast<float>(left + x * kDigitSize * scale), static_cast<float>(top + y * kDigitSize * scale), 0.0F});
  };
  for (const char digit : std::to_string(number)) {
    for (const SStroke& stroke : StrokesOf(digit - '0')) {
      append(stroke.x1, stroke.y1);
      append(stroke.x2, stroke.y2);
    }
    left += kDigitAdvance * scale;
  }
}

double BallRadius(int count) {
  return 0.02 / (1.0 + std::sqrt(count / 1500.0));
}

void UploadShine() {
  constexpr int kSide = 64;
  std::vector<uint8_t> texels;
  for (int row = 0; row < kSide; ++row) {
    for (int column = 0; column < kSide; ++column) {
      const double x = (column + 0.5) / kSide * 2.0 - 1.0;
      const double y = (row + 0.5) / kSide * 2.0 - 1.0;
      texels.push_back(static_cast<uint8_t>(255.0 * Shine(x, y)));
    }
  }
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
  glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
  glTexImage2D(GL_TEXTURE_2D, 0, GL_LUMINANCE, kSide, kSide, 0, GL_LUMINANCE, GL_UNSIGNED_BYTE, texels.data());
}

}  // namespace veldra
