#include "triggers/midimessage.h"

#include <QRegularExpression>

namespace {

QString withoutNumbers(QString name)
{
    static const QRegularExpression numbers(QStringLiteral(" \\d+:\\d+$"));
    return name.remove(numbers);
}

} // namespace

std::optional<bool> midiTriggerState(quint32 message, const MidiFilter& filter)
{
    const int status = int(message & 0xff);
    const int number = int(message >> 8 & 0xff);
    const int value = int(message >> 16 & 0xff);
    if (filter.channel != 0 && filter.channel != (status & 0x0f) + 1)
        return {};
    if (number != filter.number)
        return {};
    switch (status & 0xf0) {
    case 0x90: // note on
        return value != 0;
    case 0xb0: // control change
        return value >= 64;
    case 0x80: // note off
        return false;
    default:
        return {};
    }
}

int midiDeviceIndex(const QStringList& names, const QString& name)
{
    if (const auto exact = names.indexOf(name); exact >= 0)
        return int(exact);
    for (qsizetype i = 0; i < names.size(); ++i) {
        if (withoutNumbers(names.at(i)) == withoutNumbers(name))
            return int(i);
    }
    return -1;
}
