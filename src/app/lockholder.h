#pragma once

#include <QString>

/// Who stands behind a lock file that QLockFile has left.
enum class LockHolder {
    Nobody, ///< it is this user's, and whoever made it has died: it may be removed
    ThisUser, ///< a living process of this user's holds it
    AnotherUser ///< it is another user's, held or not, or no file at all: it must be left alone
};

/// What the file says of its maker counts little: its process number may be another program's since the last boot, and
/// the computer may have got another name. A lock that is held is known by the system, which forgets it when the
/// process ends, however it ends.
LockHolder lockHolder(const QString& path);

/// This user, as a part of a file's name.
QString lockUserName();
