#pragma once

#include <string>
#include <vector>

/// What every list of wanted files goes through before it is used: the truck's and the archives' dependency lists.
namespace veldra {

/// The list tidy-up: empty names dropped, names upper-cased, and of each name only the first kept; the order of the
/// ones that stay is the order they came in.
void TidyFileList(std::vector<std::string>& names);

/// The colour tables that go with TEXTURES: each name with ACT as its extension, in the same order.
std::vector<std::string> ColorTablesOf(const std::vector<std::string>& textures);

}  // namespace veldra
