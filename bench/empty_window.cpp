// The floor of the editor's start-up: an empty window with an MDI area, closed as soon as it is on the screen. With the
// argument "opengl" an OpenGL view that draws one triangle is in it: what the system's OpenGL takes by itself.
#include <QApplication>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QOpenGLWidget>
#include <QTimer>
#include <cstdlib>
#include <cstring>

#include "platform/glcontext.h"

namespace {

class CPaintedArea : public QMdiArea {
 protected:
  void paintEvent(QPaintEvent* event) override {
    QMdiArea::paintEvent(event);
    QTimer::singleShot(0, qApp, &QApplication::quit);
  }
};

class CTriangleView : public QOpenGLWidget {
 public:
  CTriangleView() {
    connect(this, &QOpenGLWidget::frameSwapped, [this] {
      if (has_drawn_) std::_Exit(EXIT_SUCCESS);
    });
  }

 protected:
  void paintGL() override {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glBegin(GL_TRIANGLES);
    glVertex2d(-0.5, -0.5);
    glVertex2d(0.5, -0.5);
    glVertex2d(0.0, 0.5);
    glEnd();
    has_drawn_ = true;
  }

 private:
  bool has_drawn_ = false;
};

}  // namespace

int main(int argc, char** argv) {
  const bool with_opengl = argc > 1 && std::strcmp(argv[1], "opengl") == 0;
  if (with_opengl) QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
  const QApplication application(argc, argv);
  QMainWindow window;
  auto* area = with_opengl ? new QMdiArea : new CPaintedArea;
  window.setCentralWidget(area);
  window.resize(1200, 800);
  if (with_opengl) area->addSubWindow(new CTriangleView)->showMaximized();
  window.show();
  return QApplication::exec();
}
