#include "platform/text.h"
#include "settings/settings.h"

namespace veldra {

namespace {

using Rows = std::vector<SSettingRow>;
using Page = ESettingPage;

constexpr double kLargestPosition = 100000;  ///< pixels: beyond any desktop made of several screens
constexpr double kLargestWidth = 10000;
constexpr double kAnyInteger = 2147483647;

template <auto Member>
auto& At(CSettings& settings) {
  return settings.*Member;
}

template <auto Rect, auto Side>
int32_t& SideOf(CSettings& settings) {
  return settings.*Rect.*Side;
}

template <size_t Index>
SColor& CustomColor(CSettings& settings) {
  return settings.custom_colors[Index];
}

template <auto Member>
SSettingRow Text(const char* key, const char* value, Page page, const char* meaning) {
  return {key, value, &At<Member>, 0, 0, false, page, meaning};
}

template <auto Member>
SSettingRow Command(const char* key, Page page, const char* meaning) {
  return {key, "", &At<Member>, 0, 0, false, page, meaning, {}, true};
}

template <auto Member>
SSettingRow Color(const char* key, const char* value, Page page, const char* meaning) {
  return {key, value, &At<Member>, 0, 0, false, page, meaning};
}

template <auto Member>
SSettingRow Number(const char* key, const char* value, double smallest, double largest, Page page,
                   const char* meaning) {
  return {key, value, &At<Member>, smallest, largest, false, page, meaning};
}

template <auto Member>
SSettingRow Switch(const char* key, bool is_on, Page page, const char* meaning) {
  return {key, is_on ? "1" : "0", &At<Member>, -kAnyInteger - 1, kAnyInteger, true, page, meaning};
}

template <auto Member>
SSettingRow Choice(const char* key, const char* value, std::vector<SSettingChoice> choices, Page page,
                   const char* meaning) {
  return {key,
          value,
          &At<Member>,
          static_cast<double>(choices.front().value),
          static_cast<double>(choices.back().value),
          false,
          page,
          meaning,
          std::move(choices)};
}

template <auto Member>
SSettingRow Position(const char* key, const char* value, const char* meaning) {
  return Number<Member>(key, value, -kLargestPosition, kLargestPosition, Page::kNone, meaning);
}

template <auto Member>
SSettingRow Width(const char* key, const char* value, const char* meaning) {
  return Number<Member>(key, value, 0, kLargestWidth, Page::kNone, meaning);
}

/// The four keys of a dialog's rectangle, spelled as the file has always had them.
template <auto Rect>
void AddRect(Rows& rows, const std::string& prefix, const std::string& dialog) {
  const auto add = [&](const char* side, int32_t& (*member)(CSettings&), const char* edge) {
    rows.push_back({prefix + side, "0", member, -kLargestPosition, kLargestPosition, false, Page::kNone,
                    Format("Where the %s edge of the %s was last.", edge, dialog.c_str())});
  };
  add("LEFT", &SideOf<Rect, &SRect::left>, "left");
  add("LTOP", &SideOf<Rect, &SRect::top>, "top");
  add("LRIGHT", &SideOf<Rect, &SRect::right>, "right");
  add("LBOTTOM", &SideOf<Rect, &SRect::bottom>, "bottom");
}

void AddFolders(Rows& rows) {
  rows.insert(
      rows.end(),
      {
          Text<&CSettings::defpal>("DEFPAL",
                                   R"(C:\Program Files\Microsoft Games\Monster Truck Madness 2\ART\METALCR2.ACT)",
                                   Page::kFolders, "Color table of textures that have none of their own."),
          Number<&CSettings::largest_wf_dim>("LARGESTWFDIM", "1000", 1, kAnyInteger, Page::kNone,
                                             "Largest dimension of a Wavefront model, in model units."),
          Switch<&CSettings::open_inactive>("OPENINACTIVE", false, Page::kWindows,
                                            "Open models behind the one that is being worked on."),
          Switch<&CSettings::save_child_state>("SAVECHILDSTATE", true, Page::kWindows,
                                               "Remember whether model windows were maximized."),
          Switch<&CSettings::save_main_state>("SAVEMAINSTATE", true, Page::kWindows,
                                              "Remember place and size of the main window."),
          Text<&CSettings::bin_dir>("BINDIR", R"(C:\Program Files\Microsoft Games\Monster Truck Madness 2\MODELS\)",
                                    Page::kFolders, "Folder of the models (BIN)."),
          Text<&CSettings::art_dir>("ARTDIR", R"(C:\Program Files\Microsoft Games\Monster Truck Madness 2\ART\)",
                                    Page::kFolders, "Folder of the textures (RAW) and color tables (ACT)."),
          Text<&CSettings::trk_dir>("TRKDIR", R"(C:\Program Files\Microsoft Games\Monster Truck Madness 2\TRUCK\)",
                                    Page::kFolders, "Folder of the truck files (TRK)."),
          Text<&CSettings::pod_dir>("PODDIR", R"(C:\Program Files\Microsoft Games\Monster Truck Madness 2\)",
                                    Page::kFolders, "Folder of the archives (POD)."),
          Switch<&CSettings::not_centered_msg>("NOTCENTEREDMSG", true, Page::kSaving,
                                               "Before saving, ask about a model that is not centered."),
          Switch<&CSettings::unused_verts_msg>("UNUSEDVERTSMSG", true, Page::kSaving,
                                               R"(Display "Unused vertices" message when saving.)"),
          Switch<&CSettings::texture_size_msg>(
              "TEXTURESIZEMSG", true, Page::kSaving,
              R"(Display "Texture size not supported by MTM2" message when loading/saving.)"),
          Switch<&CSettings::save_to_def_dir>("SAVETODEFDIR", false, Page::kSaving,
                                              "Always save models into the folder of the models."),
      });
}

void AddView(Rows& rows) {
  rows.insert(
      rows.end(),
      {
          Choice<&CSettings::render_mode>(
              "RENDERMODE", "3", {{0, "Vertices only"}, {1, "Wireframe"}, {2, "Solid untextured"}, {3, "Textured"}},
              Page::kView, "How new views draw the model."),
          Choice<&CSettings::def_face_type>("DEFFACETYPE", "24",
                                            {{0x0E, "0x0E Hellbender Face Type"},
                                             {0x11, "0x11 Transparent Color #0 (MTM)"},
                                             {0x18, "0x18 Normal Texture (MTM)"},
                                             {0x19, "0x19 Ignore Texture Coordinates (MTM)"},
                                             {0x29, "0x29 Shiny Texture (MTM2)"},
                                             {0x33, "0x33 Transparent Color #0 (MTM2)"}},
                                            Page::kSaving, "Default Face Type: what imported and new faces become."),
          Switch<&CSettings::follow_face>("FOLLOWFACE", true, Page::kView,
                                          "New views turn to the current face when another one is chosen."),
          Switch<&CSettings::show_trans>("SHOWTRANS", true, Page::kView,
                                         "New views draw faces of transparent color #0 with their holes."),
          Switch<&CSettings::axes_3d>("3DAXES", false, Page::kView, "New views show the three axes."),
          Switch<&CSettings::only_3d>("3DONLY", false, Page::kView,
                                      "New views show the model alone, without markers and highlights."),
          Choice<&CSettings::quality_3d>("3DQUALITY", "1", {{0, "Low"}, {1, "High"}}, Page::kView,
                                         "Texture quality of new views."),
          Switch<&CSettings::verts_3d>("3DVERTS", false, Page::kView, "New views mark every vertex."),
          Color<&CSettings::background>("BACKGRND", "#56677A", Page::kView, "Background color of new views."),
          Number<&CSettings::view_angle_x>("VIEWANGLEX", "20", -360, 360, Page::kView,
                                           "How far new views are turned about the X axis, in degrees."),
          Number<&CSettings::view_angle_y>("VIEWANGLEY", "-35", -360, 360, Page::kView,
                                           "How far new views are turned about the Y axis, in degrees."),
          Number<&CSettings::view_angle_z>("VIEWANGLEZ", "0", -360, 360, Page::kView,
                                           "How far new views are turned about the Z axis, in degrees."),
      });
}

/// Most of these await the editor that they are for, and play mode has a rate of its own: a control that does nothing
/// would only puzzle, so none is shown.
void AddTextureMapping(Rows& rows) {
  rows.insert(
      rows.end(),
      {
          Switch<&CSettings::preview>("PREVIEW", true, Page::kNone,
                                      "Show the face with its texture while it is being mapped."),
          Switch<&CSettings::show_guides>("SHOWGUIDES", false, Page::kNone, "Show guides over the texture."),
          Switch<&CSettings::snap_to_guides>("SNAPTOGUIDES", false, Page::kNone,
                                             "Let dragged corners snap to the guides."),
          Number<&CSettings::snap_within>("SNAPWITHIN", "4", 0, 512, Page::kNone,
                                          "Distance within which corners snap to a guide, in pixels of the screen."),
          Switch<&CSettings::tex_rot_sel_verts_only>("TEXROTSELVERTSONLY", false, Page::kNone,
                                                     "Rotating a texture moves its selected corners only."),
          Number<&CSettings::tt_page>("TTPAGE", "0", 0, 100, Page::kNone, "Last page of the tools window."),
          Number<&CSettings::scale_factor>("SCALEFACTOR", "0", -32768, 32767.999984741211, Page::kNone,
                                           "Last Hellbender scale factor; 0 when none was used yet."),
          Number<&CSettings::tex_edit_mode>("TEXEDITMODE", "0", 0, 100, Page::kNone,
                                            "Last mode of the texture editor."),
          Position<&CSettings::tex_dlg_offset_x>("TEXDLGOFFSETX", "0",
                                                 "Where the texture dialog was last, to the right."),
          Position<&CSettings::tex_dlg_offset_y>("TEXDLGOFFSETY", "0", "Where the texture dialog was last, downwards."),
          Position<&CSettings::tools_offset_x>("TOOLSOFFSETX", "0", "Where the tools window was last, to the right."),
          Position<&CSettings::tools_offset_y>("TOOLSOFFSETY", "0", "Where the tools window was last, downwards."),
          Number<&CSettings::frame_rate>("FRAMERATE", "30", 1, 1000, Page::kNone,
                                         "Frame rate of play mode, in frames per second."),
      });
}

void AddArchives(Rows& rows) {
  rows.insert(
      rows.end(),
      {
          Text<&CSettings::pod_dest_dir>("PODDESTDIR", R"(C:\Program Files\Microsoft Games\Monster Truck Madness 2\)",
                                         Page::kFolders, "Folder that archives are extracted to."),
          Width<&CSettings::extractor_name_width>("PEDLGNAMEWIDTH", "160", "POD extractor: width of the name column."),
          Width<&CSettings::extractor_folder_width>("PEDLGDIRWIDTH", "100",
                                                    "POD extractor: width of the folder column."),
          Width<&CSettings::extractor_size_width>("PEDLGSIZEWIDTH", "90", "POD extractor: width of the size column."),
          Width<&CSettings::extractor_date_width>("PEDLGDATEWIDTH", "140", "POD extractor: width of the date column."),
          Switch<&CSettings::extract_deps>("PEEXTRACTDEPS", true, Page::kArchives,
                                           "Extract the files that an extracted file needs as well."),
          Switch<&CSettings::recreate_dir_structure>("PERECREATEDIRSTRUCTURE", true, Page::kArchives,
                                                     "Extract into the same folders as in the archive."),
          Width<&CSettings::creator_name_width>("PCDLGNAMEWIDTH", "160", "POD creator: width of the name column."),
          Width<&CSettings::creator_folder_width>("PCDLGDIRWIDTH", "100", "POD creator: width of the folder column."),
          Width<&CSettings::creator_size_width>("PCDLGSIZEWIDTH", "90", "POD creator: width of the size column."),
          Width<&CSettings::creator_date_width>("PCDLGDATEWIDTH", "140", "POD creator: width of the date column."),
          Switch<&CSettings::creator_show_deps>("PCSHOWDEPS", true, Page::kArchives,
                                                "Show the files that an added file needs."),
          Switch<&CSettings::creator_insert_pod>(
              "PCINSERTPOD", false, Page::kArchives,
              "Put the files of an added archive into the new one, not the archive itself."),
          Switch<&CSettings::creator_pod_zip>("PCPODZIP", true, Page::kArchives,
                                              "Leave out the files that every installation of the game has."),
      });
}

void AddKeyboardDialog(Rows& rows) {
  AddRect<&CSettings::keyboard_dialog>(rows, "KBDLG", "keyboard dialog");
  rows.insert(
      rows.end(),
      {
          Width<&CSettings::keyboard_category_width>("KBDLGCATWIDTH", "100", "Keyboard: width of the category column."),
          Width<&CSettings::keyboard_command_width>("KBDLGCMDWIDTH", "160", "Keyboard: width of the command column."),
          Width<&CSettings::keyboard_key_width>("KBDLGKEYWIDTH", "120", "Keyboard: width of the key column."),
          Width<&CSettings::keyboard_description_width>("KBDLGDESCWIDTH", "280",
                                                        "Keyboard: width of the description column."),
      });
}

void AddDialogs(Rows& rows) {
  AddRect<&CSettings::truck_dialog>(rows, "TRDLG", "truck editor");
  AddRect<&CSettings::face_group_dialog>(rows, "FGDLG", "face group dialog");
  AddRect<&CSettings::vertex_group_dialog>(rows, "VGDLG", "vertex group dialog");
  AddRect<&CSettings::browse_window>(rows, "BWDLG", "browse window");
  AddRect<&CSettings::extractor_dialog>(rows, "PEDLG", "POD extractor");
  AddRect<&CSettings::creator_dialog>(rows, "PCDLG", "POD creator");
}

void AddMainWindow(Rows& rows) {
  rows.insert(
      rows.end(),
      {
          Switch<&CSettings::child_window_max>("CHILDWNDMAX", true, Page::kNone, "Model windows were maximized."),
          Switch<&CSettings::main_window_max>("MAINWNDMAX", false, Page::kNone, "The main window was maximized."),
          Number<&CSettings::main_window_tl>("MAINWNDTL", "0", -kAnyInteger - 1, kAnyInteger, Page::kNone,
                                             "Top left corner of the main window: x + 65536 y."),
          Number<&CSettings::main_window_br>("MAINWNDBR", "0", -kAnyInteger - 1, kAnyInteger, Page::kNone,
                                             "Bottom right corner of the main window: x + 65536 y."),
          Position<&CSettings::vertex_status_x>("VERTSTATX", "0",
                                                "Where the vertex status window was last, to the right."),
          Position<&CSettings::vertex_status_y>("VERTSTATY", "0",
                                                "Where the vertex status window was last, downwards."),
          Switch<&CSettings::vertex_status_visible>("VERTSTATVIS", true, Page::kNone,
                                                    "The vertex status window was open."),
      });
}

template <size_t... Index>
void AddCustomColors(Rows& rows, std::index_sequence<Index...>) {
  const auto add = [&](size_t index, SColor& (*member)(CSettings&)) {
    rows.push_back({Format("COLOR%zu", index), "#FFFFFF", member, 0, 0, false, Page::kNone,
                    Format("Custom color %zu of the color dialog.", index + 1)});
  };
  (add(Index, &CustomColor<Index>), ...);
}

void AddEditing(Rows& rows) {
  rows.insert(
      rows.end(),
      {
          Number<&CSettings::move_step>("MOVESTEP", "5", 1, kAnyInteger, Page::kView,
                                        "How far the keys X, Y and Z move vertices, in model units."),
          Number<&CSettings::offset_step>("OFFSETSTEP", "1", 0.001, 512, Page::kView,
                                          "How far the keys move a texture coordinate, in texels."),
          Number<&CSettings::rotate_step>("ROTATESTEP", "5", 0.1, 180, Page::kView,
                                          "How far the arrow and page keys turn the model, in degrees."),
          Number<&CSettings::zoom_step>("ZOOMSTEP", "0.125", 0.001, 100, Page::kView,
                                        "What Zoom In and Zoom Out change the zoom factor by; at 1 the model fits."),
          Choice<&CSettings::mouse_scheme>("MOUSESCHEME", "0",
                                           {{0, "Left turns, middle or right moves"},
                                            {1, "Middle turns, Shift+middle moves"},
                                            {2, "Right turns, middle moves"},
                                            {3, "Alt+left turns, Alt+middle moves"}},
                                           Page::kView, "What dragging with the mouse does in the 3D view."),
          Switch<&CSettings::texture_lock>(
              "TEXTURELOCK", false, Page::kView,
              "The texture stays in its place where corners move within their face's plane."),
          Switch<&CSettings::show_grid>("SHOWGRID", false, Page::kView, "New views show a grid to scale."),
          Switch<&CSettings::show_edges>("SHOWEDGES", false, Page::kView,
                                         "New views draw the edges over filled faces."),
          Switch<&CSettings::show_gizmo>("SHOWGIZMO", true, Page::kView,
                                         "New views show arrows, boxes and rings to drag what is selected by."),
          Switch<&CSettings::select_through>("SELECTTHROUGH", false, Page::kView,
                                             "New views select what others hide from sight, too."),
          Switch<&CSettings::orthographic>("ORTHOVIEW", false, Page::kView,
                                           "New views show the model without perspective."),
          Switch<&CSettings::vertex_numbers>("VERTEXNUMBERS", false, Page::kView,
                                             "New views show the numbers of the vertices."),
          Command<&CSettings::game_command>(
              "GAMECOMMAND", Page::kArchives,
              "Command that starts the game: a program and, with blanks between them, its arguments; quotes round what "
              "has blanks in it. {archive} becomes the archive that was written, {truck} the truck's file, {game} the "
              "game's folder, in which it runs."),
          Number<&CSettings::step_memory>("STEPMEMORY", "256", 1, 16384, Page::kSaving,
                                          "How many MB the steps that can be taken back may use, a model."),
          Switch<&CSettings::reload_unmodified>(
              "RELOADUNMODIFIED", false, Page::kWindows,
              "Load models that change on the disk again without asking, unless there are unsaved changes."),
          Switch<&CSettings::slow_drawing_msg>(
              "SLOWDRAWINGMSG", true, Page::kWindows,
              "Say at the start that 3D views are drawn slowly, without a graphics card's driver."),
          Command<&CSettings::picture_program>(
              "PICTUREPROGRAM", Page::kFolders,
              "Program that textures are edited in, with its arguments, if any; {picture} becomes the picture, which "
              "else comes last. Empty: the system's own for pictures."),
          Text<&CSettings::keys>("KEYS", "", Page::kNone, "Keys of the commands whose keys are not the usual ones."),
      });
}

Rows MakeRows() {
  Rows rows;
  AddFolders(rows);
  AddView(rows);
  AddTextureMapping(rows);
  AddKeyboardDialog(rows);
  AddArchives(rows);
  AddDialogs(rows);
  AddMainWindow(rows);
  AddCustomColors(rows, std::make_index_sequence<kCustomColorCount>());
  AddEditing(rows);
  return rows;
}

}  // namespace

std::span<const SSettingRow> SettingRows() {
  static const Rows rows = MakeRows();
  return rows;
}

}  // namespace veldra
