#pragma once

namespace IdlePriority {
/// From now on this thread gets the processor and the disk only when nobody else wants them. Where the system refuses,
/// nothing changes.
void forThisThread();
} // namespace IdlePriority
