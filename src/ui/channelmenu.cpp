#include "ui/channelmenu.h"

#include "settings/channel.h"
#include "station/controlclient.h"

#include <QCoreApplication>
#include <QMenu>
#include <QProcess>

using namespace std::chrono_literals;

namespace {

QString labelOf(const QString& name)
{
    return name.isEmpty() ? QCoreApplication::translate("ChannelMenu", "(first channel)") : name;
}

/// Brings the window of that channel to the front, and starts the channel if it does not run.
void open(const QString& name)
{
    constexpr auto Patience = 300ms; // of the user interface
    const auto reply = ControlClient::ask(name, {{QStringLiteral("command"), QStringLiteral("show")}}, Patience);
    if (reply.state != ControlClient::Reply::State::NotRunning)
        return;
    QProcess::startDetached(QCoreApplication::applicationFilePath(),
                            name.isEmpty() ? QStringList() : QStringList{QStringLiteral("--profile"), name});
}

void fill(QMenu* channels)
{
    channels->clear();
    for (const QString& name : Channel::all()) {
        QAction* action = channels->addAction(labelOf(name), channels, [name] { open(name); });
        action->setCheckable(true);
        action->setChecked(name == Channel::name());
        action->setEnabled(name != Channel::name());
    }
}

} // namespace

void ChannelMenu::addTo(QMenu* menu)
{
    QAction* separator = menu->addSeparator();
    QMenu* channels = menu->addMenu(QCoreApplication::translate("ChannelMenu", "&Channels"));
    const auto update = [separator, channels] {
        fill(channels);
        const bool several = channels->actions().size() > 1;
        separator->setVisible(several);
        channels->menuAction()->setVisible(several);
    };
    QObject::connect(menu, &QMenu::aboutToShow, channels, update);
    update();
}
