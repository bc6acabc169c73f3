#include "ui/generaltab.h"

#include "settings/appsettings.h"
#include "ui/settingsbinding.h"
#include "ui/theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

GeneralTab::GeneralTab(AppSettings& settings, SettingsBinding& binding, QWidget* parent) : QWidget(parent)
{
    const auto checkBox = [&binding](const QString& text, bool& field) {
        auto* box = new QCheckBox(text);
        binding.bind(box, field);
        return box;
    };

    auto* updates = new QGroupBox(tr("Updates"));
    auto* updatesLayout = new QVBoxLayout(updates);
    updatesLayout->addWidget(checkBox(tr("Check for updates at startup"), settings.checkAtStartup));
    auto* note =
        new QLabel(tr("Checks the Quayside update service at most once a day, and whenever you use Help > Check "
                      "for Updates."));
    note->setTextFormat(Qt::PlainText);
    note->setWordWrap(true);
    updatesLayout->addWidget(note);

    auto* closing = new QComboBox;
    closing->addItem(tr("Ask me each time"), int(CloseAction::Ask));
    closing->addItem(tr("Minimise to the tray"), int(CloseAction::Minimise));
    closing->addItem(tr("Exit Tidewell"), int(CloseAction::Exit));
    binding.bind(closing, settings.closeAction);
    auto* theme = new QComboBox;
    theme->addItem(tr("Follow system"), int(Theme::FollowSystem));
    theme->addItem(tr("Light"), int(Theme::Light));
    theme->addItem(tr("Dark"), int(Theme::Dark));
    binding.bind(theme, settings.theme);
    auto* language = new QComboBox;
    language->addItem(tr("System language"), QString());
    language->addItem(QStringLiteral("English"), QStringLiteral("en"));
    language->addItem(QStringLiteral("Espanol"), QStringLiteral("es"));
    binding.bind(language, settings.language);

    auto* form = new QFormLayout;
    form->addRow(checkBox(tr("Start with the operating system"), settings.startWithSystem));
    form->addRow(tr("Closing the window:"), closing);
    form->addRow(tr("Appearance:"), theme);
    form->addRow(checkBox(tr("Show button on taskbar"), settings.taskbarButton));
    form->addRow(checkBox(tr("Restart the program if it crashes or hangs"), settings.restartOnCrash));
    form->addRow(tr("Language:"), language);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(updates);
    layout->addLayout(form);
    layout->addStretch();
}
