#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

#if defined(__SANITIZE_ADDRESS__)
/// Graphics drivers stay loaded to the end: what an unloaded one had allocated would count as leaked, without a name by
/// which it could be told from leaks of ours.
extern "C" int dlclose(void*) noexcept {
  return 0;
}
#endif

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();
  // The windows of the tests keep what they keep away from the user's.
  const QTemporaryDir home;
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, home.path());
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  const QApplication application(argc, argv);
  QGuiApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
