#include "ui/loglist.h"

#include <QDateTime>
#include <QLoggingCategory>

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
    addItem(QDateTime::currentDateTime().toString(QStringLiteral("[yyyy-MM-dd HH:mm:ss] ")) + text);
    while (count() > MaxLines)
        delete takeItem(0);
    scrollToBottom();
}
