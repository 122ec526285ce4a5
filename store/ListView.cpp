#include "store/ListView.h"

#include "store/ListModel.h"

#include <QHeaderView>

ListView::ListView(const QStringList& headings, QWidget* parent)
    : QTreeView(parent), rows_(new ListModel(headings, this))
{
    setModel(rows_);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true); // rows are not measured one by one: a long list opens at once
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setAllColumnsShowFocus(true);
}

int ListView::rowCount() const
{
    return rows_->count();
}

QString ListView::text(int row, int column) const
{
    return rows_->text(row, column);
}

int ListView::selectedRow() const
{
    const QModelIndexList chosen = selectionModel()->selectedRows();
    if (!chosen.isEmpty())
        return chosen.first().row();
    return currentIndex().isValid() ? currentIndex().row() : -1;
}

void ListView::selectRow(int row)
{
    if (row < 0 || row >= rowCount())
        return;
    const QModelIndex at = rows_->index(row, 0);
    selectionModel()->setCurrentIndex(at, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(at);
}
