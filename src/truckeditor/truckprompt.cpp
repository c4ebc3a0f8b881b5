#include "truckeditor/truckprompt.h"

#include <QOpenGLContext>
#include <map>

#include "packing/packtruck.h"
#include "platform/paths.h"
#include "truckscene/truckpicture.h"
#include "truckscene/trucktemplates.h"

namespace veldra {

namespace {

constexpr int kPromptPicture = 160;

SImage PictureOfTruckAt(const std::string& path, const SToolServices& services) {
  const std::optional<CTruck> truck = IsFile(path) ? TemplateAt(path).Read() : std::nullopt;
  if (!truck) return {};
  CTruckFiles files(path, PlacesForTruck(path, services.settings, services.game_folder), services.stock);
  CTruckTextures textures(files, services.default_colors);
  // A view may have drawn last.
  if (QOpenGLContext* const current = QOpenGLContext::currentContext()) current->doneCurrent();
  return DrawTruckPicture(*truck, files, textures, services.settings, kPromptPicture);
}

}  // namespace

SFilePrompt TruckPrompt(const QString& title, const SToolServices& services, const std::string& path,
                        bool with_picture) {
  SFilePrompt prompt = {.title = title.toStdString(),
                        .filters = {{"MTM2 Truck *.trk", "*.trk"}},
                        .directory = path.empty() ? FindAnyCase(services.settings.trk_dir) : DirectoryPart(path),
                        .name = FileNamePart(path),
                        .default_extension = "trk"};
  if (!with_picture) return prompt;
  prompt.no_picture = QObject::tr("No model of this truck is found.").toStdString();
  // One that is gone back to is not put together again.
  prompt.make_picture = [&services, drawn = std::map<std::string, SImage>()](const std::string& file) mutable {
    const auto [row, is_new] = drawn.try_emplace(file);
    if (is_new) row->second = PictureOfTruckAt(file, services);
    return row->second;
  };
  return prompt;
}

}  // namespace veldra
