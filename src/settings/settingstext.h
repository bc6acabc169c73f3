#pragma once

#include <QCoreApplication>
#include <QJsonObject>
#include <QString>
#include <QStringList>

class AppSettings;

/// The settings as text, for the command line: KEY=VALUE, with the keys and the values of the store.
class SettingsText {
    Q_DECLARE_TR_FUNCTIONS(SettingsText)
public:
    /// The longest text that any key takes, in characters.
    static constexpr int MaxValueLength = 4096;

    /// Every key that can be read, in the order of the store.
    static QStringList keys();
    /// Whether the value must not be shown, logged or given on a command line.
    static bool isSecret(const QString& key);
    /// The value, "true" or "false" for a switch, identifiers and names of devices percent-encoded; empty for an
    /// unknown key.
    static QString value(const AppSettings& settings, const QString& key);
    /// The same, fit for others to read: addresses without user names, passwords and queries, secrets left out.
    static QString withoutSecrets(const AppSettings& settings, const QString& key);
    /// Changes one field under the same limits as the settings dialog, without saving.
    /// \return what is wrong with key or value, as a sentence; empty when the field has the value now.
    static QString setValue(AppSettings& settings, const QString& key, const QString& text);
    /// Changes all fields and saves, or changes none. \param values the texts by their keys. \return as setValue().
    static QString setValues(AppSettings& settings, const QJsonObject& values);
};
