#pragma once

#include <QCoreApplication>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <variant>

/// What the program was started for, as a plain value.
struct CommandLine {
    Q_DECLARE_TR_FUNCTIONS(CommandLine)
public:
    /// What to do; without an action on the command line the window opens.
    enum class Action { Window, Headless, Status, Record, Stop, Exit, Set, Get, ListDevices, Support, Help, Version };

    Action action = Action::Window;
    QString profile; ///< channel; empty: the first one
    QString key; ///< Get: empty for all
    QJsonObject values; ///< Set: texts by their keys; a secret's text is empty until it was read
    QStringList secrets; ///< Set: keys whose values come from the standard input, one line per key, in this order
    bool restarted = false; ///< started by a process that has crashed
    QString file; ///< Support: what to write

    /// \param arguments with the program's name first. \return the value, or what is wrong, as a sentence.
    static std::variant<CommandLine, QString> parse(const QStringList& arguments);
    /// The text that --help prints.
    static QString helpText();
    /// Whether these arguments ask for anything but the window, or are wrong, so that no display is needed.
    static bool needsNoDisplay(const QStringList& arguments);
    /// Options that lead a new process to the same channel and face.
    QStringList restartArguments() const;
};
