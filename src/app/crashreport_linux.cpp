#include "app/crashreport.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

// What the handler uses is made beforehand and never freed; it calls async-signal-safe functions only.
namespace {

constexpr int MaxFrames = 64;

const char* reportPath = nullptr;
const char* headline = nullptr;

void writeText(int file, const char* text)
{
    size_t length = 0;
    while (text[length] != '\0')
        ++length;
    [[maybe_unused]] const auto written = ::write(file, text, length);
}

void writeNumber(int file, int number)
{
    char digits[] = {char('0' + number / 100 % 10), char('0' + number / 10 % 10), char('0' + number % 10), '\n', '\0'};
    writeText(file, digits);
}

} // namespace

void CrashReport::prepare(const QString& folder)
{
    QDir().mkpath(folder);
    reportPath = qstrdup(QFile::encodeName(QDir(folder).filePath(QLatin1String(FileName))));
    headline = qstrdup(QStringLiteral("Tidewell %1 crashed. Signal (0: an uncaught exception): ")
                           .arg(QCoreApplication::applicationVersion())
                           .toUtf8());
    // The first call loads a library, which a crashed process must not do.
    void* frame = nullptr;
    backtrace(&frame, 1);
}

void CrashReport::write(int cause)
{
    if (!reportPath)
        return;
    const int file = open(reportPath, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0)
        return;
    writeText(file, headline);
    writeNumber(file, cause);
    void* frames[MaxFrames];
    backtrace_symbols_fd(frames, backtrace(frames, MaxFrames), file);
    close(file);
}
