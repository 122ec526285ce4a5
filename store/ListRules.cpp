#include "store/ListRules.h"

#include "store/Connection.h"
#include "store/Functions.h"
#include "store/ListView.h"
#include "store/Recordset.h"

#include <QApplication>
#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QTimer>
#include <QTreeWidget>

bool ListRow::operator<(const QTreeWidgetItem& other) const
{
    const int column = treeWidget() ? treeWidget()->sortColumn() : 0;
    return compareListText(text(column), other.text(column)) < 0;
}

QVariant ListRow::data(int column, int role) const
{
    if (role == Qt::TextAlignmentRole && treeWidget())
        return treeWidget()->headerItem()->data(column, role);
    return QTreeWidgetItem::data(column, role);
}

void alignMoneyColumns(QTreeWidget* list, const std::vector<int>& columns)
{
    for (int column : columns)
        list->headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
}

ListRules::ListRules(ListView* list, ListConfig config, QString module)
    : QObject(list), list_(list), config_(config), module_(std::move(module))
{
    list_->rows()->setModule(module_);
    list_->header()->setSectionsClickable(true);
    list_->header()->setSortIndicatorShown(false);
    connect(list_->header(), &QHeaderView::sectionClicked, this, &ListRules::columnClick);
    for (int column : config_.moneyColumns)
        list_->rows()->setHeadingAlignment(column, Qt::AlignRight);
}

void ListRules::attachSearch(QLineEdit* box, QPushButton* button, bool selectOnFocus)
{
    box_ = box;
    button_ = button;
    selectOnFocus_ = selectOnFocus;
    box->installEventFilter(this);
    connect(button, &QPushButton::clicked, this, qOverload<>(&ListRules::Find));
}

bool ListRules::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == box_ && event->type() == QEvent::FocusIn) {
        SearchPos = 1;
        if (config_.foundLabel)
            config_.foundLabel->clear();
        button_->setDefault(true);
        // The box takes the focus its own way first (a Tab selects all of it); then the
        // window's rule decides. Queued, so that a click into the box keeps the selection.
        static_cast<QObject*>(box_)->event(event);
        if (selectOnFocus_)
            QTimer::singleShot(0, box_, &QLineEdit::selectAll);
        else
            box_->deselect();
        return true;
    } else if (watched == box_ && event->type() == QEvent::FocusOut) {
        button_->setDefault(false);
    }
    return QObject::eventFilter(watched, event);
}

void ListRules::columnClick(int column)
{
    sortColumn_ = column == config_.replacedColumn ? config_.replacementColumn : column;
    // The order flips on every click, whichever column: the first click gives descending.
    order_ = order_ == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
    sorted_ = true;
    if (config_.sortMarks) {
        const bool down = order_ == Qt::DescendingOrder;
        list_->rows()->setHeadingMark(column, down ? QStringLiteral("key1") : QStringLiteral("key2"),
                                      list_->style()->standardIcon(down ? QStyle::SP_ArrowDown : QStyle::SP_ArrowUp));
    }
    Trap(module_, "ColumnClick", [this] { sortRows(); });
}

// Equal texts keep their order; the selected row stays selected.
void ListRules::sortRows()
{
    list_->rows()->sortByText(sortColumn_, order_);
}

int ListRules::addRow(const QStringList& cells)
{
    if (loading_) {
        loading_->push_back(cells);
        return int(loading_->size()) - 1;
    }
    ListModel* rows = list_->rows();
    const int at = sorted_ ? rows->sortedPlace(sortColumn_, order_, cells.value(sortColumn_)) : rows->count();
    rows->insertTexts(at, cells);
    return at;
}

void ListRules::reload(const std::function<void()>& fill)
{
    list_->rows()->clear();
    std::vector<QStringList> rows;
    loading_ = &rows;
    try {
        fill();
    } catch (...) {
        loading_ = nullptr;
        list_->rows()->appendTexts(std::move(rows));
        throw;
    }
    loading_ = nullptr;
    list_->rows()->appendTexts(std::move(rows));
    if (sorted_)
        sortRows();
}

void ListRules::setRow(int row, const QStringList& cells)
{
    list_->rows()->setTexts(row, cells);
}

int ListRules::selected() const
{
    return list_->selectedRow();
}

void ListRules::select(int row)
{
    list_->selectRow(row);
}

void ListRules::removeSelected()
{
    const int row = selected();
    if (row < 0)
        return;
    list_->rows()->removeAt(row);
    if (list_->rowCount() > 0)
        select(std::min(row, list_->rowCount() - 1));
}

void ListRules::setSource(ListModel::Source source, const QString& index)
{
    list_->rows()->setSource(std::move(source));
    index_ = index;
}

void ListRules::loadRows(bool selectFirst)
{
    list_->rows()->loadTable(ConnectionString);
    if (list_->rowCount() == 0)
        return;
    if (sorted_)
        sortRows();
    if (selectFirst)
        select(0);
}

bool ListRules::seekRow(const QString& key, QStringList& cells) const
{
    Recordset rs;
    rs.open(list_->rows()->source().table, ConnectionString, Recordset::adLockReadOnly);
    rs.setIndex(index_);
    if (rs.recordCount() <= 0)
        return false;
    rs.seek(key);
    if (rs.eof())
        return false;
    cells = list_->rows()->source().row(rs);
    return true;
}

void ListRules::refreshSelected(const QString& key)
{
    const int row = selected();
    QStringList cells;
    if (seekRow(key, cells) && row >= 0)
        setRow(row, cells);
    select(row);
}

void ListRules::addRecord(const QString& key)
{
    QStringList cells;
    if (!seekRow(key, cells))
        return;
    const int row = addRow(cells);
    list_->clearSelection();
    select(row);
}

void ListRules::focusList()
{
    if (list_->rowCount() > 0)
        list_->setFocus();
}

bool ListRules::matches(int row, const QString& text) const
{
    for (int c = 0; c <= config_.furtherColumns; ++c)
        if (list_->text(row, c).contains(text, Qt::CaseInsensitive))
            return true;
    return false;
}

// Step 4 of the search: rows from `from` to the end; true when one was found.
bool ListRules::pass(int from, const QString& text)
{
    const int n = list_->rowCount();
    for (int i = from; i <= n; ++i) {
        SearchPos = i + 1;
        if (matches(i - 1, text)) {
            list_->clearSelection();
            select(i - 1);
            return true;
        }
    }
    return false;
}

void ListRules::Find()
{
    Find(box_ ? box_->text() : QString());
}

void ListRules::Find(const QString& text)
{
    BusyTrap(module_, "Find", [&] {
        if (SearchPos == 0)
            SearchPos = 1;
        if (config_.foundLabel)
            config_.foundLabel->clear();
        if (SearchPos > list_->rowCount())
            SearchPos = 1;
        const bool fromTop = SearchPos < 2;
        if (pass(SearchPos, text))
            return;
        SearchPos = 1;
        if (!fromTop && pass(1, text))
            return;
        if (config_.foundLabel)
            config_.foundLabel->setText(QStringLiteral("Not Found"));
    });
}

QString headingMark(ListView* list, int column)
{
    return list->rows()->headingMark(column);
}
