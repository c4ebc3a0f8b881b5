#include "textures/scalepicture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace veldra {

namespace {

using Pixel = std::array<double, 4>;

/// The place among FROM pixels that pixel AT of TO stands for.
size_t NearestPixel(int at, int to, int from) {
  return static_cast<size_t>((2 * int64_t{at} + 1) * from / (2 * int64_t{to}));
}

/// Which pixels of a row make one of the scaled row.
struct SWeights {
  size_t first = 0;
  std::vector<double> weights;  ///< they add up to 1
};

/// A tent about each new pixel's middle, as wide as two old pixels or, where the picture shrinks, two new ones.
std::vector<SWeights> WeightsFor(int from, int to) {
  const double step = static_cast<double>(from) / to;
  const double reach = std::max(step, 1.0);
  std::vector<SWeights> all;
  for (int i = 0; i < to; ++i) {
    const double middle = (i + 0.5) * step;
    const int first = std::max(0, static_cast<int>(std::floor(middle - reach)));
    const int end = std::min(from, static_cast<int>(std::ceil(middle + reach)));
    SWeights row{static_cast<size_t>(first), {}};
    double sum = 0;
    for (int k = first; k < end; ++k) {
      row.weights.push_back(std::max(0.0, 1 - std::abs(k + 0.5 - middle) / reach));
      sum += row.weights.back();
    }
    for (double& weight : row.weights)
      weight /= sum;
    all.push_back(std::move(row));
  }
  return all;
}

/// Along the rows, each of FROM pixels, which ROW_OF gives; the result has its rows and columns exchanged, for the
/// other direction.
template <typename RowOf>
std::vector<Pixel> ScaledRows(size_t rows, int from, int to, const RowOf& row_of) {
  const std::vector<SWeights> columns = WeightsFor(from, to);
  std::vector<Pixel> scaled(rows * columns.size());
  for (size_t row = 0; row < rows; ++row) {
    const std::span<const Pixel> pixels = row_of(row);
    for (size_t column = 0; column < columns.size(); ++column) {
      Pixel& target = scaled[column * rows + row];
      for (size_t k = 0; k < columns[column].weights.size(); ++k)
        for (size_t c = 0; c < 4; ++c)
          target[c] += columns[column].weights[k] * pixels[columns[column].first + k][c];
    }
  }
  return scaled;
}

Pixel Premultiplied(const uint8_t* rgba) {
  const double alpha = rgba[3];
  return {rgba[0] * alpha / 255, rgba[1] * alpha / 255, rgba[2] * alpha / 255, alpha};
}

/// Both directions, one after the other. Only a row at a time is held in full: a photograph is large.
std::vector<Pixel> SmoothPixels(const SImage& image, int width, int height) {
  std::vector<Pixel> row(static_cast<size_t>(image.width));
  const auto premultiplied = [&](size_t y) -> std::span<const Pixel> {
    for (size_t x = 0; x < row.size(); ++x)
      row[x] = Premultiplied(image.rgba.data() + (y * row.size() + x) * 4);
    return row;
  };
  const auto rows = static_cast<size_t>(image.height);
  const std::vector<Pixel> columns = ScaledRows(rows, image.width, width, premultiplied);
  return ScaledRows(static_cast<size_t>(width), image.height, height,
                    [&](size_t x) { return std::span(columns).subspan(x * rows, rows); });
}

SImage Smooth(const SImage& image, int width, int height) {
  const std::vector<Pixel> pixels = SmoothPixels(image, width, height);
  SImage scaled = {width, height, std::vector<uint8_t>(pixels.size() * 4)};
  const auto byte = [](double value) { return static_cast<uint8_t>(std::lround(std::clamp(value, 0.0, 255.0))); };
  for (size_t i = 0; i < pixels.size(); ++i) {
    const double alpha = pixels[i][3];
    for (size_t c = 0; c < 3; ++c)
      scaled.rgba[i * 4 + c] = alpha > 0 ? byte(pixels[i][c] * 255 / alpha) : uint8_t{0};
    scaled.rgba[i * 4 + 3] = byte(alpha);
  }
  return scaled;
}

SImage Nearest(const SImage& image, int width, int height) {
  SImage scaled = {width, height, {}};
  for (int y = 0; y < height; ++y) {
    const size_t row = NearestPixel(y, height, image.height) * static_cast<size_t>(image.width);
    for (int x = 0; x < width; ++x) {
      const auto pixel =
          image.rgba.begin() + static_cast<std::ptrdiff_t>(4 * (row + NearestPixel(x, width, image.width)));
      scaled.rgba.insert(scaled.rgba.end(), pixel, pixel + 4);
    }
  }
  return scaled;
}

}  // namespace

SImage ScalePicture(const SImage& image, int width, int height, EScaling scaling) {
  if (image.width == width && image.height == height) return image;
  return scaling == EScaling::kSmooth ? Smooth(image, width, height) : Nearest(image, width, height);
}

std::vector<uint8_t> ScaleIndices(const std::vector<uint8_t>& indices, int width, int height, int size) {
  std::vector<uint8_t> scaled;
  for (int y = 0; y < size; ++y)
    for (int x = 0; x < size; ++x)
      scaled.push_back(
          indices[NearestPixel(y, size, height) * static_cast<size_t>(width) + NearestPixel(x, size, width)]);
  return scaled;
}

}  // namespace veldra
