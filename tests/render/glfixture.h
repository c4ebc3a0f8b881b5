#pragma once

#include <gtest/gtest.h>

#include "platform/glcontext.h"
#include "render/scene.h"

namespace veldra::testing {

/// A square OpenGL context in memory, current for the test.
class CGlTest : public ::testing::Test {
 protected:
  explicit CGlTest(int side) : side_(side) {}
  void SetUp() override {
    SError error;
    context_ = CMemoryGlContext::Create(side_, side_, &error);
    ASSERT_NE(context_, nullptr) << error.what;
  }
  /// What was drawn, without a fault.
  SImage Pixels() const {
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    return {.width = side_, .height = side_, .rgba = context_->ReadPixels()};
  }

  const int side_;
  std::unique_ptr<CMemoryGlContext> context_;
};

}  // namespace veldra::testing
