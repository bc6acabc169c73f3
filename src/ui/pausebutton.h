#pragma once

#include <QPushButton>

class QAction;
class Station;

/// Beside the record button: a menu that pauses the station for a while, or lets it go on.
class PauseButton : public QPushButton {
    Q_OBJECT
public:
    /// \param station not owned; may be deleted first.
    explicit PauseButton(Station* station, QWidget* parent = nullptr);

private:
    void showPause(bool paused);

    QAction* m_goOn;
};
