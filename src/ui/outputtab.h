#pragma once

#include "settings/codectable.h"
#include "station/recordingroom.h"

#include <QTimer>
#include <QWidget>

class AppSettings;
class QCheckBox;
class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QSpinBox;
class SettingsBinding;

/// Where the recordings go, what they are called, how long they are kept, and where a second copy of them goes.
class OutputTab : public QWidget {
    Q_OBJECT
public:
    OutputTab(AppSettings& settings, SettingsBinding& binding, QWidget* parent = nullptr);

    /// Why what the controls show cannot be accepted, as a sentence; empty: it can.
    QString problem() const;

public Q_SLOTS:
    /// Shows the extension of this codec in the preview of the file name.
    void setCodec(int codec);
    /// Shows what the days need in this format.
    void setFormat(const RecordingFormat& format);

private Q_SLOTS:
    void chooseFolder();
    void chooseCopyFolder();
    void updateFilenamePreview();
    void showRetention();
    void showCopyProblem();

private:
    QHBoxLayout* buildFolderRow(AppSettings& settings, SettingsBinding& binding);
    QHBoxLayout* buildTemplateRow(AppSettings& settings, SettingsBinding& binding);
    QWidget* buildRetention(AppSettings& settings, SettingsBinding& binding);
    QGroupBox* buildCopy(AppSettings& settings, SettingsBinding& binding);
    void explainTemplate();
    void browse(QLineEdit* edit, const QString& title);

    const AppSettings& m_settings;
    QLineEdit* m_folder;
    QLineEdit* m_template;
    QLabel* m_preview;
    QGroupBox* m_deleteOld = nullptr;
    QSpinBox* m_days = nullptr;
    QCheckBox* m_deleteWhenFull = nullptr;
    QSpinBox* m_keepDays = nullptr;
    QLabel* m_retention = nullptr; ///< what the days need, and what is there
    QGroupBox* m_copy = nullptr;
    QLineEdit* m_copyFolder = nullptr;
    QLabel* m_copyProblem = nullptr;
    int m_serial; ///< the number that the next file gets
    int m_codec = 0;
    RecordingFormat m_format;
    RecordingRoom m_room;
    QTimer m_typing; ///< lets a path be typed before its disk is asked
    RoomForRecordings m_roomNow; ///< the last answer
};
