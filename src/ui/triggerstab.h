#pragma once

#include <QList>
#include <QWidget>

class AppSettings;
class QComboBox;
class QFormLayout;
class SettingsBinding;

/// The external trigger.
class TriggersTab : public QWidget {
    Q_OBJECT
public:
    TriggersTab(AppSettings& settings, SettingsBinding& binding, QWidget* parent = nullptr);

private Q_SLOTS:
    void updateTriggerOptions();

private:
    void addSerial(QFormLayout* form, AppSettings& settings, SettingsBinding& binding);
    void addMidi(QFormLayout* form, AppSettings& settings, SettingsBinding& binding);

    QComboBox* m_kind = nullptr;
    // What only one kind of trigger has use for.
    QList<QWidget*> m_serialControls;
    QList<QWidget*> m_lineControls;
    QList<QWidget*> m_commandControls;
    QList<QWidget*> m_midiControls;
    QWidget* m_runOn = nullptr;
};
