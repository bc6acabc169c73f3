#include "ui/closedialog.h"

#include "settings/appsettings.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

std::optional<CloseDialog::Choice> CloseDialog::choiceFromSetting(int closeAction, bool hasTray)
{
    if (closeAction != Minimise && closeAction != Exit)
        return std::nullopt;
    return hasTray ? Choice(closeAction) : Exit;
}

CloseDialog::CloseDialog(bool hasTray, bool recording, QWidget* parent)
    : QDialog(parent), m_remember(new QCheckBox(tr("Remember my choice and stop asking")))
{
    setWindowTitle(tr("Close Tidewell"));

    QString text = hasTray
                       ? tr("<b>What would you like to do?</b><p>Tidewell can keep running in the notification area "
                            "so logging continues, or close completely.</p>")
                       : tr("<b>Exit Tidewell?</b>");
    if (recording)
        text += tr("<p style='color:#c0392b'><b>A recording is in progress.</b> Exiting will stop it.</p>");
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::RichText);
    label->setWordWrap(true);

    auto* buttons = new QDialogButtonBox;
    const auto addChoice = [this, buttons](const QString& caption, QDialogButtonBox::ButtonRole role, Choice choice) {
        QPushButton* button = buttons->addButton(caption, role);
        connect(button, &QPushButton::clicked, this, [this, choice] {
            m_choice = choice;
            done(choice == Cancel ? Rejected : Accepted);
        });
        return button;
    };
    QPushButton* minimise =
        hasTray ? addChoice(tr("&Minimise to Tray"), QDialogButtonBox::AcceptRole, Minimise) : nullptr;
    QPushButton* exit = addChoice(tr("E&xit"), QDialogButtonBox::DestructiveRole, Exit);
    addChoice(tr("&Cancel"), QDialogButtonBox::RejectRole, Cancel);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 16);
    layout->addWidget(label);
    layout->addWidget(m_remember);
    layout->addWidget(buttons);
    (minimise ? minimise : exit)->setDefault(true); // only a button inside of a dialog becomes the dialog's
}

QString CloseDialog::rememberIn(AppSettings& settings) const
{
    if (m_choice == Cancel || !m_remember->isChecked())
        return {};
    settings.closeAction = m_choice;
    settings.save();
    return tr("Close button set to: %1").arg(m_choice == Minimise ? tr("minimise to tray") : tr("exit"));
}
