#pragma once

#include <QCoreApplication>
#include <QLockFile>
#include <QString>

#include <memory>

/// Keeps a second instance of the channel from recording the same source into the same files. The lock lies in the
/// temporary folder. Only a living process of the same user's refuses: whatever else is in the way, a station must
/// record.
class InstanceLock {
    Q_DECLARE_TR_FUNCTIONS(InstanceLock)
public:
    /// Waits for 200 ms at most. \return false when another instance of this user's runs.
    bool take();
    /// Why no lock is held although take() let us go on, as a sentence for the log; empty: it is held.
    QString problem() const { return m_problem; }

private:
    bool tryToHold(const QString& path);

    std::unique_ptr<QLockFile> m_lock;
    QString m_problem;
};
