#include "ui/archivedialog.h"

#include "archive/archiveindex.h"
#include "station/archivecopy.h"
#include "ui/archivemodel.h"
#include "ui/archiverangefilter.h"
#include "ui/archivetable.h"
#include "ui/icons.h"
#include "ui/plainmessage.h"

#include <QAudioOutput>
#include <QComboBox>
#include <QCoreApplication>
#include <QDateTimeEdit>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QPushButton>
#include <QSlider>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>

using namespace std::chrono_literals;

namespace {

/// How long a loaded file may take to allow seeking before it is played from where it can be.
constexpr auto SeekPatience = 3s;
constexpr int SliderStepMs = 5000;
constexpr int SliderPageMs = 60'000;

QString minutesAndSeconds(qint64 ms)
{
    return QStringLiteral("%1:%2")
        .arg(ms / 60'000, 2, 10, QLatin1Char('0'))
        .arg(ms / 1000 % 60, 2, 10, QLatin1Char('0'));
}

QString dateTimeText(const QDateTime& time)
{
    return QLocale().toString(time, QLocale::LongFormat);
}

QDateTimeEdit* dateTimeEdit()
{
    auto* edit = new QDateTimeEdit;
    edit->setDisplayFormat(QStringLiteral("ddd d MMM yyyy  HH:mm:ss"));
    edit->setCalendarPopup(true);
    return edit;
}

QLabel* labelFor(const QString& text, QWidget* buddy)
{
    auto* label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}

} // namespace

ArchiveDialog::ArchiveDialog(ArchiveIndex* index, QWidget* parent, const ArchiveCopy* copy)
    : QDialog(parent),
      m_index(index),
      m_copy(copy),
      m_model(new ArchiveModel(index, this)),
      m_filter(new ArchiveRangeFilter(m_model, this)),
      m_player(new QMediaPlayer(this))
{
    setWindowTitle(tr("Archive"));
    m_table = new ArchiveTable(m_model, m_filter);
    m_table->setAccessibleName(tr("Recordings"));
    m_count = new QLabel;

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(buildRangeBox());
    layout->addWidget(m_table, 1);
    layout->addWidget(m_count);
    layout->addLayout(buildPlayerRow());
    m_note = new QLabel;
    m_note->setObjectName(QStringLiteral("note"));
    m_note->setTextFormat(Qt::PlainText);
    m_note->hide();
    layout->addWidget(m_note);

    connect(m_table, &ArchiveTable::playRequested, this, &ArchiveDialog::playRow);
    connect(m_table, &ArchiveTable::pauseToggled, this, &ArchiveDialog::togglePause);
    connect(m_table, &ArchiveTable::deleteRequested, this, &ArchiveDialog::deleteSelected);
    connect(m_table, &QWidget::customContextMenuRequested, this, &ArchiveDialog::showContextMenu);
    connect(m_filter, &QAbstractItemModel::modelReset, this, &ArchiveDialog::refreshCount);
    connectPlayer();
    refreshCount();
    m_table->setFocus();
    resize(900, 600);
}

QGroupBox* ArchiveDialog::buildRangeBox()
{
    auto* box = new QGroupBox(tr("Find by time"), this);
    m_from = dateTimeEdit();
    m_to = dateTimeEdit();
    setEdits(QDate::currentDate().startOfDay(), QDateTime::currentDateTime());

    m_preset = new QComboBox;
    m_preset->addItems(
        {tr("Custom range"), tr("Last hour"), tr("Last 6 hours"), tr("Today"), tr("Yesterday"), tr("Last 7 days")});
    m_preset->setAccessibleName(tr("Time range"));
    // activated(), so that choosing the same once more counts from now.
    connect(m_preset, &QComboBox::activated, this, &ArchiveDialog::onPresetChosen);
    for (const QDateTimeEdit* edit : {m_from, m_to})
        connect(edit, &QDateTimeEdit::dateTimeChanged, m_preset, [this] { m_preset->setCurrentIndex(0); });

    auto* show = new QPushButton(tr("&Show matches"));
    connect(show, &QPushButton::clicked, this, &ArchiveDialog::applyRangeFilter);
    auto* showAll = new QPushButton(tr("Show &all"));
    connect(showAll, &QPushButton::clicked, this, &ArchiveDialog::clearRangeFilter);
    auto* playFrom = new QPushButton(tr("&Play from start time"));
    playFrom->setToolTip(tr("Finds the recording covering the From time and starts playback at exactly that moment."));
    connect(playFrom, &QPushButton::clicked, this, &ArchiveDialog::playFromChosenTime);

    auto* times = new QHBoxLayout;
    times->addWidget(labelFor(tr("From:"), m_from));
    times->addWidget(m_from, 1);
    times->addWidget(labelFor(tr("To:"), m_to));
    times->addWidget(m_to, 1);
    times->addWidget(m_preset);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {show, showAll, playFrom})
        buttons->addWidget(button);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(box);
    layout->addLayout(times);
    layout->addLayout(buttons);
    show->setDefault(true); // the dialog's, of which the button is a part by now
    return box;
}

