#pragma once

#include <QWidget>

class AppSettings;
class QLabel;
class QLineEdit;
class SettingsBinding;

/// Where the recordings go, what they are called, and how long they are kept.
class OutputTab : public QWidget {
    Q_OBJECT
public:
    OutputTab(AppSettings& settings, SettingsBinding& binding, QWidget* parent = nullptr);

public Q_SLOTS:
    /// Shows the extension of this codec in the preview of the file name.
    void setCodec(int codec);

private Q_SLOTS:
    void chooseFolder();
    void updateFilenamePreview();

private:
    void explainTemplate();

    QLineEdit* m_folder;
    QLineEdit* m_template;
    QLabel* m_preview;
    int m_serial; ///< the number that the next file gets
    int m_codec = 0;
};
