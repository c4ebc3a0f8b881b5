#pragma once

#include <string>
#include <string_view>

#include "model/binmodel.h"

namespace veldra {

/// The model information text: counts and size, and the details of the current FACE and VERTEX where not null.
std::string ModelInformation(const CBinModel& model, const CBinFace* face, const CBinVertex* vertex);

/// Everything in the model face by face, for inspection. NAME stands in its first line. The two numbers in brackets
/// behind a corner are the low and the high word of the double u: what tools that read these dumps know.
std::string ModelDump(const CBinModel& model, std::string_view name);

/// The names of the texture entries, one a line.
std::string TextureList(const CBinModel& model);

/// The whole model as JSON, one face a line; docs/command-line.md describes it.
std::string ModelJson(const CBinModel& model);

}  // namespace veldra
