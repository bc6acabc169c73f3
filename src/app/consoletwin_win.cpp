#include "app/consoletwin.h"

#include <QString>

#include <cstdio>
#include <cstdlib>
#include <string>

#include <windows.h>

std::optional<int> ConsoleTwin::handWindowOver()
{
    std::wstring path(32768, L'\0'); // the longest that there is
    path.resize(GetModuleFileNameW(nullptr, path.data(), DWORD(path.size())));
    const QString own = QString::fromStdWString(path);
    if (!own.endsWith(QLatin1String(".com"), Qt::CaseInsensitive))
        return std::nullopt;
    const std::wstring window = (own.chopped(4) + QLatin1String(".exe")).toStdWString();
    std::wstring arguments = GetCommandLineW(); // a copy, as CreateProcess may write into it
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(window.c_str(), arguments.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process)) {
        std::fprintf(stderr, "%s: error %lu\n", qPrintable(QString::fromStdWString(window)), GetLastError());
        return EXIT_FAILURE;
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return EXIT_SUCCESS;
}
