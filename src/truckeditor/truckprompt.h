#pragma once

#include <QString>
#include <string>

#include "packing/toolservices.h"

namespace veldra {

/// To choose a truck file: in the folder of PATH, or in that of the settings where it is "". With WITH_PICTURE the
/// truck is seen beside the files. SERVICES outlive the prompt.
SFilePrompt TruckPrompt(const QString& title, const SToolServices& services, const std::string& path,
                        bool with_picture);

}  // namespace veldra
