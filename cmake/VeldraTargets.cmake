# How the project's targets are declared. A folder of src/ is a subsystem with a logic target veldra_<folder> and, where
# it has windows, a target veldra_<folder>_ui.

set(VELDRA_INCLUDE_ROOT "${CMAKE_BINARY_DIR}/include")

add_library(veldra_options INTERFACE)
target_compile_features(veldra_options INTERFACE cxx_std_20)
target_compile_options(veldra_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlaps and overruns in std::string's operator+ that cannot be (GCC bugs 105651 and 105329).
  target_compile_options(veldra_options INTERFACE -Wno-restrict -Wno-stringop-overflow -Wno-stringop-overread -Wno-array-bounds)
endif()
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Tests derive from fixtures of unnamed namespaces, which is wrong in a header only; in a batch all files look like that.
  target_compile_options(veldra_options INTERFACE -Wno-subobject-linkage)
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
# NAME ends in _ui where the target has windows.
function(veldra_library name)
  cmake_parse_arguments(ARG "" "FOLDER" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC veldra_options ${ARG_LINK})
  veldra_offer_headers(${name} ${ARG_FOLDER})
  string(REGEX MATCH "_ui$" with_windows ${name})
  veldra_use_precompiled(${name} veldra_headers "${with_windows}")
  if(with_windows)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
  endif()
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
veldra_header_only(veldra_stb stb/stb_image.h)
