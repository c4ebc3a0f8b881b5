#include "render/glstate.h"

namespace veldra {

namespace {

constexpr GLenum kUnwantedCapabilities[] = {GL_BLEND,
                                            GL_ALPHA_TEST,
                                            GL_CULL_FACE,
                                            GL_STENCIL_TEST,
                                            GL_SCISSOR_TEST,
                                            GL_FOG,
                                            GL_LIGHTING,
                                            GL_TEXTURE_2D,
                                            GL_COLOR_MATERIAL,
                                            GL_TEXTURE_GEN_S,
                                            GL_TEXTURE_GEN_T,
                                            GL_LINE_STIPPLE,
                                            GL_POLYGON_STIPPLE,
                                            GL_COLOR_LOGIC_OP,
                                            GL_POLYGON_OFFSET_FILL,
                                            GL_POLYGON_SMOOTH,
                                            GL_LINE_SMOOTH,
                                            GL_POINT_SMOOTH,
                                            GL_POLYGON_OFFSET_LINE};

}  // namespace

CSavedGlState::CSavedGlState() {
  glPushAttrib(GL_ALL_ATTRIB_BITS);
  glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
  glMatrixMode(GL_PROJECTION);
  glPushMatrix();
  glMatrixMode(GL_MODELVIEW);
  glPushMatrix();
}

CSavedGlState::~CSavedGlState() {
  glMatrixMode(GL_PROJECTION);
  glPopMatrix();
  glMatrixMode(GL_MODELVIEW);
  glPopMatrix();
  glPopClientAttrib();
  glPopAttrib();
}

void StartClean() {
  for (const GLenum capability : kUnwantedCapabilities)
    glDisable(capability);
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  glShadeModel(GL_SMOOTH);
  glEnable(GL_DEPTH_TEST);
  glDepthMask(GL_TRUE);
  glDepthFunc(GL_LEQUAL);
  glDepthRange(0.0, 1.0);
  glEnable(GL_NORMALIZE);
}

void SetColor(const SColor& color) {
  glColor3ub(color.red, color.green, color.blue);
}

}  // namespace veldra
