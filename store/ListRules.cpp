#include "store/ListRules.h"

#include "store/Connection.h"
#include "store/Functions.h"
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
#include <algorithm>

namespace
{
constexpr int MarkRole = Qt::UserRole + 7;
constexpr int KeyRole = Qt::UserRole + 8;

int compareText(const QString& a, const QString& b)
{
    const int c = a.compare(b, Qt::CaseInsensitive);
    return c != 0 ? c : a.compare(b);
}
} // namespace

bool ListRow::operator<(const QTreeWidgetItem& other) const
{
    const int column = treeWidget() ? treeWidget()->sortColumn() : 0;
    return compareText(text(column), other.text(column)) < 0;
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

ListRules::ListRules(QTreeWidget* list, ListConfig config, QString module)
    : QObject(list), list_(list), config_(config), module_(std::move(module))
{
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setSelectionMode(QAbstractItemView::SingleSelection);
    list_->setAllColumnsShowFocus(true);
    list_->header()->setSectionsClickable(true);
    list_->header()->setSortIndicatorShown(false);
    connect(list_->header(), &QHeaderView::sectionClicked, this, &ListRules::columnClick);
    alignMoneyColumns(list_, config_.moneyColumns);
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
        QTreeWidgetItem* header = list_->headerItem();
        for (int i = 0; i < list_->columnCount(); ++i) {
            header->setIcon(i, QIcon());
            header->setData(i, MarkRole, QString());
        }
        const bool down = order_ == Qt::DescendingOrder;
        header->setIcon(column, list_->style()->standardIcon(down ? QStyle::SP_ArrowDown : QStyle::SP_ArrowUp));
        header->setData(column, MarkRole, down ? QStringLiteral("key1") : QStringLiteral("key2"));
    }
    sortRows();
}

// The rows taken out, ordered by their texts read once each, and put back: far less than
// the list's own sort, which reads both texts again at every comparison. Equal texts keep
// their order.
void ListRules::sortRows()
{
    QTreeWidgetItem* current = list_->currentItem();
    const auto chosen = list_->selectedItems();
    QList<QTreeWidgetItem*> rows = list_->invisibleRootItem()->takeChildren();
    std::vector<std::pair<QString, QTreeWidgetItem*>> keyed;
    keyed.reserve(size_t(rows.size()));
    for (QTreeWidgetItem* row : rows)
        keyed.emplace_back(row->text(sortColumn_), row);
    const bool ascending = order_ == Qt::AscendingOrder;
    std::stable_sort(keyed.begin(), keyed.end(), [ascending](const auto& a, const auto& b) {
        return ascending ? compareText(a.first, b.first) < 0 : compareText(b.first, a.first) < 0;
    });
    for (size_t i = 0; i < keyed.size(); ++i)
        rows[qsizetype(i)] = keyed[i].second;
    list_->addTopLevelItems(rows);
    if (current)
        list_->setCurrentItem(current);
    for (QTreeWidgetItem* row : chosen)
        row->setSelected(true);
}

QTreeWidgetItem* ListRules::addRow(const QStringList& cells, const QString& key)
{
    auto* row = new ListRow;
    setRow(row, cells);
    row->setData(0, KeyRole, key);
    if (loading_) {
        loading_->append(row);
        return row;
    }
    if (!sorted_) {
        list_->addTopLevelItem(row);
        return row;
    }
    // Binary search for the row's place by the sort column, as the sorted list keeps it.
    int lo = 0, hi = list_->topLevelItemCount();
    const QString text = row->text(sortColumn_);
    while (lo < hi) {
        const int mid = (lo + hi) / 2;
        const int c = compareText(list_->topLevelItem(mid)->text(sortColumn_), text);
        const bool before = order_ == Qt::AscendingOrder ? c <= 0 : c >= 0;
        if (before)
            lo = mid + 1;
        else
            hi = mid;
    }
    list_->insertTopLevelItem(lo, row);
    return row;
}

void ListRules::reload(const std::function<void()>& fill)
{
    list_->clear();
    QList<QTreeWidgetItem*> rows;
    loading_ = &rows;
    try {
        fill();
    } catch (...) {
        loading_ = nullptr;
        list_->addTopLevelItems(rows);
        throw;
    }
    loading_ = nullptr;
    list_->addTopLevelItems(rows);
    if (sorted_)
        sortRows();
}

void ListRules::setRow(QTreeWidgetItem* row, const QStringList& cells)
{
    for (int i = 0; i < cells.size(); ++i)
        row->setText(i, cells[i]);
}

QTreeWidgetItem* ListRules::selected() const
{
    const auto items = list_->selectedItems();
    return items.isEmpty() ? list_->currentItem() : items.first();
}

void ListRules::select(QTreeWidgetItem* row)
{
    if (!row)
        return;
    list_->setCurrentItem(row);
    row->setSelected(true);
    list_->scrollToItem(row);
}

void ListRules::removeSelected()
{
    QTreeWidgetItem* row = selected();
    if (!row)
        return;
    const int index = list_->indexOfTopLevelItem(row);
    delete row;
    if (list_->topLevelItemCount() > 0)
        select(list_->topLevelItem(std::min(index, list_->topLevelItemCount() - 1)));
}

void ListRules::setSource(ListSource source)
{
    source_ = std::move(source);
}

void ListRules::loadRows()
{
    Recordset rs;
    rs.open(source_.table, ConnectionString, Recordset::adLockReadOnly);
    if (rs.recordCount() <= 0) {
        list_->clear();
        return;
    }
    reload([&] {
        for (rs.moveFirst(); !rs.eof(); rs.moveNext()) {
            const QStringList cells = source_.row(rs);
            addRow(cells, source_.keyPrefix + cells[0]);
        }
    });
    rs.close();
    select(list_->topLevelItem(0));
}

void ListRules::refreshSelected(const QString& key)
{
    QTreeWidgetItem* row = selected();
    Recordset rs;
    rs.open(source_.table, ConnectionString, Recordset::adLockReadOnly);
    rs.setIndex(source_.index);
    if (rs.recordCount() > 0) {
        rs.seek(key);
        if (!rs.eof() && row)
            setRow(row, source_.row(rs));
        rs.close();
        select(row);
    }
}

void ListRules::addRecord(const QString& key)
{
    Recordset rs;
    rs.open(source_.table, ConnectionString, Recordset::adLockReadOnly);
    rs.setIndex(source_.index);
    if (rs.recordCount() > 0) {
        rs.seek(key);
        if (!rs.eof()) {
            const QStringList cells = source_.row(rs);
            QTreeWidgetItem* row = addRow(cells, source_.keyPrefix + cells[0]);
            list_->clearSelection();
            select(row);
        }
    }
}

void ListRules::focusList()
{
    if (list_->topLevelItemCount() > 0)
        list_->setFocus();
}

bool ListRules::matches(QTreeWidgetItem* row, const QString& text) const
{
    for (int c = 0; c <= config_.furtherColumns; ++c)
        if (row->text(c).contains(text, Qt::CaseInsensitive))
            return true;
    return false;
}

// Step 4 of the search: rows from `from` to the end; true when one was found.
bool ListRules::pass(int from, const QString& text)
{
    const int n = list_->topLevelItemCount();
    for (int i = from; i <= n; ++i) {
        SearchPos = i + 1;
        QTreeWidgetItem* row = list_->topLevelItem(i - 1);
        if (matches(row, text)) {
            list_->clearSelection();
            select(row);
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
        if (SearchPos > list_->topLevelItemCount())
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

QString headingMark(QTreeWidget* list, int column)
{
    return list->headerItem()->data(column, MarkRole).toString();
}
