#pragma once

#include "settings/codectable.h"

#include <QByteArray>
#include <QWidget>

class AppSettings;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;
class SettingsBinding;

/// What is recorded, and in which format.
class RecordingTab : public QWidget {
    Q_OBJECT
public:
    RecordingTab(AppSettings& settings, SettingsBinding& binding, QWidget* parent = nullptr);

    /// The codec that the controls show.
    int codec() const;

    /// The format that the controls show.
    RecordingFormat format() const;

Q_SIGNALS:
    void codecChanged(int codec);
    /// format() is another one.
    void formatChanged();

private Q_SLOTS:
    /// Shows what belongs to the chosen kind of source.
    void chooseSource();
    void updateCodecOptions();

private:
    QGroupBox* buildSource(AppSettings& settings, SettingsBinding& binding);
    QGroupBox* buildFormat(AppSettings& settings, SettingsBinding& binding);
    QComboBox* buildDeviceChannels(AppSettings& settings, SettingsBinding& binding);
    int backend() const;
    void listDevices();
    void onDeviceChosen(int index);
    void showCurrentSource();

    QComboBox* m_backend = nullptr;
    QComboBox* m_device = nullptr;
    QComboBox* m_deviceChannels = nullptr;
    QLabel* m_currentSource = nullptr;
    QComboBox* m_codec = nullptr;
    QComboBox* m_sampleRate = nullptr;
    QComboBox* m_bitrate = nullptr;
    QComboBox* m_channels = nullptr;
    QSpinBox* m_vorbisQuality = nullptr;
    // The device box serves two kinds of source; each keeps its own choice while the kind is changed back and forth.
    QByteArray m_inputId;
    QString m_inputLabel;
    QByteArray m_playbackId;
};
