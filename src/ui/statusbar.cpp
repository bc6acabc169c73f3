#include "ui/statusbar.h"

#include "ui/versionlabel.h"

StatusBar::StatusBar(QWidget* parent)
    : QStatusBar(parent), m_trying(new QLabel(tr("Trying again"))), m_trigger(new QLabel)
{
    showMessage(tr("Ready"));
    m_trying->hide();
    addPermanentWidget(m_trying);
    addPermanentWidget(m_trigger);
    auto* version = new VersionLabel;
    connect(version, &VersionLabel::linkActivated, this, &StatusBar::updateCheckRequested);
    addPermanentWidget(version);
}

void StatusBar::showTrigger(bool configured, bool active, const QString& problem)
{
    m_trigger->setText(!configured ? tr("Trigger: none") : active ? tr("Trigger: ON") : tr("Trigger: off"));
    m_trigger->setToolTip(problem.isEmpty() ? QString() : QStringLiteral("<qt>%1</qt>").arg(problem.toHtmlEscaped()));
}

void StatusBar::showTrying(bool trying)
{
    m_trying->setVisible(trying);
}
