#pragma once

#include <string>

#include "document/earlierstates.h"
#include "document/modelcopy.h"
#include "document/recovery.h"

namespace veldra::testing {

inline bool KeepModel(CEarlierStates& states, const std::string& key, const std::string& command,
                      const CBinModel& model, SError* error = nullptr, const SImage& picture = {}) {
  return states.Keep(key, WriteModelCopy({.title = command, .time = PresentTime(), .picture = picture}, model), error);
}

inline bool SaveModel(CRecoveryFolder& folder, uint32_t id, const std::string& title, const CBinModel& model,
                      SError* error = nullptr) {
  return folder.Save(id, WriteModelCopy({.title = title, .time = PresentTime()}, model), error);
}

inline bool LoadModel(const SCopyFile& file, CBinModel& model, CTextureFinder& textures, SDiagnosis* diagnosis) {
  *diagnosis = {0, file.fault};
  return file.fault.empty() && ReadModelCopy(file.bytes.View(), model, textures, diagnosis);
}

}  // namespace veldra::testing
