#include "ui/aboutdialog.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPixmap>
#include <QVBoxLayout>

AboutDialog::AboutDialog(QWidget* parent) : QDialog(parent)
{
    setWindowTitle(tr("About Tidewell"));

    auto* logo = new QLabel;
    logo->setPixmap(QPixmap(QStringLiteral(":/branding/logo.png")));
    logo->setAccessibleName(tr("Tidewell"));

    auto* text = new QLabel(
        tr("<p style='margin-top:0'><b>Version %1</b><br>Continuous broadcast logging and archiving, part of the %2 "
           "suite.</p>")
            .arg(QCoreApplication::applicationVersion(), QCoreApplication::organizationName()) +
        tr("<p>It records one source around the clock and finds any moment again. Free software under the MIT "
           "license.</p>"));
    text->setTextFormat(Qt::RichText);
    text->setWordWrap(true);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(logo, 0, Qt::AlignHCenter);
    layout->addWidget(text);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}
