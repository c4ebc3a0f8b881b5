#pragma once

#include <string>

namespace veldra::disk {

/// The folder for the program's data as the system and the user's settings have it; "" when they name none.
std::string SystemDataDirectory();
std::string SystemSettingsDirectory();
/// Lets nobody else look into the folder, as far as the system does not see to that by itself.
void KeepToUser(const std::string& path);
/// 0 or the system's error number.
int RemoveFolder(const std::string& path);

}  // namespace veldra::disk
