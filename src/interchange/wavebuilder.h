#pragma once

#include <vector>

#include "interchange/meshtextures.h"
#include "interchange/polygonsplit.h"
#include "interchange/waveimport.h"

/// Inside ImportWaveMesh: coordinates, faces and groups of a mesh become a model's.
namespace veldra {

/// Carries SWaveOptions out.
class CWaveTransform {
 public:
  CWaveTransform(const SWaveMesh& mesh, const SWaveOptions& options);
  /// Nothing when it does not fit into 32 bits.
  std::optional<SPoint> operator()(const SWavePoint& point) const;
  /// What the coordinates are multiplied by.
  double Scale() const { return options_.scale; }

 private:
  SWavePoint Turned(const SWavePoint& point) const;
  double Whole(double coordinate) const;
  void FitTo(const SWaveMesh& mesh);

  SWaveOptions options_;
  SWavePoint middle_ = {};
  bool rounds_ = false;  ///< else coordinates are cut off toward zero
};

/// Moves COORDS, of one face, by whole textures into 0..1, u and v each for itself. Where they reach over more than the
/// whole texture they are cut off; true then.
bool WrapCoords(std::span<STexCoord> coords);

class CWaveBuilder {
 public:
  CWaveBuilder(const SWaveMesh& mesh, const SWaveOptions& options, CMeshTextures& textures, CImportBuilder& builder,
               CRemarks& remarks);
  bool Build(CImportProgress& progress, SImportFault& fault);
  /// How many faces show more than their whole texture, which was cut off.
  size_t CutFaces() const { return cut_faces_; }

 private:
  bool AddVertices(SImportFault& fault);
  void AddFace(size_t face);
  void AddPiece(size_t face, SPiece piece);
  void TakeCoords(size_t first_corner, const SPiece& piece, const CBinTexture* texture,
                  std::array<STexCoord, 4>& coords);
  void AddGroups();
  const SWaveMesh::SSection* Section() const { return section_ == 0 ? nullptr : &mesh_.sections[section_ - 1]; }

  const SWaveMesh& mesh_;
  SWaveOptions options_;
  CMeshTextures& textures_;
  CImportBuilder& builder_;
  CRemarks& remarks_;
  size_t section_ = 0;                         ///< how many sections have begun
  std::vector<std::vector<int32_t>> members_;  ///< of each group
  std::vector<SWavePoint> points_;
  size_t cut_faces_ = 0;
};

}  // namespace veldra
