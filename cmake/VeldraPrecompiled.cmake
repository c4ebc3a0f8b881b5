# Headers of the library, of Qt and of GoogleTest that most files include, compiled once for each kind of target. No file
# may lean on them: the presets "fuzz" and "tidy" do without (CMAKE_DISABLE_PRECOMPILE_HEADERS), where a missing #include
# shows.

set(VELDRA_STD_HEADERS <algorithm> <array> <cmath> <cstdint> <functional> <limits> <map> <memory> <optional> <span>
  <string> <string_view> <unordered_map> <utility> <vector>)
set(VELDRA_QT_HEADERS <QAction> <QApplication> <QButtonGroup> <QCheckBox> <QComboBox> <QDialog> <QDialogButtonBox>
  <QFormLayout> <QGridLayout> <QGroupBox> <QHBoxLayout> <QHeaderView> <QKeyEvent> <QLabel> <QLineEdit> <QListWidget>
  <QMainWindow> <QMenu> <QMouseEvent> <QPainter> <QPushButton> <QRadioButton> <QString> <QTimer>
  <QTreeWidget> <QVBoxLayout> <QWidget>)
set(VELDRA_TEST_HEADERS <gmock/gmock.h> <gtest/gtest.h>)
set(VELDRA_QT_TEST_HEADERS <QtTest>)

# veldra_precompiled(NAME HEADERS header... LINK target...): a set of headers that targets with the same options share.
function(veldra_precompiled name)
  cmake_parse_arguments(ARG "" "" "HEADERS;LINK" ${ARGN})
  set(source "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp")
  file(CONFIGURE OUTPUT "${source}" CONTENT "")
  add_library(${name} OBJECT "${source}")
  target_link_libraries(${name} PRIVATE veldra_options ${ARG_LINK})
  target_precompile_headers(${name} PRIVATE ${ARG_HEADERS})
endfunction()

# veldra_use_precompiled(TARGET SET WITH_WINDOWS): SET, or SET_ui where the target has windows.
function(veldra_use_precompiled target set with_windows)
  if(with_windows)
    set(set ${set}_ui)
  endif()
  target_precompile_headers(${target} REUSE_FROM ${set})
endfunction()
