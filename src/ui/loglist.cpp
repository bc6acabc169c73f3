#include "ui/loglist.h"

#include <QDateTime>
#include <QLoggingCategory>
#include <QScrollBar>

// What the operator sees, a service manager or a terminal gets too.
Q_LOGGING_CATEGORY(lcLog, "tidewell.log")

LogList::LogList(QWidget* parent) : QListWidget(parent)
{
    setUniformItemSizes(true);
    setAlternatingRowColors(true);
    // The style sheet has no say in the colour of every other row.
    QPalette dark = palette();
    dark.setColor(QPalette::AlternateBase, QColor(0x0b, 0x10, 0x12));
    setPalette(dark);
    setStyleSheet(
        QStringLiteral("QListWidget {  background: #06080a;  border: 1px solid #262e30;  border-radius: 5px;  "
                       "color: #56f0e2;  padding: 3px;}QListWidget::item { padding: 1px 3px; }"
                       "QListWidget::item:selected { background: #123a38; color: #d8fffb; }"));
    for (QScrollBar* bar : {verticalScrollBar(), horizontalScrollBar()})
        bar->setStyleSheet(
            QStringLiteral("QScrollBar { background: #06080a; border: none; } QScrollBar:vertical { width: 10px; }"
                           "QScrollBar:horizontal { height: 10px; } QScrollBar::handle { background: #2c3838; "
                           "border-radius: 4px; min-width: 24px; min-height: 24px; }"
                           "QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }"
                           "QScrollBar::add-page, QScrollBar::sub-page { background: none; }"));
}

void LogList::append(const QString& text)
{
    qCInfo(lcLog).noquote() << text;
    add(text);
}

void LogList::appendError(const QString& text)
{
    qCWarning(lcLog).noquote() << text;
    add(text);
    item(count() - 1)->setForeground(QColor(180, 0, 0));
}

void LogList::add(const QString& text)
{
    QString line = QDateTime::currentDateTime().toString(QStringLiteral("[yyyy-MM-dd HH:mm:ss] ")) + text;
    addItem(line.replace(QLatin1Char('\n'), QLatin1Char(' '))); // an item shows its first line only
    while (count() > MaxLines)
        delete takeItem(0);
    scrollToBottom();
}
