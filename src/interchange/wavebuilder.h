#pragma once

#include <vector>

#include "interchange/polygonsplit.h"
#include "interchange/waveimport.h"
#include "interchange/wavetextures.h"

/// Inside ImportWaveMesh: coordinates, faces and groups of a mesh become a model's.
namespace veldra {

/// Carries SWaveOptions out.
class CWaveTransform {
 public:
  CWaveTransform(const SWaveMesh& mesh, const SWaveOptions& options);
  /// Nothing when it does not fit into 32 bits.
  std::optional<SPoint> operator()(const SWavePoint& point) const;

 private:
  SWavePoint Turned(const SWavePoint& point) const;

  SWaveOptions options_;
  SWavePoint middle_ = {};
};

class CWaveBuilder {
 public:
  CWaveBuilder(const SWaveMesh& mesh, const SWaveOptions& options, CWaveTextures& textures, CImportBuilder& builder,
               CRemarks& remarks);
  bool Build(CImportProgress& progress, SImportFault& fault);

 private:
  bool AddVertices(SImportFault& fault);
  void AddFace(size_t face);
  void AddPiece(size_t face, SPiece piece);
  void TakeCoords(size_t first_corner, const SPiece& piece, std::array<STexCoord, 4>& coords) const;
  void AddGroups();
  const SWaveMesh::SSection* Section() const { return section_ == 0 ? nullptr : &mesh_.sections[section_ - 1]; }

  const SWaveMesh& mesh_;
  SWaveOptions options_;
  CWaveTextures& textures_;
  CImportBuilder& builder_;
  CRemarks& remarks_;
  size_t section_ = 0;                         ///< how many sections have begun
  std::vector<std::vector<int32_t>> members_;  ///< of each group
  std::vector<SWavePoint> points_;
};

}  // namespace veldra
