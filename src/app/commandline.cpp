#include "app/commandline.h"

#include "app/crashrestart.h"
#include "settings/channel.h"
#include "settings/settingstext.h"

#include <QCommandLineParser>

#include <algorithm>

namespace {

using Action = CommandLine::Action;

struct Option {
    const char* name;
    Action action;
    const char* valueName; ///< null: it takes none
    const char* help; ///< translated in the context "CommandLine"
};

constexpr Option Options[] = {
    {"headless", Action::Headless, nullptr,
     QT_TRANSLATE_NOOP("CommandLine", "Records without a window, as a service.")},
    {"status", Action::Status, nullptr,
     QT_TRANSLATE_NOOP("CommandLine", "Prints what the running channel does, as JSON. The exit status is 0 while it "
                                      "records, 1 while it is idle, 2 when it does not run.")},
    {"record", Action::Record, nullptr, QT_TRANSLATE_NOOP("CommandLine", "Starts a recording in the running channel.")},
    {"stop", Action::Stop, nullptr, QT_TRANSLATE_NOOP("CommandLine", "Stops it.")},
    {"exit", Action::Exit, nullptr, QT_TRANSLATE_NOOP("CommandLine", "Ends the running channel.")},
    {"set", Action::Set, "KEY=VALUE",
     QT_TRANSLATE_NOOP("CommandLine", "Changes a setting, also of the running channel. May be given several times. A "
                                      "password is read from the standard input: --set alerts/smtpPass=-")},
    {"get", Action::Get, nullptr,
     QT_TRANSLATE_NOOP("CommandLine", "Prints the setting named behind it, or all settings.")},
    {"list-devices", Action::ListDevices, nullptr,
     QT_TRANSLATE_NOOP("CommandLine", "Prints what can be recorded and what can trigger, with the settings for it.")},
    {"support", Action::Support, "FILE",
     QT_TRANSLATE_NOOP("CommandLine", "Writes journal, settings without passwords, versions and diagnostics into a ZIP "
                                      "file.")},
    {"help", Action::Help, nullptr, QT_TRANSLATE_NOOP("CommandLine", "Prints this text.")},
    {"version", Action::Version, nullptr, QT_TRANSLATE_NOOP("CommandLine", "Prints the version.")},
};

/// What QGuiApplication and QApplication understand, by its beginning.
constexpr const char* ToolkitOptions[] = {"-platform",   "-plugin",   "-style",      "-session",
                                          "-display",    "-geometry", "-qwindow",    "-reverse",
                                          "-fontengine", "-qmljs",    "-widgetcount"};

QString optionName(const Option& option)
{
    return QString::fromLatin1(option.name);
}

QCommandLineOption profileOption()
{
    return {QStringLiteral("profile"),
            CommandLine::tr("The channel that all this is about: letters, digits, - and _. Each channel has its own "
                            "settings and recordings."),
            QStringLiteral("NAME")};
}

/// The part of the parser that is the same for parsing and for the help text.
void addOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(CommandLine::tr("Continuous broadcast logging and archiving"));
    parser.addOption(profileOption());
    for (const Option& option : Options) {
        QCommandLineOption added(optionName(option), CommandLine::tr(option.help));
        if (option.valueName)
            added.setValueName(QString::fromLatin1(option.valueName));
        parser.addOption(added);
    }
    QCommandLineOption restarted(QString::fromLatin1(CrashRestart::RestartedArgument).mid(2));
    restarted.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOption(restarted);
}

/// Takes KEY=VALUE apart. \return what is wrong with it.
QString takeSetting(CommandLine& line, const QString& text)
{
    const auto equals = text.indexOf(u'=');
    if (equals < 1)
        return CommandLine::tr("--set needs KEY=VALUE.");
    const QString key = text.left(equals);
    const QString value = text.mid(equals + 1);
    if (SettingsText::isSecret(key)) {
        // A command line can be read by everybody on the computer.
        if (value != QLatin1String("-"))
            return CommandLine::tr("%1 is a secret and is read from the standard input: --set %1=-").arg(key);
        line.secrets << key;
    }
    line.values.insert(key, SettingsText::isSecret(key) ? QString() : value);
    return {};
}

} // namespace

std::variant<CommandLine, QString> CommandLine::parse(const QStringList& arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(arguments))
        return parser.errorText();

    CommandLine line;
    for (const Option& option : Options) {
        if (!parser.isSet(optionName(option)))
            continue;
        if (line.action != Action::Window)
            return tr("Only one of these options can be given at a time; --help lists them.");
        line.action = option.action;
    }
    line.restarted = parser.isSet(QString::fromLatin1(CrashRestart::RestartedArgument).mid(2));
    line.profile = parser.value(QStringLiteral("profile"));
    if (parser.isSet(QStringLiteral("profile")) && !Channel::isValidName(line.profile))
        return tr("The name of a channel has 1 to %1 letters, digits, - and _.").arg(Channel::MaxNameLength);
    for (const QString& text : parser.values(QStringLiteral("set"))) {
        if (const QString wrong = takeSetting(line, text); !wrong.isEmpty())
            return wrong;
    }
    line.file = parser.value(QStringLiteral("support"));
    if (line.action == Action::Support && line.file.isEmpty())
        return tr("--support needs the name of a file.");
    QStringList others = parser.positionalArguments();
    if (line.action == Action::Get && !others.isEmpty())
        line.key = others.takeFirst();
    if (!others.isEmpty())
        return tr("\"%1\" is no option; --help lists them.").arg(others.constFirst().left(100));
    return line;
}

QString CommandLine::helpText()
{
    QCommandLineParser parser;
    addOptions(parser);
    return parser.helpText();
}

bool CommandLine::needsNoDisplay(const QStringList& arguments)
{
    const auto parsed = parse(arguments);
    if (const auto* line = std::get_if<CommandLine>(&parsed))
        return line->action != Action::Window;
    // An error needs no display either, unless it is one of the toolkit's own options, which are taken out later.
    return std::none_of(arguments.begin() + 1, arguments.end(), [](const QString& argument) {
        return std::any_of(std::begin(ToolkitOptions), std::end(ToolkitOptions),
                           [&](const char* option) { return argument.startsWith(QLatin1String(option)); });
    });
}

QStringList CommandLine::restartArguments() const
{
    QStringList list;
    if (!profile.isEmpty())
        list << QStringLiteral("--profile") << profile;
    if (action == Action::Headless)
        list << QStringLiteral("--headless");
    return list;
}
