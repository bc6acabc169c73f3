#include "ui/archivetable.h"

#include "ui/archivemodel.h"
#include "ui/archiverangefilter.h"

#include <QHash>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLocale>
#include <QScrollBar>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QTextDocument>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace {

constexpr int ColumnMargin = 20;
constexpr int FileWidthInLetters = 28;

/// Tool tips as plain text: one that quotes a file name with markup in it would else be shown as rich text.
class PlainTips : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override
    {
        if (event->type() != QEvent::ToolTip || !index.isValid())
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        const QString tip = index.data(Qt::ToolTipRole).toString();
        QToolTip::showText(event->globalPos(), Qt::convertFromPlainText(tip, Qt::WhiteSpacePre), view);
        return true;
    }
};

} // namespace

ArchiveTable::ArchiveTable(ArchiveModel* model, ArchiveRangeFilter* filter, QWidget* parent)
    : QTableView(parent), m_model(model), m_filter(filter)
{
    setItemDelegate(new PlainTips(this));
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTextElideMode(Qt::ElideMiddle);
    setContextMenuPolicy(Qt::CustomContextMenu);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    horizontalHeader()->setSortIndicator(ArchiveModel::Date, Qt::DescendingOrder);
    setModel(m_filter);
    setSortingEnabled(true); // of the model that is there
    setColumnWidths();

    // After setModel(), so that the table has reset itself when the view is restored.
    connect(m_filter, &QAbstractItemModel::modelAboutToBeReset, this, &ArchiveTable::rememberView);
    connect(m_filter, &QAbstractItemModel::modelReset, this, &ArchiveTable::restoreView);
    connect(this, &QTableView::doubleClicked, this, &ArchiveTable::playRequested);
}

/// By sample texts, as measuring the rows themselves would take as long as there are many.
void ArchiveTable::setColumnWidths()
{
    const QDateTime wide(QDate(2030, 12, 28), QTime(22, 58, 58));
    const auto setWidth = [this](int column, const QString& sample) {
        const int width = fontMetrics().horizontalAdvance(sample) + ColumnMargin;
        setColumnWidth(column, std::max(width, horizontalHeader()->sectionSizeHint(column)));
    };
    setWidth(ArchiveModel::Date, QLocale().toString(wide.date(), QLocale::ShortFormat));
    setColumnWidth(ArchiveModel::Date,
                   columnWidth(ArchiveModel::Date) + style()->pixelMetric(QStyle::PM_SmallIconSize));
    for (const int column : {ArchiveModel::Started, ArchiveModel::Stopped})
        setWidth(column, QLocale().toString(wide.time(), QLocale::ShortFormat));
    setWidth(ArchiveModel::Length, ArchiveModel::lengthText(359'999'000));
    setWidth(ArchiveModel::File, QString(FileWidthInLetters, u'n'));
    horizontalHeader()->setStretchLastSection(true);
}

QString ArchiveTable::pathAt(int row) const
{
    return m_filter->index(row, 0).data(ArchiveModel::PathRole).toString();
}

QList<int> ArchiveTable::selectedRows() const
{
    QList<int> rows;
    // By ranges: asking the selection model for its rows tests each row against each range.
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.append(row);
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

QStringList ArchiveTable::selectedPaths() const
{
    QStringList paths;
    for (const int row : selectedRows())
        paths.append(pathAt(row));
    return paths;
}

RecordInfo ArchiveTable::selectedRecord() const
{
    const QList<int> rows = selectedRows();
    if (rows.isEmpty())
        return {};
    const int row = rows.contains(currentIndex().row()) ? currentIndex().row() : rows.first();
    return m_model->record(m_filter->mapToSource(m_filter->index(row, 0)).row());
}

void ArchiveTable::selectPath(const QString& filePath)
{
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (m_model->record(row).filePath != filePath)
            continue;
        const QModelIndex index = m_filter->mapFromSource(m_model->index(row, 0));
        if (index.isValid())
            setCurrentIndex(index);
        else
            clearSelection(); // what is out of sight must not leave another row to be deleted
        return;
    }
}

void ArchiveTable::keyboardSearch(const QString& search)
{
    Q_UNUSED(search)
}

void ArchiveTable::keyPressEvent(QKeyEvent* event)
{
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        Q_EMIT playRequested();
    else if (plain && event->key() == Qt::Key_Space)
        Q_EMIT pauseToggled();
    else if (plain && event->key() == Qt::Key_Delete)
        Q_EMIT deleteRequested();
    else
        QTableView::keyPressEvent(event);
}

void ArchiveTable::rememberView()
{
    const QStringList selected = selectedPaths();
    m_view.selected = QSet<QString>(selected.begin(), selected.end());
    m_view.row = currentIndex().row();
    m_view.column = currentIndex().column();
    m_view.current = pathAt(m_view.row);
    m_view.scroll = {horizontalScrollBar()->value(), verticalScrollBar()->value()};
    m_view.top = pathAt(rowAt(0));
}

void ArchiveTable::restoreView()
{
    QList<std::pair<int, int>> selected; // first and last of rows in sequence: a range for each row is slow to select
    int current = std::min(m_view.row, m_filter->rowCount() - 1);
    int top = m_view.scroll.y();
    for (int row = 0; row < m_filter->rowCount(); ++row) {
        const QString path = pathAt(row);
        if (path == m_view.current)
            current = row;
        if (path == m_view.top)
            top = row;
        if (!m_view.selected.contains(path))
            continue;
        if (selected.isEmpty() || selected.last().second != row - 1)
            selected.append({row, row});
        selected.last().second = row;
    }
    QItemSelection selection;
    for (const auto& [first, last] : std::as_const(selected))
        selection.append({m_filter->index(first, 0), m_filter->index(last, ArchiveModel::ColumnCount - 1)});
    selectionModel()->setCurrentIndex(m_filter->index(current, m_view.column), QItemSelectionModel::NoUpdate);
    selectionModel()->select(selection, QItemSelectionModel::Select);
    executeDelayedItemsLayout(); // the scroll bars still have the range of an empty table
    horizontalScrollBar()->setValue(m_view.scroll.x());
    verticalScrollBar()->setValue(top);
}
