#include "app/application.h"

#include <new>

namespace veldra {

bool CApplication::notify(QObject* receiver, QEvent* event) try {
  return QApplication::notify(receiver, event);
} catch (const std::bad_alloc&) {
  if (tell_) tell_();
  return true;
}

}  // namespace veldra
