#pragma once
// A report-style list: headings over rows, one row selected at a time, its rows in a
// ListModel. Rows are addressed by their place in the list as it is ordered now.

#include <QTreeView>

class ListModel;

class ListView : public QTreeView
{
    Q_OBJECT
public:
    ListView(const QStringList& headings, QWidget* parent);

    ListModel* rows() const { return rows_; }
    int rowCount() const;
    QString text(int row, int column) const;
    // The row selected; with none selected the current one; -1 when neither.
    int selectedRow() const;
    // Makes a row current and selected, and scrolls it into view.
    void selectRow(int row);

private:
    ListModel* rows_;
};
