#include "app/programstart.h"

#include <QProcess>

#include "ui/qstrings.h"

namespace veldra {

std::string StartProgram(const SProgramCall& call, const std::string& folder) {
  QProcess process;
  process.setProgram(ToQString(call.program));
  QStringList arguments;
  for (const std::string& argument : call.arguments)
    arguments.append(ToQString(argument));
  process.setArguments(arguments);
  process.setWorkingDirectory(ToQString(folder));
  return process.startDetached() ? "" : call.program + ": " + process.errorString().toStdString();
}

}  // namespace veldra
