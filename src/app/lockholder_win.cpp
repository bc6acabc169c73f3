#include "app/lockholder.h"

#include <QByteArray>
#include <QDir>
#include <QLockFile>

#include <windows.h>

namespace {

/// The security identifier of a process's user; empty when it cannot be asked for.
QByteArray userOf(HANDLE process)
{
    HANDLE token = nullptr;
    if (!OpenProcessToken(process, TOKEN_QUERY, &token))
        return {};
    alignas(TOKEN_USER) char buffer[sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE];
    DWORD length = 0;
    QByteArray sid;
    if (GetTokenInformation(token, TokenUser, buffer, sizeof buffer, &length)) {
        const auto* user = reinterpret_cast<const TOKEN_USER*>(buffer);
        sid = QByteArray(static_cast<const char*>(user->User.Sid), qsizetype(GetLengthSid(user->User.Sid)));
    }
    CloseHandle(token);
    return sid;
}

/// Whether the process that the lock names is another user's.
bool isAnotherUsers(const QString& path)
{
    qint64 processId = 0;
    QString host, program;
    if (!QLockFile(path).getLockInfo(&processId, &host, &program))
        return false;
    const HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, DWORD(processId));
    if (!process)
        return GetLastError() == ERROR_ACCESS_DENIED;
    const QByteArray user = userOf(process);
    CloseHandle(process);
    return user != userOf(GetCurrentProcess());
}

} // namespace

LockHolder lockHolder(const QString& path)
{
    // QLockFile keeps its file open and lets nobody else write to it.
    const HANDLE file = CreateFileW(reinterpret_cast<const wchar_t*>(QDir::toNativeSeparators(path).utf16()),
                                    GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        CloseHandle(file);
        return LockHolder::Nobody;
    }
    switch (GetLastError()) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return LockHolder::Nobody;
    case ERROR_SHARING_VIOLATION:
        return isAnotherUsers(path) ? LockHolder::AnotherUser : LockHolder::ThisUser;
    default:
        return LockHolder::AnotherUser;
    }
}

QString lockUserName()
{
    return QString::fromLatin1(userOf(GetCurrentProcess()).toHex().right(16));
}
