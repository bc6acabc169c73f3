#pragma once

#include <QWidget>

class AppSettings;
class SettingsBinding;

/// How the program itself behaves.
class GeneralTab : public QWidget {
    Q_OBJECT
public:
    GeneralTab(AppSettings& settings, SettingsBinding& binding, QWidget* parent = nullptr);
};
