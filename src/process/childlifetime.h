#pragma once

class QProcess;

namespace ChildLifetime {

/// Lets this child end together with this program, however that ends: a decoder without a listener would stay
/// connected to its stream for ever. To be called before the child is started.
void endWithThisProgram(QProcess& child);

} // namespace ChildLifetime
