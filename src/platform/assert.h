#pragma once

namespace veldra {

/// Told about a programming error: the condition that did not hold and where it stands.
using AssertHandler = void (*)(const char* condition, const char* file, int line);

/// Replaces the handler (the default prints to standard error and aborts) and returns the earlier one. A handler that
/// returns lets the program go on behind the assertion; tests install one that throws to turn an assertion into a
/// checked result.
AssertHandler SetAssertHandler(AssertHandler handler);

void AssertFailed(const char* condition, const char* file, int line);

}  // namespace veldra

/// A condition that only a programming error can break; never for what a file or a user can get wrong.
#ifdef VELDRA_NO_ASSERTIONS
#define VELDRA_ASSERT(condition) static_cast<void>(sizeof(condition))
#else
#define VELDRA_ASSERT(condition) \
  static_cast<void>((condition) ? 0 : (::veldra::AssertFailed(#condition, __FILE__, __LINE__), 0))
#endif
