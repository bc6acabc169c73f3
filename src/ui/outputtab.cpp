#include "ui/outputtab.h"

#include "engine/filenametemplate.h"
#include "settings/appsettings.h"
#include "settings/codectable.h"
#include "settings/limits.h"
#include "station/archivecopy.h"
#include "ui/retentiontext.h"
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

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto TypingPause = 300ms;

/// Red that can be read on the palette's window, light or dark; the palette's own colour for what is in order.
void setAlarming(QLabel* label, bool alarming)
{
    QPalette palette; // the application's, so that a change of the theme is followed the next time
    if (alarming) {
        const bool dark = palette.color(QPalette::Window).lightness() < 128;
        palette.setColor(QPalette::WindowText, dark ? QColor(255, 120, 110) : QColor(180, 0, 0));
    }
    label->setPalette(palette);
}

QLabel* sentence(const char* name)
{
    auto* label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QSpinBox* daysBox(int lowest, int highest, const QString& suffix)
{
    auto* box = new QSpinBox;
    box->setRange(lowest, highest);
    box->setSuffix(suffix);
    return box;
}

void setBuddy(const QFormLayout* form, QLayout* row, QWidget* buddy)
{
    qobject_cast<QLabel*>(form->labelForField(row))->setBuddy(buddy);
}

} // namespace

OutputTab::OutputTab(AppSettings& settings, SettingsBinding& binding, QWidget* parent)
    : QWidget(parent),
      m_settings(settings),
      m_folder(new QLineEdit),
      m_template(new QLineEdit),
      m_preview(sentence("preview")),
      m_serial(settings.fileSerial),
      m_codec(settings.codec),
      m_format{settings.codec, settings.sampleRate, settings.channels, settings.bitrate, settings.vorbisQuality}
{
    auto* form = new QFormLayout;
    auto* folderRow = buildFolderRow(settings, binding);
    form->addRow(tr("Folder:"), folderRow);
    setBuddy(form, folderRow, m_folder);
    auto* templateRow = buildTemplateRow(settings, binding);
    form->addRow(tr("Filename template:"), templateRow);
    setBuddy(form, templateRow, m_template);
    form->addRow(m_preview);

    auto* split = new QSpinBox;
    split->setRange(Limits::SplitMinutes.lowest, Limits::SplitMinutes.highest);
    split->setSuffix(tr(" minute segments"));
    split->setSpecialValueText(tr("do not split"));
    binding.bind(split, settings.splitMinutes);
    auto* align = new QCheckBox(tr("Align splits to the clock"));
    binding.bind(align, settings.alignToClock);
    form->addRow(tr("Split records into:"), split);
    form->addRow(align);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buildRetention(settings, binding));
    layout->addWidget(buildCopy(settings, binding));
    layout->addStretch();

    connect(m_folder, &QLineEdit::textChanged, this, &OutputTab::updateFilenamePreview);
    connect(m_template, &QLineEdit::textChanged, this, &OutputTab::updateFilenamePreview);
    connect(m_folder, &QLineEdit::textChanged, this, &OutputTab::showCopyProblem);
    connect(m_folder, &QLineEdit::textChanged, this, [this] {
        m_roomNow = {};
        showRetention();
        m_typing.start();
    });
    m_typing.setSingleShot(true);
    m_typing.setInterval(TypingPause);
    m_typing.callOnTimeout(this, [this] { m_room.ask(m_folder->text().trimmed()); });
    connect(&m_room, &RecordingRoom::answered, this, [this](const RoomForRecordings& room) {
        if (m_typing.isActive()) // it is about what was there before
            return;
        m_roomNow = room;
        showRetention();
    });
    m_room.ask(m_folder->text().trimmed());
    updateFilenamePreview();
    showRetention();
    showCopyProblem();
}

QHBoxLayout* OutputTab::buildFolderRow(AppSettings& settings, SettingsBinding& binding)
{
    m_folder->setText(settings.outputFolder);
    binding.onWrite([this, &settings] {
        if (!m_folder->text().trimmed().isEmpty()) // nothing could be recorded nowhere
            settings.outputFolder = m_folder->text();
    });
    auto* choose = new QPushButton(tr("&Choose..."));
    connect(choose, &QPushButton::clicked, this, &OutputTab::chooseFolder);
    auto* row = new QHBoxLayout;
    row->addWidget(m_folder, 1);
    row->addWidget(choose);
    return row;
}

QHBoxLayout* OutputTab::buildTemplateRow(AppSettings& settings, SettingsBinding& binding)
{
    binding.bind(m_template, settings.fileTemplate);
    auto* help = new QToolButton;
    help->setText(QStringLiteral("?"));
    help->setAccessibleName(tr("Filename template"));
    connect(help, &QToolButton::clicked, this, &OutputTab::explainTemplate);
    auto* row = new QHBoxLayout;
    row->addWidget(m_template, 1);
    row->addWidget(help);
    return row;
}

