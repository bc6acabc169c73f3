#include "app/crashreport.h"

#include <QCoreApplication>
#include <QDir>

#include <cstdio>
#include <string>

#include <windows.h>

// What the handler uses is made beforehand and never freed.
namespace {

constexpr ULONG MaxFrames = 62; // more than that older systems refuse

std::wstring& reportPath = *new std::wstring;
std::string& headline = *new std::string;

void writeText(HANDLE file, const char* text)
{
    DWORD written = 0;
    WriteFile(file, text, DWORD(strlen(text)), &written, nullptr);
}

} // namespace

void CrashReport::prepare(const QString& folder)
{
    QDir().mkpath(folder);
    reportPath = QDir::toNativeSeparators(QDir(folder).filePath(QLatin1String(FileName))).toStdWString();
    headline = QStringLiteral("Tidewell %1 crashed. Signal (0: an uncaught exception): ")
                   .arg(QCoreApplication::applicationVersion())
                   .toStdString();
}

void CrashReport::write(int cause)
{
    if (reportPath.empty())
        return;
    const HANDLE file =
        CreateFileW(reportPath.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return;
    writeText(file, headline.c_str());
    char line[64];
    snprintf(line, sizeof line, "%d\r\nmodule at %p\r\n", cause, static_cast<void*>(GetModuleHandleW(nullptr)));
    writeText(file, line);
    void* frames[MaxFrames];
    const USHORT count = CaptureStackBackTrace(0, MaxFrames, frames, nullptr);
    for (USHORT i = 0; i < count; ++i) {
        snprintf(line, sizeof line, "%p\r\n", frames[i]);
        writeText(file, line);
    }
    CloseHandle(file);
}