QBoxLayout* ArchiveDialog::buildPlayerRow()
{
    auto* row = new QHBoxLayout;
    const auto addButton = [this, row](const char* icon, const QString& text, void (ArchiveDialog::*slot)()) {
        auto* button = new QPushButton(Icons::load(QLatin1String(icon)), text);
        connect(button, &QPushButton::clicked, this, slot);
        row->addWidget(button);
    };
    addButton("play", tr("Play"), &ArchiveDialog::playSelected);
    addButton("pause", tr("Pause"), &ArchiveDialog::pausePlayback);
    addButton("stop", tr("Stop"), &ArchiveDialog::stopPlayback);

    m_slider = new QSlider(Qt::Horizontal);
    m_slider->setRange(0, 0);
    m_slider->setSingleStep(SliderStepMs);
    m_slider->setPageStep(SliderPageMs);
    m_slider->setAccessibleName(tr("Position"));
    connect(m_slider, &QSlider::sliderMoved, this, &ArchiveDialog::onSliderMoved);
    // Keys, wheel and clicks beside the handle do not count as moving it.
    connect(m_slider, &QSlider::actionTriggered, this, [this](int action) {
        if (action != QAbstractSlider::SliderMove)
            onSliderMoved(m_slider->sliderPosition());
    });
    row->addWidget(m_slider, 1);

    // The texts themselves are the names; a description tells what they are about.
    m_position = new QLabel(QStringLiteral("00:00/00:00"));
    m_position->setAccessibleDescription(tr("Position and length"));
    row->addWidget(m_position);
    m_clock = new QLabel;
    m_clock->setTextFormat(Qt::PlainText);
    m_clock->setAccessibleDescription(tr("When this was recorded"));
    row->addWidget(m_clock);
    return row;
}

void ArchiveDialog::connectPlayer()
{
    m_player->setAudioOutput(new QAudioOutput(this));
    connect(m_player, &QMediaPlayer::mediaStatusChanged, this, &ArchiveDialog::onMediaStatusChanged);
    connect(m_player, &QMediaPlayer::positionChanged, this, &ArchiveDialog::onPositionChanged);
    connect(m_player, &QMediaPlayer::durationChanged, this, &ArchiveDialog::onDurationChanged);
    connect(m_player, &QMediaPlayer::errorOccurred, this,
            [this](QMediaPlayer::Error, const QString& text) { onPlayerError(text); });
    // As late as for the loaded signal, and for the same reason.
    connect(m_player, &QMediaPlayer::seekableChanged, this, &ArchiveDialog::startAtPendingSeek, Qt::QueuedConnection);
    m_seekPatience.setSingleShot(true);
    m_seekPatience.setInterval(SeekPatience);
    connect(&m_seekPatience, &QTimer::timeout, this, [this] {
        if (std::exchange(m_pendingSeek, -1) >= 0)
            m_player->play();
    });
}

void ArchiveDialog::setEdits(const QDateTime& from, const QDateTime& to)
{
    const QSignalBlocker quietFrom(m_from);
    const QSignalBlocker quietTo(m_to);
    m_from->setDateTime(from);
    m_to->setDateTime(to);
}

