#pragma once

#include "archive/recordinfo.h"

#include <QDialog>
#include <QMediaPlayer>
#include <QTimer>

class ArchiveCopy;
class ArchiveIndex;
class ArchiveModel;
class ArchiveRangeFilter;
class ArchiveTable;
class QBoxLayout;
class QComboBox;
class QDateTimeEdit;
class QGroupBox;
class QLabel;
class QPushButton;
class QSlider;

/// Lists the recordings, narrows the list to a time range, plays them from any moment, deletes them.
class ArchiveDialog : public QDialog {
    Q_OBJECT
public:
    /// \param index not owned, outlives the dialog; it may change while the dialog is open.
    /// \param copy what is played when an original is missing, damaged or does not play. Not owned; may be null.
    explicit ArchiveDialog(ArchiveIndex* index, QWidget* parent = nullptr, const ArchiveCopy* copy = nullptr);

Q_SIGNALS:
    /// The operator has deleted these recordings.
    void filesDeleted(const QStringList& paths);

private Q_SLOTS:
    void applyRangeFilter();
    void clearRangeFilter();
    void playFromChosenTime();
    void onPresetChosen(int index);
    void onMediaStatusChanged(QMediaPlayer::MediaStatus status);
    /// Resumes when paused, else plays the selected recording from its start.
    void playSelected();
    void pausePlayback();
    void stopPlayback();
    void onPositionChanged(qint64 position);
    void onDurationChanged(qint64 duration);
    void onSliderMoved(int value);
    void showContextMenu(QPoint point);
    void deleteSelected();
    void revealSelected();

private:
    QGroupBox* buildRangeBox();
    QBoxLayout* buildPlayerRow();
    void connectPlayer();
    void setEdits(const QDateTime& from, const QDateTime& to);
    void refreshCount();
    void play(const RecordInfo& record, qint64 offsetMs);
    void load(const RecordInfo& record, const QString& path, qint64 offsetMs);
    void onPlayerError(const QString& text);
    void playRow();
    void togglePause();
    void startAtPendingSeek();
    void unload();

    ArchiveIndex* m_index;
    const ArchiveCopy* m_copy;
    ArchiveModel* m_model;
    ArchiveRangeFilter* m_filter;
    QMediaPlayer* m_player;

    QDateTimeEdit* m_from = nullptr;
    QDateTimeEdit* m_to = nullptr;
    QComboBox* m_preset = nullptr;
    ArchiveTable* m_table = nullptr;
    QLabel* m_count = nullptr;
    QLabel* m_note = nullptr; ///< that the second copy is heard
    QSlider* m_slider = nullptr;
    QLabel* m_position = nullptr;
    QLabel* m_clock = nullptr; ///< when what is heard was recorded; or why nothing is

    RecordInfo m_loaded; ///< what the player has
    QString m_fallback; ///< the copy to play if that does not play; empty: none, or it is the copy
    qint64 m_offsetMs = 0; ///< where playing was to begin
    qint64 m_pendingSeek = -1; ///< ms, where playing is to begin once the file is loaded; -1: nowhere
    QTimer m_seekPatience;
};
