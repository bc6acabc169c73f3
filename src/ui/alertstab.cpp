#include "ui/alertstab.h"

#include "net/smtpclient.h"
#include "settings/appsettings.h"
#include "settings/limits.h"
#include "ui/plainmessage.h"
#include "ui/settingsbinding.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

AlertsTab::AlertsTab(AppSettings& settings, SettingsBinding& binding, QWidget* parent)
    : QWidget(parent),
      m_email(new QLineEdit),
      m_host(new QLineEdit),
      m_port(new QSpinBox),
      m_tls(new QCheckBox(tr("Use TLS"))),
      m_user(new QLineEdit),
      m_password(new QLineEdit),
      m_from(new QLineEdit),
      m_test(new QPushButton(tr("&Test")))
{
    auto* notify = new QCheckBox(tr("Send silence notifications"));
    binding.bind(notify, settings.silenceNotify);
    auto* duration = new QSpinBox;
    duration->setRange(Limits::SilenceSeconds.lowest, Limits::SilenceSeconds.highest);
    duration->setSuffix(tr(" sec"));
    binding.bind(duration, settings.silenceSeconds);
    auto* threshold = new QDoubleSpinBox;
    threshold->setRange(Limits::SilenceThresholdDb.lowest, Limits::SilenceThresholdDb.highest);
    threshold->setDecimals(1);
    threshold->setSuffix(tr(" dB"));
    binding.bind(threshold, settings.silenceThresholdDb);
    auto* subject = new QLineEdit;
    binding.bind(subject, settings.alertSubject);
    binding.bind(m_email, settings.alertEmail);
    binding.bind(m_host, settings.smtpHost);
    m_port->setRange(Limits::Port.lowest, Limits::Port.highest);
    binding.bind(m_port, settings.smtpPort);
    if (settings.smtpPort <= 0)
        m_port->setValue(SmtpConfig().port);
    binding.bind(m_tls, settings.smtpTls);
    binding.bind(m_user, settings.smtpUser);
    m_password->setEchoMode(QLineEdit::Password);
    binding.bind(m_password, settings.smtpPass);
    binding.bind(m_from, settings.smtpFrom);
    connect(m_test, &QPushButton::clicked, this, &AlertsTab::testSmtp);

    auto* test = new QHBoxLayout;
    test->addStretch();
    test->addWidget(m_test);
    auto* group = new QGroupBox(tr("Alerts"));
    auto* form = new QFormLayout(group);
    form->addRow(notify);
    form->addRow(tr("Silence duration:"), duration);
    form->addRow(tr("Threshold:"), threshold);
    form->addRow(tr("Email address:"), m_email);
    form->addRow(tr("Subject:"), subject);
    form->addRow(tr("SMTP server:"), m_host);
    form->addRow(tr("Port:"), m_port);
    form->addRow(m_tls);
    form->addRow(tr("User name:"), m_user);
    form->addRow(tr("Password:"), m_password);
    form->addRow(tr("From email:"), m_from);
    form->addRow(test);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(group);
    layout->addStretch();
}

void AlertsTab::testSmtp()
{
    if (m_host->text().isEmpty() || m_email->text().isEmpty()) {
        PlainMessage::show(this, QMessageBox::Warning, tr("Test"),
                           tr("Enter at least an SMTP server and a recipient address."));
        return;
    }
    const SmtpConfig config{m_host->text(),     m_port->value(), m_user->text(),
                            m_password->text(), m_from->text(),  m_tls->isChecked()};
    // One at a time, for as long as the client may take.
    m_test->setEnabled(false);
    auto* client = new SmtpClient(this);
    connect(client, &SmtpClient::finished, client, &QObject::deleteLater);
    connect(client, &SmtpClient::finished, this, &AlertsTab::onTestFinished);
    client->send(config.completed(), m_email->text(), tr("Tidewell test message"),
                 tr("This is a test message from Tidewell.\nIf you received it, silence notifications are configured "
                    "correctly."));
}

void AlertsTab::onTestFinished(bool success, const QString& message)
{
    m_test->setEnabled(true);
    PlainMessage::show(this, success ? QMessageBox::Information : QMessageBox::Warning,
                       success ? tr("Test") : tr("Test failed"), message);
}
