// The floor of the editor's start-up: an empty window with an MDI area, closed as soon as it was painted.
#include <QApplication>
#include <QMainWindow>
#include <QMdiArea>
#include <QTimer>

namespace {

class CPaintedArea : public QMdiArea {
 protected:
  void paintEvent(QPaintEvent* event) override {
    QMdiArea::paintEvent(event);
    QTimer::singleShot(0, qApp, &QApplication::quit);
  }
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QMainWindow window;
  window.setCentralWidget(new CPaintedArea);
  window.resize(1200, 800);
  window.show();
  return QApplication::exec();
}
