#pragma once

#include <QWidget>

class QCheckBox;
class QPushButton;

/// The row of controls under the display panel: record, automatic mode, scheduler, archive.
class ControlBar : public QWidget {
    Q_OBJECT
public:
    explicit ControlBar(QWidget* parent = nullptr);
    /// Puts a control right beside the record button; takes it over.
    void addBesideRecord(QWidget* control);

    void setRecording(bool recording);
    /// Does not emit automaticToggled().
    void setAutomatic(bool on);

Q_SIGNALS:
    void recordClicked();
    void automaticToggled(bool on);
    void schedulerClicked();
    void archiveClicked();

private:
    QPushButton* m_record;
    QCheckBox* m_automatic;
};
