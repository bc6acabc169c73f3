#pragma once

#include <QString>

namespace Redacted {
/// The address without user name, password, query and fragment, which may be secrets; also one that is not valid.
QString url(const QString& address);
} // namespace Redacted
