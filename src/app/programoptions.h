#pragma once

#include <QCoreApplication>
#include <QStringList>

namespace veldra {

struct SProgramOptions {
  QStringList files;  ///< models to open
  QString picture;    ///< PNG file for a picture of the window; empty: none
};

/// True when the arguments only ask for a text, for which no display is needed.
bool AsksForTextOnly(int argc, char** argv);

/// Reads the program's arguments. Prints and ends the program for --help, --version and wrong usage.
SProgramOptions ParseProgramOptions(const QCoreApplication& application);

}  // namespace veldra
