#pragma once

#include <QIcon>
#include <QString>

namespace Icons {
/// The drawing ":/icons/<name>.svg". Where Qt's SVG plug-in is missing, the PNGs rendered from it.
QIcon load(const QString& name);
} // namespace Icons
