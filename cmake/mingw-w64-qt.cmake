# Cross-compiling for 64-bit Windows with windows, too: a static Qt from the folder VELDRA_QT_WINDOWS, whose tools are those of
# the same version on this system.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VELDRA_QT_WINDOWS)
set(VELDRA_QT_TOOLCHAIN "${VELDRA_QT_WINDOWS}/lib/cmake/Qt6/qt.toolchain.cmake")
if(NOT EXISTS "${VELDRA_QT_TOOLCHAIN}")
  message(FATAL_ERROR "No Qt for Windows in VELDRA_QT_WINDOWS, which is \"${VELDRA_QT_WINDOWS}\": scripts/build-windows finds or builds one")
endif()
set(QT_CHAINLOAD_TOOLCHAIN_FILE "${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake")
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake)
include("${VELDRA_QT_TOOLCHAIN}")
