#pragma once

#include <QWidget>

class AppSettings;
class QGroupBox;
class SettingsBinding;

/// Which alarms there are, after how long somebody is told of each, and how.
class AlarmsTab : public QWidget {
    Q_OBJECT
public:
    AlarmsTab(AppSettings& settings, SettingsBinding& binding, QWidget* parent = nullptr);

private:
    static QGroupBox* createList(AppSettings& settings, SettingsBinding& binding);
    static QGroupBox* createWays(AppSettings& settings, SettingsBinding& binding);
};
