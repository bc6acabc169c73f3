#pragma once

#include <QString>

/// The mail password's form in the store. This hides it from a passing glance, and no more. Any password comes back
/// exactly. A stored text that is no base64 reads as whatever a lenient decoder makes of it.
namespace Scramble {
QString scramble(const QString& password);
QString unscramble(const QString& stored);
} // namespace Scramble
