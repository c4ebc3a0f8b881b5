#pragma once

#include <QGroupBox>
#include <QLabel>
#include <array>
#include <cstdint>
#include <optional>

namespace veldra {

/// What a model covers on one axis, in model units; both ends belong to it.
struct SExtent {
  int32_t smallest = 0;
  int32_t largest = 0;
};

/// The model's size on the three axes as it is and as it will be, and where it will then lie.
class CSizePreview : public QGroupBox {
  Q_OBJECT

 public:
  using Extents = std::array<SExtent, 3>;  ///< X, Y, Z

  explicit CSizePreview(QWidget* parent = nullptr);
  /// The places come to stand below the sizes; for good.
  void MakeNarrow();
  void SetPresent(const Extents& extents);
  /// Nothing: no result to show.
  void SetResult(const std::optional<Extents>& extents);

 private:
  struct SRow {
    QLabel* present;
    QLabel* result;
    QLabel* place;
  };
  std::array<SRow, 3> rows_;
};

}  // namespace veldra