QWidget* OutputTab::buildRetention(AppSettings& settings, SettingsBinding& binding)
{
    m_deleteOld = new QGroupBox(tr("Auto delete"));
    m_deleteOld->setCheckable(true);
    binding.bind(m_deleteOld, settings.housekeepingEnabled);
    m_days = daysBox(Limits::HousekeepingDays.lowest, Limits::HousekeepingDays.highest, tr(" day(s)"));
    binding.bind(m_days, settings.housekeepingDays);
    auto* deleteForm = new QFormLayout(m_deleteOld);
    deleteForm->addRow(tr("Delete records older than"), m_days);

    m_deleteWhenFull = new QCheckBox(tr("When the disk is full, delete the oldest first"));
    binding.bind(m_deleteWhenFull, settings.deleteWhenFull);
    m_keepDays = daysBox(Limits::HousekeepingDays.lowest, Limits::HousekeepingDays.highest, tr(" day(s)"));
    binding.bind(m_keepDays, settings.keepDays);
    m_keepDays->setEnabled(m_deleteWhenFull->isChecked());
    connect(m_deleteWhenFull, &QCheckBox::toggled, m_keepDays, &QWidget::setEnabled);
    auto* keepForm = new QFormLayout;
    keepForm->addRow(m_deleteWhenFull);
    keepForm->addRow(tr("Never below"), m_keepDays);
    m_retention = sentence("retention");

    auto* all = new QWidget;
    auto* layout = new QVBoxLayout(all);
    layout->setContentsMargins({});
    layout->addWidget(m_deleteOld);
    layout->addLayout(keepForm);
    layout->addWidget(m_retention);
    connect(m_deleteOld, &QGroupBox::toggled, this, &OutputTab::showRetention);
    connect(m_days, &QSpinBox::valueChanged, this, &OutputTab::showRetention);
    connect(m_deleteWhenFull, &QCheckBox::toggled, this, &OutputTab::showRetention);
    connect(m_keepDays, &QSpinBox::valueChanged, this, &OutputTab::showRetention);
    return all;
}

QGroupBox* OutputTab::buildCopy(AppSettings& settings, SettingsBinding& binding)
{
    m_copy = new QGroupBox(tr("Copy to"));
    m_copy->setCheckable(true);
    binding.bind(m_copy, settings.copyEnabled);
    m_copyFolder = new QLineEdit;
    binding.bind(m_copyFolder, settings.copyFolder);
    auto* choose = new QPushButton(tr("C&hoose..."));
    connect(choose, &QPushButton::clicked, this, &OutputTab::chooseCopyFolder);
    auto* folderRow = new QHBoxLayout;
    folderRow->addWidget(m_copyFolder, 1);
    folderRow->addWidget(choose);
    auto* days = daysBox(Limits::HousekeepingDays.lowest, Limits::HousekeepingDays.highest, tr(" day(s)"));
    binding.bind(days, settings.copyDays);
    m_copyProblem = sentence("copyProblem");
    setAlarming(m_copyProblem, true);

    auto* form = new QFormLayout(m_copy);
    form->addRow(tr("Folder:"), folderRow);
    setBuddy(form, folderRow, m_copyFolder);
    form->addRow(tr("Delete copies older than"), days);
    form->addRow(m_copyProblem);
    connect(m_copy, &QGroupBox::toggled, this, &OutputTab::showCopyProblem);
    connect(m_copyFolder, &QLineEdit::textChanged, this, &OutputTab::showCopyProblem);
    return m_copy;
}

QString OutputTab::problem() const
{
    const QString folder = m_folder->text().trimmed();
    return m_copy->isChecked()
               ? ArchiveCopy::problemOf(m_copyFolder->text(), folder.isEmpty() ? m_settings.outputFolder : folder)
               : QString();
}

void OutputTab::showCopyProblem()
{
    m_copyProblem->setText(problem());
    m_copyProblem->setVisible(!m_copyProblem->text().isEmpty());
}

void OutputTab::setFormat(const RecordingFormat& format)
{
    m_format = format;
    showRetention();
}

void OutputTab::showRetention()
{
    RetentionText::Question question;
    question.bytesPerDay =
        RetentionText::bytesPerDay(estimatedBytesPerSecond(m_format), m_settings.autoMode, m_settings.schedule);
    question.freeBytes = m_roomNow.freeBytes;
    question.recordingsBytes = m_roomNow.recordingsBytes;
    question.deleteOld = m_deleteOld->isChecked();
    question.days = m_days->value();
    question.deleteWhenFull = m_deleteWhenFull->isChecked();
    question.keepDays = m_keepDays->value();
    const RetentionText::Answer answer = RetentionText::answer(question);
    m_retention->setText(answer.text);
    setAlarming(m_retention, !answer.fits);
}

void OutputTab::setCodec(int codec)
{
    m_codec = codec;
    updateFilenamePreview();
}

void OutputTab::chooseFolder()
{
    browse(m_folder, tr("Select the recordings folder"));
}

void OutputTab::chooseCopyFolder()
{
    browse(m_copyFolder, tr("Select the folder of the second copy"));
}

void OutputTab::browse(QLineEdit* edit, const QString& title)
{
    const QString folder = QFileDialog::getExistingDirectory(this, title, edit->text());
    if (!folder.isEmpty())
        edit->setText(QDir::toNativeSeparators(folder));
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
