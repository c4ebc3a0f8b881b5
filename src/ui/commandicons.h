#pragma once

#include <QIcon>
#include <QString>

namespace veldra {

/// The line icon NAME of the program's resources in the colours of the palette: its black lines become the text colour,
/// its blue ones an accent that is readable on light and dark. A null icon when there is none of that name;
/// buttons then show their text.
QIcon CommandIcon(const QString& name);

/// The program's own icon.
QIcon ProgramIcon();

}  // namespace veldra