void ArchiveDialog::applyRangeFilter()
{
    QDateTime from = m_from->dateTime();
    QDateTime to = m_to->dateTime();
    if (from > to) {
        std::swap(from, to);
        setEdits(from, to);
    }
    m_filter->setRange(from, to);
    refreshCount();
    if (m_filter->rowCount() == 0)
        PlainMessage::show(this, QMessageBox::Information, tr("Find by time"),
                           tr("Nothing was recorded between %1 and %2.").arg(dateTimeText(from), dateTimeText(to)));
}

void ArchiveDialog::clearRangeFilter()
{
    m_filter->clearRange();
    refreshCount();
}

void ArchiveDialog::refreshCount()
{
    const int all = m_model->rowCount();
    m_count->setText(m_filter->hasRange() ? tr("%1 of %2 recordings").arg(m_filter->rowCount()).arg(all)
                                          : tr("%1 recordings").arg(all));
}

void ArchiveDialog::onPresetChosen(int index)
{
    const QDateTime now = QDateTime::currentDateTime();
    const QDateTime today = now.date().startOfDay();
    switch (index) {
    case 1:
        setEdits(now.addSecs(-3600), now);
        break;
    case 2:
        setEdits(now.addSecs(-6 * 3600), now);
        break;
    case 3:
        setEdits(today, now);
        break;
    case 4:
        setEdits(now.date().addDays(-1).startOfDay(), today);
        break;
    case 5:
        setEdits(now.addDays(-7), now);
        break;
    default:
        return;
    }
    applyRangeFilter();
}

void ArchiveDialog::playFromChosenTime()
{
    const QDateTime from = m_from->dateTime();
    const RecordInfo record = m_index->recordAt(from);
    if (record.filePath.isEmpty()) {
        PlainMessage::show(this, QMessageBox::Information, tr("Find by time"),
                           tr("No recording covers %1.\n\nEither nothing was being logged then, or the recording has "
                              "already been deleted by the retention policy.")
                               .arg(dateTimeText(from)));
        return;
    }
    m_table->selectPath(record.filePath);
    play(record, std::max<qint64>(record.start.msecsTo(from), 0));
}

void ArchiveDialog::play(const RecordInfo& record, qint64 offsetMs)
{
    const QFile original(record.filePath);
    const QString copy = m_copy ? m_copy->copyOf(record) : QString();
    if (!copy.isEmpty() && (!original.exists() || original.size() != m_copy->copiedBytes(record))) {
        load(record, copy, offsetMs);
        return;
    }
    if (!original.exists()) {
        PlainMessage::show(this, QMessageBox::Warning, tr("Archive"),
                           tr("The file no longer exists:\n%1").arg(record.filePath));
        m_index->rescan();
        return;
    }
    load(record, record.filePath, offsetMs);
    m_fallback = copy;
}

/// \param path of the recording, or of its copy.
void ArchiveDialog::load(const RecordInfo& record, const QString& path, qint64 offsetMs)
{
    unload(); // the player takes no notice of the source that it has already
    m_loaded = record;
    m_offsetMs = offsetMs;
    const bool isCopy = path != record.filePath;
    m_note->setText(
        isCopy
            ? tr("The original is missing or damaged. This is the second copy: %1").arg(QDir::toNativeSeparators(path))
            : QString());
    m_note->setVisible(isCopy);
    m_pendingSeek = offsetMs > 0 ? offsetMs : -1;
    m_player->setSource(QUrl::fromLocalFile(path));
    if (m_pendingSeek < 0)
        m_player->play();
}

/// The original of the right length may be unreadable, or full of zeros after a power cut.
void ArchiveDialog::onPlayerError(const QString& text)
{
    m_pendingSeek = -1;
    m_clock->setText(text);
    if (const QString copy = std::exchange(m_fallback, {}); !copy.isEmpty()) {
        // As late as for the loaded signal: the player must not be given another source inside its own signal.
        QTimer::singleShot(0, this, [this, copy, record = m_loaded, offsetMs = m_offsetMs] {
            if (record.filePath == m_loaded.filePath)
                load(record, copy, offsetMs);
        });
    }
}

