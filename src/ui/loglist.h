#pragma once

#include "station/journalentry.h"

#include <QList>
#include <QListWidget>

#include <memory>
#include <vector>

/// The operator's log: time-stamped lines, the newest at the bottom, at most MaxLines of them. It starts empty;
/// scrolling up beyond its top brings lines from the journal.
class LogList : public QListWidget {
    Q_OBJECT
public:
    static constexpr int MaxLines = 500;

    explicit LogList(QWidget* parent = nullptr);

public Q_SLOTS:
    void append(const QString& text);
    /// Adds a line in red.
    void appendError(const QString& text);

    /// Brings the last line that says this up to date; it keeps its time.
    void amend(const QString& before, const QString& text);
    /// Adds earlier lines, oldest first, above all others; the lines in view stay where they are.
    void prepend(const QList<JournalEntry>& lines);

Q_SIGNALS:
    /// Somebody has scrolled up to the top: lines from before this moment are wanted.
    void earlierWanted(qint64 utcMs, int atMost);

protected:
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void add(const QString& text, bool isError);
    void askForEarlier();
    void restoreNewest();

    std::vector<std::unique_ptr<QListWidgetItem>> m_hidden; ///< the newest lines, newest first, while earlier ones show
    qint64 m_askedBefore = -1; ///< what earlierWanted() was last emitted with; -1: never
};
