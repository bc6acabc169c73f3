#include "ui/loglist.h"

#include <QDateTime>
#include <QKeyEvent>
#include <QScrollBar>
#include <QWheelEvent>

namespace {

constexpr int EarlierLines = 200;
/// The moment of a line, in ms since the epoch.
constexpr int MomentRole = Qt::UserRole;

/// A line of the list: it shows its first line only.
QString lineOf(const QDateTime& moment, const QString& text)
{
    QString line = moment.toString(QStringLiteral("[yyyy-MM-dd HH:mm:ss] ")) + text;
    return line.replace(QLatin1Char('\n'), QLatin1Char(' '));
}

QListWidgetItem* createItem(const QDateTime& moment, const QString& text, bool isError)
{
    auto* item = new QListWidgetItem(lineOf(moment, text));
    item->setData(MomentRole, moment.toMSecsSinceEpoch());
    if (isError)
        item->setForeground(QColor(180, 0, 0));
    return item;
}

} // namespace

LogList::LogList(QWidget* parent) : QListWidget(parent)
{
    setAccessibleName(tr("Log"));
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
    connect(verticalScrollBar(), &QScrollBar::sliderMoved, this, &LogList::askForEarlier);
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
    add(text, false);
}

void LogList::appendError(const QString& text)
{
    add(text, true);
}

void LogList::add(const QString& text, bool isError)
{
    restoreNewest();
    addItem(createItem(QDateTime::currentDateTime(), text, isError));
    while (count() > MaxLines)
        delete takeItem(0);
    scrollToBottom();
}

void LogList::amend(const QString& before, const QString& text)
{
    const auto tryItem = [&](QListWidgetItem& item) {
        const QDateTime moment = QDateTime::fromMSecsSinceEpoch(item.data(MomentRole).toLongLong());
        const bool isIt = item.text() == lineOf(moment, before);
        if (isIt)
            item.setText(lineOf(moment, text));
        return isIt;
    };
    for (const auto& hidden : m_hidden) {
        if (tryItem(*hidden))
            return;
    }
    for (int i = count() - 1; i >= 0; --i) {
        if (tryItem(*item(i)))
            return;
    }
}

void LogList::prepend(const QList<JournalEntry>& lines)
{
    const QListWidgetItem* top = item(0);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const JournalEntry& line = lines.at(i);
        insertItem(int(i), createItem(QDateTime::fromMSecsSinceEpoch(line.utcMs), line.text,
                                      line.event == QLatin1String(JournalEntry::Error)));
    }
    while (count() > MaxLines)
        m_hidden.emplace_back(takeItem(count() - 1));
    if (top)
        scrollToItem(top, QAbstractItemView::PositionAtTop);
}

/// Brings back the newest lines that earlier ones have pushed out.
void LogList::restoreNewest()
{
    for (; !m_hidden.empty(); m_hidden.pop_back())
        addItem(m_hidden.back().release());
    while (count() > MaxLines)
        delete takeItem(0);
}

// Only what the operator does asks for earlier lines: the bar also reaches its end when lines are added.

void LogList::wheelEvent(QWheelEvent* event)
{
    QListWidget::wheelEvent(event);
    if (event->angleDelta().y() > 0)
        askForEarlier();
    else if (verticalScrollBar()->value() == verticalScrollBar()->maximum())
        restoreNewest();
}

void LogList::keyPressEvent(QKeyEvent* event)
{
    QListWidget::keyPressEvent(event);
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_PageUp || event->key() == Qt::Key_Home)
        askForEarlier();
    else if (event->key() == Qt::Key_End)
        restoreNewest();
}

void LogList::askForEarlier()
{
    if (verticalScrollBar()->value() > verticalScrollBar()->minimum())
        return;
    const qint64 before = count() > 0 ? item(0)->data(MomentRole).toLongLong() : QDateTime::currentMSecsSinceEpoch();
    if (before == m_askedBefore)
        return; // the answer is under way, or there are none
    m_askedBefore = before;
    Q_EMIT earlierWanted(before, EarlierLines);
}
