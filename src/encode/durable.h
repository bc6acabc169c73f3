#pragma once

class QFileDevice;

/// Waits until what was written to this open file is on the disk, so that a power cut cannot take it back.
/// \return false when the disk has refused some of it; qt_error_string() then says why.
bool syncToDisk(QFileDevice& file);
