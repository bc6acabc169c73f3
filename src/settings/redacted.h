#pragma once

#include <QString>

namespace Redacted {
/// The address without user name, password, query and fragment, which may be secrets; also one that is not valid.
QString url(const QString& address);
/// The scheme and the host alone: the path of an address may be a secret too.
QString host(const QString& address);
} // namespace Redacted
