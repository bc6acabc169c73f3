#include "app/terminationsignals.h"

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent) {}
