#pragma once

#include <QWidget>

class AppSettings;
class QCheckBox;
class QLineEdit;
class QPushButton;
class QSpinBox;
class SettingsBinding;

/// When silence is reported, and to whom.
class AlertsTab : public QWidget {
    Q_OBJECT
public:
    AlertsTab(AppSettings& settings, SettingsBinding& binding, QWidget* parent = nullptr);

private Q_SLOTS:
    /// Sends a mail with what the controls hold now.
    void testSmtp();
    void onTestFinished(bool success, const QString& message);

private:
    QLineEdit* m_email;
    QLineEdit* m_host;
    QSpinBox* m_port;
    QCheckBox* m_tls;
    QLineEdit* m_user;
    QLineEdit* m_password;
    QLineEdit* m_from;
    QPushButton* m_test;
};
