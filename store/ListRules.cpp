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

bool ListRules::matches(const QStringList& cells, const QString& text) const
{
    for (int c = 0; c <= config_.furtherColumns; ++c)
        if (cells.value(c).contains(text, Qt::CaseInsensitive))
            return true;
    return false;
}

// Step 4 of the search: the first row from `from` (counted from 1) to the end that holds
// the text, or 0. The rows just after `from` are read as the list reads them; past them
// one reading of the whole list marks every row that holds it, kept for a second pass.
int ListRules::firstMatch(int from, const QString& text, std::vector<char>& hits) const
{
    constexpr int NearRows = 512;
    const int n = list_->rowCount();
    const int near = std::min(n, from - 1 + NearRows);
    for (int i = from; i <= near; ++i)
        if (matches(list_->rows()->cells(i - 1), text))
            return i;
    if (near == n)
        return 0;
    if (hits.empty()) {
        hits.assign(size_t(n), 0);
        list_->rows()->visitAll([&](int row, const QStringList& cells) { hits[size_t(row)] = matches(cells, text); });
    }
    for (int i = near + 1; i <= n; ++i)
        if (hits[size_t(i - 1)])
            return i;
    return 0;
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
        std::vector<char> hits;
        int found = firstMatch(SearchPos, text, hits);
        if (!found && !fromTop)
            found = firstMatch(1, text, hits);
        if (found) {
            SearchPos = found + 1;
            list_->clearSelection();
            select(found - 1);
            return;
        }
        // As a walk to the end leaves it: past the last row, or at the top when it began there.
        SearchPos = fromTop ? 1 : list_->rowCount() + 1;
        if (config_.foundLabel)
            config_.foundLabel->setText(QStringLiteral("Not Found"));
    });
}

QString headingMark(ListView* list, int column)
{
    return list->rows()->headingMark(column);
}
