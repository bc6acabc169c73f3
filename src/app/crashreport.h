#pragma once

#include <QString>

/// What a crash leaves behind for whoever looks for its cause: a text file with the places in the code.
namespace CrashReport {
/// Prepares for a crash. \param folder where the report is written; made if it is missing.
void prepare(const QString& folder);
/// Writes the report. Works with a broken heap: everything it needs was prepared. \param cause number of the signal; 0:
/// an uncaught exception.
void write(int cause);

/// Gives the report of the last run a name of its own. \return its path; empty when there is no report.
QString takeLast(const QString& folder);

/// Name of the report until takeLast() renames it.
inline constexpr char FileName[] = "crash.txt";
} // namespace CrashReport
