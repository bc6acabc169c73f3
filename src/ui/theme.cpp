#include "ui/theme.h"

#include <QApplication>
#include <QGuiApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <QStyleHints>

#include <utility>

namespace {

struct InitialLook {
    QString style;
    QPalette palette;
};

QPalette darkPalette()
{
    constexpr QColor window(37, 40, 43);
    constexpr QColor base(28, 30, 33);
    constexpr QColor text(228, 232, 235);
    constexpr QColor faint(120, 126, 132);

    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, QColor(45, 48, 52));
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, window);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, QColor(255, 120, 110));
    palette.setColor(QPalette::Link, QColor(96, 190, 230));
    palette.setColor(QPalette::Highlight, QColor(38, 120, 155));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, faint);
    for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

/// Window frames and native controls follow this where the toolkit offers it.
void tellStyleHints([[maybe_unused]] int theme)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    const auto scheme = theme == Theme::Light  ? Qt::ColorScheme::Light
                        : theme == Theme::Dark ? Qt::ColorScheme::Dark
                                               : Qt::ColorScheme::Unknown;
    QGuiApplication::styleHints()->setColorScheme(scheme);
#endif
}

} // namespace

void Theme::apply(int theme)
{
    static const InitialLook initial{QApplication::style()->name(), QApplication::palette()};
    static int applied = FollowSystem;
    if (theme == std::exchange(applied, theme))
        return;

    tellStyleHints(theme);
    if (theme == Dark) {
        QApplication::setStyle(QStringLiteral("Fusion"));
        QApplication::setPalette(darkPalette());
    } else if (theme == Light) {
        QApplication::setStyle(QStringLiteral("Fusion"));
        QApplication::setPalette(QApplication::style()->standardPalette());
    } else {
        if (!initial.style.isEmpty())
            QApplication::setStyle(initial.style);
        QApplication::setPalette(initial.palette);
    }
}