void ArchiveDialog::unload()
{
    stopPlayback();
    m_loaded = {};
    m_fallback.clear();
    m_note->hide();
    m_player->setSource({});
    onPositionChanged(0);
}

void ArchiveDialog::onMediaStatusChanged(QMediaPlayer::MediaStatus status)
{
    if (m_pendingSeek < 0 || (status != QMediaPlayer::LoadedMedia && status != QMediaPlayer::BufferedMedia))
        return;
    m_seekPatience.start();
    // GStreamer loses a position that is set inside this signal.
    QTimer::singleShot(0, this, &ArchiveDialog::startAtPendingSeek);
}

/// Plays only now: before it the beginning of the file would be heard.
void ArchiveDialog::startAtPendingSeek()
{
    if (m_pendingSeek < 0 || !m_player->isSeekable())
        return;
    m_player->setPosition(std::exchange(m_pendingSeek, -1));
    m_player->play();
}

/// The row that was double-clicked, even when another recording is paused.
void ArchiveDialog::playRow()
{
    if (m_table->selectedRecord().filePath != m_loaded.filePath)
        stopPlayback();
    playSelected();
}

void ArchiveDialog::playSelected()
{
    if (m_player->playbackState() == QMediaPlayer::PausedState) {
        m_player->play();
        return;
    }
    const RecordInfo record = m_table->selectedRecord();
    if (!record.filePath.isEmpty())
        play(record, 0);
}

void ArchiveDialog::togglePause()
{
    if (m_player->playbackState() == QMediaPlayer::PlayingState)
        pausePlayback();
    else
        playSelected();
}

void ArchiveDialog::pausePlayback()
{
    if (m_player->playbackState() == QMediaPlayer::PlayingState)
        m_player->pause();
}

void ArchiveDialog::stopPlayback()
{
    m_pendingSeek = -1;
    m_seekPatience.stop();
    m_player->stop();
    m_slider->setValue(0);
}

void ArchiveDialog::onDurationChanged(qint64 duration)
{
    m_slider->setRange(0, int(std::min<qint64>(duration, std::numeric_limits<int>::max())));
    onPositionChanged(m_player->position());
}

void ArchiveDialog::onSliderMoved(int value)
{
    m_player->setPosition(value);
}

void ArchiveDialog::onPositionChanged(qint64 position)
{
    if (!m_slider->isSliderDown())
        m_slider->setValue(int(std::min<qint64>(position, std::numeric_limits<int>::max())));
    m_position->setText(minutesAndSeconds(position) + QLatin1Char('/') + minutesAndSeconds(m_player->duration()));
    m_clock->setText(m_loaded.start.isValid()
                         ? locale().toString(m_loaded.start.addMSecs(position), QStringLiteral("ddd d MMM  HH:mm:ss"))
                         : QString());
}

void ArchiveDialog::showContextMenu(QPoint point)
{
    QMenu menu(this);
    menu.addAction(tr("&Play"), this, &ArchiveDialog::playSelected);
    menu.addAction(tr("Show in &folder"), this, &ArchiveDialog::revealSelected);
    menu.addSeparator();
    menu.addAction(tr("&Delete"), this, &ArchiveDialog::deleteSelected);
    menu.exec(m_table->viewport()->mapToGlobal(point));
}

void ArchiveDialog::deleteSelected()
{
    const QStringList paths = m_table->selectedPaths();
    if (paths.isEmpty())
        return;
    const auto answer = QMessageBox::question(
        this, tr("Delete"), tr("Delete %n selected recording(s) from disk?", nullptr, int(paths.size())),
        QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    if (answer != QMessageBox::Yes)
        return;
    unload();
    QStringList removed;
    for (const QString& path : paths) {
        if (QFile::remove(path))
            removed.append(path);
        // A disk may take long over many large files, and recording goes on.
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    m_index->removeRecords(removed);
    Q_EMIT filesDeleted(removed);
    m_index->rescan();
}

void ArchiveDialog::revealSelected()
{
    const QString path = m_table->selectedRecord().filePath;
    if (!path.isEmpty())
        QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absolutePath()));
}
