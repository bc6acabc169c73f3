#include "ui/settingsbinding.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QSpinBox>

void SettingsBinding::bind(QCheckBox* box, bool& field)
{
    box->setChecked(field);
    onWrite([box, &field] { field = box->isChecked(); });
}

void SettingsBinding::bind(QGroupBox* box, bool& field)
{
    box->setChecked(field);
    onWrite([box, &field] { field = box->isChecked(); });
}

/// A stored value that the box has to round or limit stays as it is while nobody changes it.
template <class Box, class Value>
void SettingsBinding::bindValue(Box* box, Value& field)
{
    box->setValue(field);
    onWrite([box, &field, shown = box->value()] {
        if (box->value() != shown)
            field = box->value();
    });
}

void SettingsBinding::bind(QSpinBox* box, int& field)
{
    bindValue(box, field);
}

void SettingsBinding::bind(QDoubleSpinBox* box, double& field)
{
    bindValue(box, field);
}

void SettingsBinding::bind(QLineEdit* edit, QString& field)
{
    edit->setText(field);
    onWrite([edit, &field] { field = edit->text(); });
}

template <class Value>
void SettingsBinding::bindData(QComboBox* box, Value& field, const QString& textIfMissing)
{
    const QVariant stored(field);
    if (box->findData(stored) < 0)
        box->addItem(textIfMissing.isEmpty() ? stored.toString() : textIfMissing, stored);
    box->setCurrentIndex(box->findData(stored));
    onWrite([box, &field] { field = box->currentData().template value<Value>(); });
}

void SettingsBinding::bind(QComboBox* box, int& field, const QString& textIfMissing)
{
    bindData(box, field, textIfMissing);
}

void SettingsBinding::bind(QComboBox* box, QString& field, const QString& textIfMissing)
{
    bindData(box, field, textIfMissing);
}

void SettingsBinding::write() const
{
    for (const auto& writer : m_writers)
        writer();
}
