#include "app/clientcommands.h"

#include "settings/appsettings.h"
#include "settings/channel.h"
#include "settings/settingstext.h"
#include "station/devicelisting.h"
#include "station/supportbundle.h"

#include <QJsonDocument>
#include <QTextStream>

#include <cstdio>

namespace {

void print(const QString& text)
{
    QTextStream(stdout) << text << Qt::endl;
}

void complain(const QString& text)
{
    QTextStream(stderr) << text << Qt::endl;
}

ControlClient::Reply ask(QJsonObject request, const char* command)
{
    request.insert(QStringLiteral("command"), QLatin1String(command));
    return ControlClient::ask(Channel::name(), request);
}

} // namespace

int ClientCommands::run(const CommandLine& line)
{
    switch (line.action) {
    case CommandLine::Action::Status:
        return status();
    case CommandLine::Action::Record:
        return command(QStringLiteral("record"));
    case CommandLine::Action::Stop:
        return command(QStringLiteral("stop"));
    case CommandLine::Action::Exit:
        return command(QStringLiteral("exit"));
    case CommandLine::Action::Set:
        return set(line);
    case CommandLine::Action::Get:
        return get(line);
    case CommandLine::Action::ListDevices:
        print(DeviceListing::current());
        return Ok;
    case CommandLine::Action::Support:
        return support(line.file);
    case CommandLine::Action::Help:
        print(CommandLine::helpText());
        return Ok;
    case CommandLine::Action::Version:
        print(QStringLiteral("Tidewell ") + QCoreApplication::applicationVersion());
        return Ok;
    case CommandLine::Action::Window:
    case CommandLine::Action::Headless:
        break;
    }
    return Failed;
}

int ClientCommands::complainOf(const ControlClient::Reply& reply)
{
    const bool runs = reply.state == ControlClient::Reply::State::NoAnswer;
    complain((runs ? tr("%1 is running, but does not answer.") : tr("%1 is not running.")).arg(Channel::displayName()));
    return runs ? NoAnswer : NotRunning;
}

int ClientCommands::status()
{
    const auto answer = ask({}, "status");
    if (!answer)
        return complainOf(answer);
    const QJsonObject status = answer.answer.value(QLatin1String("status")).toObject();
    print(QString::fromUtf8(QJsonDocument(status).toJson()).trimmed());
    return status.value(QLatin1String("recording")).toBool() ? Ok : Idle;
}

int ClientCommands::command(const QString& name)
{
    const auto answer = ControlClient::ask(Channel::name(), {{QStringLiteral("command"), name}});
    if (!answer)
        return complainOf(answer);
    if (name == QLatin1String("record") && !answer.answer.value(QLatin1String("recording")).toBool()) {
        complain(tr("The recording could not be started. The log of the program says why."));
        return Failed;
    }
    return Ok;
}

int ClientCommands::set(const CommandLine& line)
{
    QJsonObject values = line.values;
    QTextStream input(stdin);
    for (const QString& key : line.secrets) {
        const QString secret = input.readLine(SettingsText::MaxValueLength);
        if (secret.isNull()) { // an empty line takes the password away, no line at all is a mistake
            complain(tr("The standard input holds no line for %1.").arg(key));
            return Failed;
        }
        values.insert(key, secret);
    }
    QString error;
    const auto answer = ask({{QStringLiteral("values"), values}}, "set");
    if (answer.state == ControlClient::Reply::State::NoAnswer)
        return complainOf(answer); // what went into the store now would be written over
    if (answer)
        error = answer.answer.value(QLatin1String("error")).toString();
    else
        error = SettingsText::setValues(AppSettings::instance(), values);
    if (error.isEmpty())
        return Ok;
    complain(error);
    return Failed;
}

int ClientCommands::get(const CommandLine& line)
{
    const QStringList keys = line.key.isEmpty() ? SettingsText::keys() : QStringList{line.key};
    if (!SettingsText::keys().contains(keys.constFirst())) {
        complain(tr("There is no setting \"%1\". The settings are listed by --get.").arg(line.key.left(100)));
        return Failed;
    }
    if (SettingsText::isSecret(line.key)) {
        complain(tr("%1 is a secret and is not shown.").arg(line.key));
        return Failed;
    }
    // What a running channel holds may not have reached the store yet.
    const auto answer = ask({}, "get");
    if (answer.state == ControlClient::Reply::State::NoAnswer)
        return complainOf(answer);
    const QJsonObject running = answer ? answer.answer.value(QLatin1String("values")).toObject() : QJsonObject();
    for (const QString& key : keys) {
        if (SettingsText::isSecret(key))
            continue;
        const QString value =
            answer ? running.value(key).toString() : SettingsText::value(AppSettings::instance(), key);
        print(line.key.isEmpty() ? key + u'=' + value : value);
    }
    return Ok;
}

int ClientCommands::support(const QString& file)
{
    const QString error = SupportBundle::write(file);
    if (error.isEmpty())
        return Ok;
    complain(error);
    return Failed;
}
