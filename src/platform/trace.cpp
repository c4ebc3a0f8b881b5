#include "platform/trace.h"

#include <cstdarg>
#include <cstdio>
#include <string>
#include <utility>

#include "platform/process.h"
#include "platform/text.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace veldra {

namespace {

#ifdef _WIN32
bool DefaultSinkListens() {
  return true;
}
void DefaultSink(const std::string& text) {
  OutputDebugStringA(text.c_str());
}
#else
bool DefaultSinkListens() {
  return EnvironmentVariable("VELDRA_TRACE").has_value();
}
void DefaultSink(const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stderr);
}
#endif

TraceSink& CurrentSink() {
  static TraceSink sink;
  return sink;
}

}  // namespace

void Trace(const char* format, ...) {
  const TraceSink& sink = CurrentSink();
  if (!sink && !DefaultSinkListens()) return;
  va_list arguments;
  va_start(arguments, format);
  const std::string text = DisplayText(FormatList(format, arguments));
  va_end(arguments);
  if (sink)
    sink(text);
  else
    DefaultSink(text);
}

TraceSink SetTraceSink(TraceSink sink) {
  return std::exchange(CurrentSink(), std::move(sink));
}

}  // namespace veldra
