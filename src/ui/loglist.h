#pragma once

#include <QListWidget>

/// The operator's log: time-stamped lines, the newest at the bottom, at most MaxLines of them. Every line goes to the
/// process log too.
class LogList : public QListWidget {
    Q_OBJECT
public:
    static constexpr int MaxLines = 500;

    explicit LogList(QWidget* parent = nullptr);

public Q_SLOTS:
    void append(const QString& text);
    /// The same in red.
    void appendError(const QString& text);

private:
    void add(const QString& text);
};
