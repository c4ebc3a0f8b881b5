#pragma once

#include <QList>
#include <QStringList>
#include <QTreeWidget>

namespace veldra {

/// A list to read, a column for each of HEADERS. Choosing a row does nothing.
QTreeWidget* MakeRowList(const QStringList& headers, const QList<QStringList>& rows);

}  // namespace veldra
