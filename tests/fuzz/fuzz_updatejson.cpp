#include "net/updatechecker.h"

/// Any body is an answer or none, and comparing versions is a matter of neither side.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const auto info = UpdateInfo::fromJson(bytes);
    const QString text = info ? info->latestVersion : QString::fromUtf8(bytes);
    const QString a = text.section(u'/', 0, 0);
    const QString b = text.section(u'/', 1);
    if (UpdateChecker::compareVersions(a, b) != -UpdateChecker::compareVersions(b, a) ||
        UpdateChecker::compareVersions(a, a) != 0)
        __builtin_trap();
    return 0;
}
