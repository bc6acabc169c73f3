#pragma once

#include <QString>

#include <functional>
#include <vector>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QGroupBox;
class QLineEdit;
class QSpinBox;

/// Ties the controls of a dialog to the fields that they edit: a control shows its field from the moment it is bound,
/// and the field gets the control's value when write() is called. So nothing can be shown and not written.
class SettingsBinding {
public:
    void bind(QCheckBox* box, bool& field);
    void bind(QGroupBox* box, bool& field);
    void bind(QSpinBox* box, int& field);
    void bind(QDoubleSpinBox* box, double& field);
    void bind(QLineEdit* edit, QString& field);
    /// Binds a box whose items carry the values as their data. A value that no item has is added as an item, with this
    /// text or its own: opening and accepting a dialog must not change a setting.
    void bind(QComboBox* box, int& field, const QString& textIfMissing = {});
    void bind(QComboBox* box, QString& field, const QString& textIfMissing = {});
    /// Has this called by write(), for a field that no single control holds.
    void onWrite(std::function<void()> write) { m_writers.push_back(std::move(write)); }

    void write() const;

private:
    template <class Box, class Value>
    void bindValue(Box* box, Value& field);
    template <class Value>
    void bindData(QComboBox* box, Value& field, const QString& textIfMissing);

    std::vector<std::function<void()>> m_writers;
};
