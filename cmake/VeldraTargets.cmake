# How the project's targets are declared. A folder of src/ is a subsystem with a logic target veldra_<folder> and, where
# it has windows, a target veldra_<folder>_ui.

set(VELDRA_INCLUDE_ROOT "${CMAKE_BINARY_DIR}/include")

add_library(veldra_options INTERFACE)
target_compile_features(veldra_options INTERFACE cxx_std_20)
target_compile_options(veldra_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlaps in std::string's operator+ that cannot be (GCC bug 105651).
  target_compile_options(veldra_options INTERFACE -Wno-restrict)
endif()
if(VELDRA_SANITIZE)
  target_compile_options(veldra_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                  -fno-omit-frame-pointer)
  target_link_options(veldra_options INTERFACE -fsanitize=address,undefined)
endif()
if(VELDRA_FUZZ)
  target_compile_options(veldra_options INTERFACE -fsanitize=address,undefined,fuzzer-no-link
                                                  -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(veldra_options INTERFACE -fsanitize=address,undefined)
endif()
if(NOT VELDRA_ASSERTIONS)
  target_compile_definitions(veldra_options INTERFACE VELDRA_NO_ASSERTIONS)
endif()

# Lets TARGET, and whoever links it, include "<folder>/x.h" for its own folder. The headers of a folder can only be
# reached through a target that offers them, so a dependency that is not declared does not compile.
function(veldra_offer_headers target folder)
  set(view "${VELDRA_INCLUDE_ROOT}/${target}")
  file(MAKE_DIRECTORY "${view}")
  file(CREATE_LINK "${CMAKE_SOURCE_DIR}/src/${folder}" "${view}/${folder}" SYMBOLIC)
  target_include_directories(${target} PUBLIC "${view}")
endfunction()

# veldra_library(NAME FOLDER folder SOURCES file... LINK target...)
function(veldra_library name)
  cmake_parse_arguments(ARG "" "FOLDER" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC veldra_options ${ARG_LINK})
  veldra_offer_headers(${name} ${ARG_FOLDER})
endfunction()

# The same for a library of widgets.
function(veldra_ui_library name)
  veldra_library(${name} ${ARGN})
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
endfunction()

# veldra_header_only(TARGET HEADER): an interface target for a library that is just the folder of HEADER. Only that folder
# comes on the include path, so that /usr/include itself stays off it when building for another system.
function(veldra_header_only target header)
  find_path(${target}_ROOT ${header} PATHS /usr/include /usr/local/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  cmake_path(GET header PARENT_PATH folder)
  set(view "${VELDRA_INCLUDE_ROOT}/${target}")
  file(MAKE_DIRECTORY "${view}")
  file(CREATE_LINK "${${target}_ROOT}/${folder}" "${view}/${folder}" SYMBOLIC)
  add_library(${target} INTERFACE)
  target_include_directories(${target} SYSTEM INTERFACE "${view}")
endfunction()

veldra_header_only(veldra_cli11 CLI/CLI.hpp)
veldra_header_only(veldra_json nlohmann/json.hpp)
