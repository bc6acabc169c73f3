#pragma once

#include "ui/settingsbinding.h"

#include <QDialog>

class AppSettings;
class OutputTab;
class QTabWidget;

/// Every setting that the operator can change, in five tabs. Nothing is written before the dialog is accepted.
class SettingsDialog : public QDialog {
    Q_OBJECT
public:
    explicit SettingsDialog(AppSettings& settings, QWidget* parent = nullptr);

public Q_SLOTS:
    /// Stays open and says why when a tab shows what makes no sense. Else writes all settings, saves them, and applies
    /// what takes effect at once: start with the system, theme.
    void accept() override;

private:
    AppSettings& m_settings;
    SettingsBinding m_binding;
    QTabWidget* m_tabs = nullptr;
    OutputTab* m_output = nullptr;
};
