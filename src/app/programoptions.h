#pragma once

#include <QCoreApplication>
#include <QStringList>

namespace veldra {

struct SProgramOptions {
  QStringList files;      ///< to open
  QString picture;        ///< PNG file for a picture of the window; empty: none
  QStringList commands;   ///< to carry out before it
  QString settings_file;  ///< instead of the usual one; empty: that
  bool read_only = false;
  bool draw_in_memory = false;
  bool quit_when_drawn = false;  ///< the program ends as soon as the active model was drawn; nothing is asked
};

/// True when the arguments only ask for a text, for which no display is needed.
bool AsksForTextOnly(int argc, char** argv);

/// Reads the program's arguments. Prints and ends the program for --help, --version and wrong usage.
SProgramOptions ParseProgramOptions(const QCoreApplication& application);

}  // namespace veldra
