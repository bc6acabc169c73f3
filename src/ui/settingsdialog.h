#pragma once

#include "ui/settingsbinding.h"

#include <QDialog>

class AppSettings;

/// Every setting that the operator can change, in five tabs. Nothing is written before the dialog is accepted.
class SettingsDialog : public QDialog {
    Q_OBJECT
public:
    explicit SettingsDialog(AppSettings& settings, QWidget* parent = nullptr);

public Q_SLOTS:
    /// Writes all settings, saves them, and applies what takes effect at once: start with the system, theme.
    void accept() override;

private:
    AppSettings& m_settings;
    SettingsBinding m_binding;
};
