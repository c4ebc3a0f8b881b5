# The icons as PNG files, made from the SVG files in which they are drawn; and the icon files of Windows.

set(VELDRA_ICON_SIDES 16 20 24 32 40 48 64 96)
set(VELDRA_PROGRAM_ICON_SIDES 16 24 32 48 64 128 256)
# Each goes to the display as it is, twice; nothing there shows a larger one of a window.
set(VELDRA_WINDOW_ICON_SIDES 16 32 64 128)

# veldra_icon_pictures(SVG SIDES OUT): adds the PNG files, <name>-<side>.png in the build folder, to the list OUT.
function(veldra_icon_pictures svg sides out)
  find_program(VELDRA_RSVG_CONVERT rsvg-convert REQUIRED)
  cmake_path(GET svg STEM name)
  set(folder "${CMAKE_CURRENT_BINARY_DIR}/icons")
  file(MAKE_DIRECTORY "${folder}")
  set(made "")
  set(commands "")
  foreach(side IN LISTS ${sides})
    set(picture "${folder}/${name}-${side}.png")
    list(APPEND made "${picture}")
    list(APPEND commands COMMAND "${VELDRA_RSVG_CONVERT}" -w ${side} -h ${side} -o "${picture}" "${svg}")
  endforeach()
  add_custom_command(OUTPUT ${made} ${commands} DEPENDS "${svg}" VERBATIM)
  set(${out} ${${out}} ${made} PARENT_SCOPE)
endfunction()

# veldra_windows_icon(SVG ICO): the icon file ICO with all sizes that Windows asks for.
function(veldra_windows_icon svg ico)
  find_program(VELDRA_ICOTOOL icotool REQUIRED)
  set(pictures "")
  veldra_icon_pictures("${svg}" VELDRA_PROGRAM_ICON_SIDES pictures)
  add_custom_command(OUTPUT "${ico}" COMMAND "${VELDRA_ICOTOOL}" --create --output "${ico}" ${pictures} DEPENDS ${pictures} VERBATIM)
endfunction()
