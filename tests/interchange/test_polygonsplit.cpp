#include "interchange/polygonsplit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>
#include <numeric>
#include <set>

namespace veldra {
namespace {

using Flat = std::vector<std::pair<double, double>>;

/// The polygon in a plane that is parallel to no axis.
std::vector<SWavePoint> Tilted(const Flat& flat) {
  std::vector<SWavePoint> points;
  for (const auto& [x, y] : flat)
    points.push_back({x + 2 * y, 3 * x - y, 5 * x + y});
  return points;
}

double Area(const Flat& flat, std::span<const uint32_t> corners) {
  double twice = 0;
  for (size_t i = 0; i < corners.size(); ++i) {
    const auto& [x, y] = flat[corners[i]];
    const auto& [next_x, next_y] = flat[corners[(i + 1) % corners.size()]];
    twice += x * next_y - y * next_x;
  }
  return twice / 2;
}

bool IsConvex(const Flat& flat, std::span<const uint32_t> corners) {
  for (size_t i = 0; i < corners.size(); ++i) {
    const uint32_t three[] = {corners[i], corners[(i + 1) % corners.size()], corners[(i + 2) % corners.size()]};
    if (Area(flat, three) <= 0) return false;
  }
  return true;
}

Flat Star(int points, double inner) {
  Flat star;
  for (int i = 0; i < 2 * points; ++i) {
    const double angle = std::numbers::pi * i / points;
    const double radius = i % 2 == 0 ? 10 : inner;
    star.emplace_back(radius * std::cos(angle), radius * std::sin(angle));
  }
  return star;
}

Flat Comb(int teeth) {
  Flat comb = {{2.0 * teeth, -1}, {2.0 * teeth, 0}};
  for (int i = teeth - 1; i >= 0; --i) {
    comb.emplace_back(2.0 * i + 1, 10);
    comb.emplace_back(2.0 * i, 0);
  }
  comb.emplace_back(0, -1);
  return comb;
}

/// A square with a square hole, to which a cut leads that is passed twice.
const Flat kRing = {{0, 0}, {9, 0}, {9, 9}, {0, 9}, {0, 0}, {3, 3}, {3, 6}, {6, 6}, {6, 3}, {3, 3}};
const std::vector<int32_t> kRingVertices = {0, 1, 2, 3, 0, 4, 5, 6, 7, 4};

std::vector<int32_t> Numbered(size_t count) {
  std::vector<int32_t> vertices(count);
  std::iota(vertices.begin(), vertices.end(), 0);
  return vertices;
}

/// The pieces are convex, have the direction of the whole, cover it, and use only its own corners.
void ExpectCover(const Flat& flat, const std::vector<int32_t>& vertices, size_t most_pieces) {
  const std::vector<SPiece> pieces = SplitPolygon(Tilted(flat), vertices);
  EXPECT_LE(pieces.size(), most_pieces);
  double area = 0;
  std::map<std::pair<int32_t, int32_t>, int> sides;
  for (const SPiece& piece : pieces) {
    const std::span corners(piece.corners.data(), piece.count);
    EXPECT_TRUE(IsConvex(flat, corners));
    area += Area(flat, corners);
    std::set<int32_t> distinct;
    for (size_t i = 0; i < corners.size(); ++i) {
      const int32_t from = vertices[corners[i]];
      const int32_t to = vertices[corners[(i + 1) % corners.size()]];
      EXPECT_TRUE(distinct.insert(from).second);
      EXPECT_EQ(++sides[std::pair(from, to)], 1) << "pieces overlap";
    }
  }
  std::vector<uint32_t> all(flat.size());
  std::iota(all.begin(), all.end(), 0U);
  EXPECT_NEAR(area, Area(flat, all), 1e-6);
}

TEST(PolygonSplit, PiecesKeepTheOutline) {
  const struct {
    const char* name;
    Flat flat;
    size_t most_pieces;
  } rows[] = {{"square", {{0, 0}, {1, 0}, {1, 1}, {0, 1}}, 1},
              {"arrowhead", {{0, 0}, {5, 5}, {0, 2}, {-5, 5}}, 2},
              {"pentagon", {{0, 0}, {4, 0}, {5, 3}, {2, 5}, {-1, 3}}, 2},
              {"straight corners", {{0, 0}, {1, 0}, {2, 0}, {2, 2}, {1, 2}, {0, 2}}, 3},
              {"L", {{0, 0}, {9, 0}, {9, 1}, {1, 1}, {1, 9}, {0, 9}}, 3},
              {"star", Star(5, 4), 8},
              {"pointed star", Star(40, 0.5), 78},
              {"circle", Star(50, 10), 49},
              {"comb", Comb(60), 130},
              {"spike", {{0, 0}, {9, 0}, {9, 9}, {5, 9}, {5, 15}, {5, 9}, {0, 9}}, 4}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ExpectCover(row.flat, Numbered(row.flat.size()), row.most_pieces);
  }
  ExpectCover(kRing, kRingVertices, 6);
}

TEST(PolygonSplit, WhatHasNoInsideStillEnds) {
  for (const Flat& quad : {Flat{{0, 0}, {1, 0}, {2, 0}, {3, 0}}, Flat{{0, 0}, {1, 1}, {1, 0}, {0, 1}}}) {
    const std::vector<SPiece> pieces = SplitPolygon(Tilted(quad), Numbered(4));
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_EQ(pieces[0].count, 4U);
  }
  EXPECT_TRUE(SplitPolygon(Tilted({{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}}), Numbered(5)).empty());
  // An outline that crosses itself everywhere.
  Flat tangle;
  for (int i = 0; i < 20000; ++i)
    tangle.emplace_back(std::sin(i * 7919.0), std::cos(i * 104729.0));
  const std::vector<SPiece> pieces = SplitPolygon(Tilted(tangle), Numbered(tangle.size()));
  EXPECT_LE(pieces.size(), tangle.size());
  const std::vector<SWavePoint> far = {{1e308, 0, 0}, {-1e308, 1e308, 0}, {0, 1e300, 1e308}, {5, 5, 5}, {0, -1e308, 0}};
  EXPECT_LE(SplitPolygon(far, Numbered(5)).size(), 3U);
}

}  // namespace
}  // namespace veldra
