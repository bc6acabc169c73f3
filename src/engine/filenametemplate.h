#pragma once

#include <QDateTime>
#include <QString>

/// Names of recording files.
namespace FileNameTemplate {
inline constexpr char Default[] = "%y%m%d-%hh%mm%ss";

/// Base name for a file that starts at `start`, without folder and extension. Tokens: %y %m %d %hh %mm %ss for the
/// start, %sn for the serial number (at least 4 digits); everything else stays, except characters that file systems
/// forbid. A blank template is replaced by Default.
QString expand(const QString& fileTemplate, const QDateTime& start, int serial);
} // namespace FileNameTemplate
