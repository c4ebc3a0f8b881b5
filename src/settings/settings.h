#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace veldra {

struct SColor {
  uint8_t red = 0;
  uint8_t green = 0;
  uint8_t blue = 0;
  bool operator==(const SColor&) const = default;
};

/// A dialog's place; right and bottom are the first pixels outside. All zero: never placed.
struct SRect {
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;
  bool operator==(const SRect&) const = default;
};

inline constexpr size_t kCustomColorCount = 16;

/// What turns and what moves the model in the 3D view. A click with the left button picks in all of them, Ctrl adds,
/// Shift and the left button select by rubber band, the wheel zooms.
enum class EMouseScheme : int32_t {
  kLeftTurns = 0,    ///< left turns; middle, or right, moves
  kMiddleTurns = 1,  ///< middle turns; Shift and middle moves
  kRightTurns = 2,   ///< right turns; middle moves
  kAltTurns = 3,     ///< Alt and left turns; Alt and middle moves
};

/// Key and value texts as they stand in the settings file.
using SettingsMap = std::map<std::string, std::string>;

/// The settings of the application. What each means, its key and its default stand in the table of
/// settingstable.cpp, from which everything else about them is made. Integers that are switches hold 0 or not 0.
struct CSettings {
  std::string defpal;
  int32_t largest_wf_dim = 0;
  int32_t open_inactive = 0;
  int32_t save_child_state = 0;
  int32_t save_main_state = 0;
  std::string bin_dir;
  std::string art_dir;
  std::string trk_dir;
  std::string pod_dir;
  int32_t not_centered_msg = 0;
  int32_t unused_verts_msg = 0;
  int32_t texture_size_msg = 0;
  int32_t save_to_def_dir = 0;
  int32_t render_mode = 0;
  int32_t def_face_type = 0;
  int32_t follow_face = 0;
  int32_t show_trans = 0;
  int32_t axes_3d = 0;
  int32_t only_3d = 0;
  int32_t quality_3d = 0;
  int32_t verts_3d = 0;
  SColor background;
  double view_angle_x = 0.0;
  double view_angle_y = 0.0;
  double view_angle_z = 0.0;
  int32_t preview = 0;
  int32_t show_guides = 0;
  int32_t snap_to_guides = 0;
  int32_t snap_within = 0;
  int32_t tex_rot_sel_verts_only = 0;
  int32_t tt_page = 0;
  double scale_factor = 0.0;
  int32_t tex_edit_mode = 0;
  int32_t tex_dlg_offset_x = 0;
  int32_t tex_dlg_offset_y = 0;
  int32_t tools_offset_x = 0;
  int32_t tools_offset_y = 0;
  double frame_rate = 0.0;
  SRect keyboard_dialog;
  int32_t keyboard_category_width = 0;
  int32_t keyboard_command_width = 0;
  int32_t keyboard_key_width = 0;
  int32_t keyboard_description_width = 0;
  std::string pod_dest_dir;
  int32_t extractor_name_width = 0;
  int32_t extractor_folder_width = 0;
  int32_t extractor_size_width = 0;
  int32_t extractor_date_width = 0;
  int32_t extract_deps = 0;
  int32_t recreate_dir_structure = 0;
  int32_t creator_name_width = 0;
  int32_t creator_folder_width = 0;
  int32_t creator_size_width = 0;
  int32_t creator_date_width = 0;
  int32_t creator_show_deps = 0;
  int32_t creator_insert_pod = 0;
  int32_t creator_pod_zip = 0;
  SRect truck_dialog;
  SRect face_group_dialog;
  SRect vertex_group_dialog;
  SRect browse_window;
  SRect extractor_dialog;
  SRect creator_dialog;
  int32_t child_window_max = 0;
  int32_t main_window_max = 0;
  int32_t main_window_tl = 0;  ///< x in the low, y in the high 16 bits
  int32_t main_window_br = 0;  ///< likewise
  int32_t vertex_status_x = 0;
  int32_t vertex_status_y = 0;
  int32_t vertex_status_visible = 0;
  std::array<SColor, kCustomColorCount> custom_colors = {};
  int32_t move_step = 0;  ///< model units
  int32_t texture_lock = 0;
  double offset_step = 0.0;  ///< texels of the face's texture
  double rotate_step = 0.0;  ///< degrees
  double zoom_step = 0.0;    ///< what Zoom In and Zoom Out change
  int32_t mouse_scheme = 0;  ///< one of EMouseScheme
  int32_t show_grid = 0;
  int32_t show_gizmo = 0;
  int32_t show_edges = 0;
  int32_t select_through = 0;
  int32_t orthographic = 0;
  int32_t vertex_numbers = 0;
  int32_t reload_unmodified = 0;
  int32_t slow_drawing_msg = 0;
  std::string game_command;     ///< see ReadGameCommand
  std::string picture_program;  ///< "": the system's own
  int32_t step_memory = 0;      ///< MB that the steps of a document may take
  std::string keys;             ///< what the user has changed of them, see CUserKeys

  CSettings();  ///< the defaults
  /// Every key that MAP has, the rest stays. A value that is broken or out of its range becomes the default, with a
  /// trace line. PODDESTDIR without a value of its own follows PODDIR.
  void Take(const SettingsMap& map);
  /// Every key of the table with its present value, in the order in which they are written to the file.
  std::vector<std::pair<std::string, std::string>> Texts() const;
};

/// Where a row's value lives.
using SettingMember = std::variant<int32_t& (*)(CSettings&), double& (*)(CSettings&), SColor& (*)(CSettings&),
                                   std::string& (*)(CSettings&)>;

/// Which page of the preferences a setting stands on; kNone for what windows remember by themselves and for what has no
/// effect yet.
enum class ESettingPage { kNone, kFolders, kSaving, kView, kArchives, kWindows, kKeys };

/// One of the values that an integer can have, in the user's words.
struct SSettingChoice {
  int32_t value;
  std::string label;
};

struct SSettingRow {
  std::string key;
  std::string default_text;
  SettingMember member;
  double smallest;  ///< range of a number; ignored for texts and colours
  double largest;
  bool is_switch;  ///< an integer shown as a check box
  ESettingPage page;
  std::string meaning;
  std::vector<SSettingChoice> choices = {};  ///< when not empty, the only values that an integer can have
  bool is_command = false;                   ///< a text that starts a program, no path
};

/// The table, in reading order.
std::span<const SSettingRow> SettingRows();
/// Null for a key that the table does not know. Keys are compared exactly.
const SSettingRow* FindSettingRow(std::string_view key);

/// TEXT into ROW's member of SETTINGS; false, nothing changed, when it is broken or out of the row's range. Colours are
/// "#RRGGBB" or a decimal number with red in its low byte.
bool SetFromText(const SSettingRow& row, const std::string& text, CSettings& settings);
/// The member's present value as it stands in the settings file; SetFromText reads it back unchanged.
std::string ToSettingText(const SSettingRow& row, const CSettings& settings);

}  // namespace veldra
