#include "support/windowmanager.h"

#include <QWidget>
#include <QWindow>
#include <QtTest>

namespace veldra::testing {

#ifdef _WIN32

// The system's own.
CWindowManager::CWindowManager() : is_there_(true) {}
CWindowManager::~CWindowManager() = default;

#else

CWindowManager::CWindowManager() {
  process_.start("openbox", {"--sm-disable"});
  if (!process_.waitForStarted()) return;
  // It is at work when it has framed a window.
  QWidget framed;
  framed.show();
  is_there_ = QTest::qWaitFor([&] { return framed.windowHandle()->frameMargins().top() > 0; }, 10000);
}

CWindowManager::~CWindowManager() {
  process_.terminate();
  process_.waitForFinished();
}

#endif

}  // namespace veldra::testing
