#pragma once

#include <string>

#include "cli/commandrow.h"

/// What a system wants to have of a program besides the program: made from the rows that the parser works with.
namespace veldra {

/// What the rows do not say.
struct SManualTexts {
  std::string summary;      ///< after the name: "edits 3D models"
  std::string description;  ///< a paragraph
  std::string files;        ///< likewise; "" for none
  std::string see_also;     ///< "veldra(1)"
};

/// The manual page of PROGRAM, section 1, as man(7) has it.
std::string ManualPage(const SCommandRow& program, const std::string& version, const SManualTexts& texts);

// What the shells complete: commands, options, the words that an option takes; else names of files.
std::string BashCompletion(const SCommandRow& program);
std::string ZshCompletion(const SCommandRow& program);
std::string FishCompletion(const SCommandRow& program);

}  // namespace veldra
