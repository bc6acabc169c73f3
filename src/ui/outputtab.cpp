#include "ui/outputtab.h"

#include "engine/filenametemplate.h"
#include "settings/appsettings.h"
#include "settings/codectable.h"
#include "settings/limits.h"
#include "ui/settingsbinding.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

OutputTab::OutputTab(AppSettings& settings, SettingsBinding& binding, QWidget* parent)
    : QWidget(parent),
      m_folder(new QLineEdit),
      m_template(new QLineEdit),
      m_preview(new QLabel),
      m_serial(settings.fileSerial),
      m_codec(settings.codec)
{
    m_folder->setText(settings.outputFolder);
    binding.onWrite([this, &settings] {
        if (!m_folder->text().trimmed().isEmpty()) // nothing could be recorded nowhere
            settings.outputFolder = m_folder->text();
    });
    binding.bind(m_template, settings.fileTemplate);
    m_preview->setObjectName(QStringLiteral("preview"));
    m_preview->setTextFormat(Qt::PlainText);
    m_preview->setWordWrap(true);
    connect(m_folder, &QLineEdit::textChanged, this, &OutputTab::updateFilenamePreview);
    connect(m_template, &QLineEdit::textChanged, this, &OutputTab::updateFilenamePreview);

    auto* choose = new QPushButton(tr("&Choose..."));
    connect(choose, &QPushButton::clicked, this, &OutputTab::chooseFolder);
    auto* help = new QToolButton;
    help->setText(QStringLiteral("?"));
    help->setAccessibleName(tr("Filename template"));
    connect(help, &QToolButton::clicked, this, &OutputTab::explainTemplate);
    auto* folderRow = new QHBoxLayout;
    folderRow->addWidget(m_folder, 1);
    folderRow->addWidget(choose);
    auto* templateRow = new QHBoxLayout;
    templateRow->addWidget(m_template, 1);
    templateRow->addWidget(help);

    auto* split = new QSpinBox;
    split->setRange(Limits::SplitMinutes.lowest, Limits::SplitMinutes.highest);
    split->setSuffix(tr(" minute segments"));
    split->setSpecialValueText(tr("do not split"));
    binding.bind(split, settings.splitMinutes);
    auto* align = new QCheckBox(tr("Align splits to the clock"));
    binding.bind(align, settings.alignToClock);

    auto* autoDelete = new QGroupBox(tr("Auto delete"));
    autoDelete->setCheckable(true);
    binding.bind(autoDelete, settings.housekeepingEnabled);
    auto* days = new QSpinBox;
    days->setRange(Limits::HousekeepingDays.lowest, Limits::HousekeepingDays.highest);
    days->setSuffix(tr(" day(s)"));
    binding.bind(days, settings.housekeepingDays);
    auto* deleteForm = new QFormLayout(autoDelete);
    deleteForm->addRow(tr("Delete records older than"), days);

    auto* form = new QFormLayout;
    form->addRow(tr("Folder:"), folderRow);
    qobject_cast<QLabel*>(form->labelForField(folderRow))->setBuddy(m_folder);
    form->addRow(tr("Filename template:"), templateRow);
    qobject_cast<QLabel*>(form->labelForField(templateRow))->setBuddy(m_template);
    form->addRow(m_preview);
    form->addRow(tr("Split records into:"), split);
    form->addRow(align);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(autoDelete);
    layout->addStretch();
    updateFilenamePreview();
}

void OutputTab::setCodec(int codec)
{
    m_codec = codec;
    updateFilenamePreview();
}

void OutputTab::chooseFolder()
{
    const QString folder =
        QFileDialog::getExistingDirectory(this, tr("Select the recordings folder"), m_folder->text());
    if (!folder.isEmpty())
        m_folder->setText(QDir::toNativeSeparators(folder));
}

void OutputTab::updateFilenamePreview()
{
    const QString name = FileNameTemplate::expand(m_template->text(), QDateTime::currentDateTime(), m_serial);
    m_preview->setText(tr("Filename test: %1").arg(name + u'.' + codecExtension(m_codec)));
}

void OutputTab::explainTemplate()
{
    QMessageBox::information(
        this, tr("Filename template"),
        tr("<p>Available tokens:</p><table><tr><td><b>%y</b></td><td>year (4 digits)</td></tr><tr><td><b>%m</b></td>"
           "<td>month</td></tr><tr><td><b>%d</b></td><td>day</td></tr><tr><td><b>%hh</b></td><td>hour</td></tr>"
           "<tr><td><b>%mm</b></td><td>minute</td></tr><tr><td><b>%ss</b></td><td>second</td></tr><tr><td><b>%sn</b>"
           "</td><td>serial number, incremented automatically for each file</td></tr></table><p>The file extension is "
           "added automatically.</p>"));
}
