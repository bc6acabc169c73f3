#pragma once

#include "archive/recordinfo.h"

#include <QByteArray>
#include <QList>

/// The text of "records.json": an array of objects with "file", "start", "durationMs" and "bytes".
namespace RecordsFile {

/// Compact JSON, "start" in ISO 8601 local time without a zone. Leaves out the files in progress.
QByteArray toJson(const QList<RecordInfo>& records);

/// Reads such an array, bare or as the member "records" of an object; a text of any other shape is no records.
/// In an element, what is missing or of the wrong type reads as an empty string, an invalid start or 0.
/// \param folder what filePath is made of: the folder, a slash and the file name.
QList<RecordInfo> fromJson(const QByteArray& json, const QString& folder);

} // namespace RecordsFile
