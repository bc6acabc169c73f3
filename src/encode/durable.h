#pragma once

class QFileDevice;

/// Waits until what was written to this open file is on the disk, so that a power cut cannot take it back.
/// Errors are left to the next write: there is nothing else to do about them here.
void syncToDisk(QFileDevice& file);
