#pragma once

#include "archive/recordinfo.h"

#include <QSet>
#include <QTableView>

class ArchiveModel;
class ArchiveRangeFilter;

/// The list of recordings, newest first until a header is clicked. When the archive changes, what is selected and what
/// is in sight stays so: rows are known by the path of their file.
class ArchiveTable : public QTableView {
    Q_OBJECT
public:
    /// \param filter over the model; both are not owned and outlive the table.
    ArchiveTable(ArchiveModel* model, ArchiveRangeFilter* filter, QWidget* parent = nullptr);

    /// Paths of the selected recordings, from the top down.
    QStringList selectedPaths() const;
    /// The selected row that has the cursor, else the topmost selected; an empty record when none is selected.
    RecordInfo selectedRecord() const;
    /// Selects this recording alone and scrolls to it, if it is in the range shown.
    void selectPath(const QString& filePath);

    /// Does nothing: the texts of a hundred thousand rows would be made for each letter typed.
    void keyboardSearch(const QString& search) override;

Q_SIGNALS:
    void playRequested(); ///< double-click, Enter
    void pauseToggled(); ///< Space
    void deleteRequested(); ///< Delete

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// What a reset of the model would lose.
    struct View {
        QSet<QString> selected;
        QString current;
        QString top;
        int row = 0; ///< row of the current recording
        int column = 0;
        QPoint scroll;
    };
    void setColumnWidths();
    QString pathAt(int row) const;
    QList<int> selectedRows() const;
    void rememberView();
    void restoreView();

    ArchiveModel* m_model;
    ArchiveRangeFilter* m_filter;
    View m_view;
};
