#include "capture/channelpick.h"

ChannelPick ChannelPick::fromSettings(int firstChannel, int channelCount)
{
    const ChannelPick pick{firstChannel, channelCount == 1 ? 1 : 2};
    return firstChannel >= 1 && pick.fits(MaxChannels) ? pick : ChannelPick();
}

QList<ChannelPick> ChannelPick::choices()
{
    QList<ChannelPick> list{{}};
    for (int first = 1; first < MaxChannels; first += 2)
        list.append({first, 2});
    for (int single = 1; single <= MaxChannels; ++single)
        list.append({single, 1});
    return list;
}

QString ChannelPick::numbers() const
{
    if (isEverything())
        return {};
    return count == 1 ? QString::number(first) : QStringLiteral("%1 + %2").arg(first).arg(first + 1);
}
