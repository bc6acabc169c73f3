#pragma once

#include <QLabel>

/// The program's version, as a link that offers to look for a newer one: linkActivated().
class VersionLabel : public QLabel {
    Q_OBJECT
public:
    explicit VersionLabel(QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void showLink();
};
