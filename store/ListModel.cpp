#include "store/ListModel.h"

#include "store/Functions.h"
#include "store/TableRows.h"

#include <QTimer>
#include <algorithm>
#include <numeric>

namespace
{
// Rows read at once as a list comes into view, and the most kept: enough for several
// screens, little beside 300,000 rows.
constexpr int PageRows = 256;
constexpr int KeptRows = 16 * PageRows;
} // namespace

int compareListText(const QString& a, const QString& b)
{
    const int c = a.compare(b, Qt::CaseInsensitive);
    return c != 0 ? c : a.compare(b);
}

namespace
{
// A text with each character folded as a comparison without regard to case folds it, so
// that a sort compares plain characters: far less work for each of its comparisons.
QString folded(const QString& text)
{
    QString out(text.size(), Qt::Uninitialized);
    QChar* to = out.data();
    for (QChar c : text)
        *to++ = c.toCaseFolded();
    return out;
}
} // namespace

ListModel::ListModel(const QStringList& headings, QObject* parent)
    : QAbstractTableModel(parent), headings_(headings), alignments_(size_t(headings.size()), Qt::AlignLeft),
      marks_(size_t(headings.size())), icons_(size_t(headings.size()))
{
}

void ListModel::loadTable(const QString& connectionString)
{
    const TableRows rows(connectionString, source_.table, source_.columns);
    std::vector<qint64> ids = rows.ids();
    // The rows before the first that cannot be shown; that one's failure comes from
    // reading it as every row is read.
    const qint64 bad = rows.firstNull(source_.strict);
    if (bad > 0)
        ids.erase(std::lower_bound(ids.begin(), ids.end(), bad), ids.end());
    setRows(connectionString, ids, bad);
}

void ListModel::setRows(const QString& connectionString, const std::vector<qint64>& ids, qint64 failing)
{
    beginResetModel();
    entries_.clear();
    owned_.clear();
    read_.clear();
    failing_ = false;
    connection_ = connectionString;
    entries_.reserve(ids.size());
    for (qint64 id : ids)
        entries_.push_back({id, -1, Qt::Unchecked});
    endResetModel();
    if (failing > 0)
        TableRows(connection_, source_.table, source_.columns).read({failing}, [&](qint64, const Record& record) {
            source_.row(record);
        });
}

void ListModel::clear()
{
    beginResetModel();
    entries_.clear();
    owned_.clear();
    read_.clear();
    endResetModel();
}

void ListModel::readPage(int row) const
{
    if (read_.size() > KeptRows)
        read_.clear();
    const int first = row - row % PageRows;
    const int last = std::min(count(), first + PageRows);
    std::vector<qint64> ids;
    for (int i = first; i < last; ++i) {
        const Entry& e = entries_[size_t(i)];
        if (e.own < 0 && !read_.contains(e.id))
            ids.push_back(e.id);
    }
    if (ids.empty())
        return;
    std::sort(ids.begin(), ids.end());
    TableRows(connection_, source_.table, source_.columns).read(ids, [&](qint64 id, const Record& record) {
        read_.insert(id, source_.row(record));
    });
    // A row another window deleted meanwhile shows empty until the list is read again.
    for (qint64 id : ids)
        if (!read_.contains(id))
            read_.insert(id, QStringList(headings_.size()));
}

const QStringList& ListModel::cells(int row) const
{
    const Entry& e = entries_[size_t(row)];
    if (e.own >= 0)
        return owned_[size_t(e.own)];
    auto it = read_.constFind(e.id);
    if (it == read_.constEnd()) {
        readPage(row);
        it = read_.constFind(e.id);
    }
    return *it;
}

QString ListModel::text(int row, int column) const
{
    return cells(row).value(column);
}

void ListModel::insertTexts(int at, const QStringList& cells)
{
    beginInsertRows(QModelIndex(), at, at);
    owned_.push_back(cells);
    entries_.insert(entries_.begin() + at, Entry{0, int(owned_.size()) - 1, Qt::Unchecked});
    endInsertRows();
}

void ListModel::appendTexts(std::vector<QStringList> rows)
{
    if (rows.empty())
        return;
    beginInsertRows(QModelIndex(), count(), count() + int(rows.size()) - 1);
    entries_.reserve(entries_.size() + rows.size());
    for (QStringList& cells : rows) {
        owned_.push_back(std::move(cells));
        entries_.push_back(Entry{0, int(owned_.size()) - 1, Qt::Unchecked});
    }
    endInsertRows();
}

void ListModel::setTexts(int row, const QStringList& cells)
{
    Entry& e = entries_[size_t(row)];
    if (e.own < 0) {
        owned_.push_back(cells);
        e.own = int(owned_.size()) - 1;
    } else {
        owned_[size_t(e.own)] = cells;
    }
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void ListModel::setText(int row, int column, const QString& text)
{
    QStringList now = cells(row);
    now[column] = text;
    setTexts(row, now);
}

void ListModel::removeAt(int row)
{
    beginRemoveRows(QModelIndex(), row, row);
    entries_.erase(entries_.begin() + row);
    endRemoveRows();
}

void ListModel::visitAll(const std::function<void(int row, const QStringList& cells)>& visit) const
{
    // The table's rows of the list by id, to meet the walk, which comes in id order.
    std::vector<std::pair<qint64, int>> byId;
    for (size_t i = 0; i < entries_.size(); ++i) {
        const Entry& e = entries_[i];
        if (e.own >= 0)
            visit(int(i), owned_[size_t(e.own)]);
        else
            byId.emplace_back(e.id, int(i));
    }
    if (byId.empty())
        return;
    std::sort(byId.begin(), byId.end());
    size_t next = 0;
    TableRows(connection_, source_.table, source_.columns).scan([&](qint64 id, const Record& record) {
        while (next < byId.size() && byId[next].first < id)
            ++next;
        if (next < byId.size() && byId[next].first == id)
            visit(byId[next++].second, source_.row(record));
    });
}

void ListModel::sortByText(int column, Qt::SortOrder order)
{
    struct Key {
        QString folded, text;
    };
    std::vector<Key> keys(entries_.size());
    visitAll([&](int row, const QStringList& cells) {
        const QString text = cells.value(column);
        keys[size_t(row)] = {folded(text), text};
    });
    const auto less = [&](int a, int b) {
        const Key &x = keys[size_t(a)], &y = keys[size_t(b)];
        const int c = x.folded.compare(y.folded);
        return (c != 0 ? c : x.text.compare(y.text)) < 0;
    };
    std::vector<int> sorted(entries_.size());
    std::iota(sorted.begin(), sorted.end(), 0);
    if (order == Qt::AscendingOrder)
        std::stable_sort(sorted.begin(), sorted.end(), less);
    else
        std::stable_sort(sorted.begin(), sorted.end(), [&](int a, int b) { return less(b, a); });

    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    std::vector<int> placeOf(entries_.size());
    std::vector<Entry> entries(entries_.size());
    for (size_t to = 0; to < sorted.size(); ++to) {
        entries[to] = entries_[size_t(sorted[to])];
        placeOf[size_t(sorted[to])] = int(to);
    }
    entries_ = std::move(entries);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    for (const QModelIndex& i : before)
        after << index(placeOf[size_t(i.row())], i.column());
    changePersistentIndexList(before, after);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

int ListModel::sortedPlace(int column, Qt::SortOrder order, const QString& text) const
{
    int lo = 0, hi = count();
    while (lo < hi) {
        const int mid = (lo + hi) / 2;
        const int c = compareListText(this->text(mid, column), text);
        const bool before = order == Qt::AscendingOrder ? c <= 0 : c >= 0;
        if (before)
            lo = mid + 1;
        else
            hi = mid;
    }
    return lo;
}

void ListModel::setCheckState(int row, Qt::CheckState state)
{
    entries_[size_t(row)].check = state;
    emit dataChanged(index(row, 0), index(row, 0), {Qt::CheckStateRole});
}

void ListModel::setHeadingAlignment(int column, Qt::Alignment alignment)
{
    alignments_[size_t(column)] = alignment;
    emit headerDataChanged(Qt::Horizontal, column, column);
}

void ListModel::setHeadingMark(int column, const QString& mark, const QIcon& icon)
{
    for (size_t i = 0; i < marks_.size(); ++i) {
        marks_[i].clear();
        icons_[i] = QIcon();
    }
    marks_[size_t(column)] = mark;
    icons_[size_t(column)] = icon;
    emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

QString ListModel::headingMark(int column) const
{
    return marks_[size_t(column)];
}

int ListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

int ListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(headings_.size());
}

// A failure met while the list is painted is shown once the painting is over.
void ListModel::reportLater(std::exception_ptr failure) const
{
    if (failing_)
        return;
    failing_ = true;
    QTimer::singleShot(0, this,
                       [this, failure] { Trap(module_, "Load_list", [failure] { std::rethrow_exception(failure); }); });
}

QVariant ListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        try {
            return text(index.row(), index.column());
        } catch (...) {
            reportLater(std::current_exception());
            return QString();
        }
    case Qt::TextAlignmentRole: // a row is aligned as its column's heading is
        return int(alignments_[size_t(index.column())] | Qt::AlignVCenter);
    case Qt::CheckStateRole:
        if (checkable_ && index.column() == 0)
            return entries_[size_t(index.row())].check;
        return {};
    default:
        return {};
    }
}

bool ListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!checkable_ || role != Qt::CheckStateRole || index.column() != 0)
        return false;
    setCheckState(index.row(), Qt::CheckState(value.toInt()));
    return true;
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return headings_[section];
    case Qt::TextAlignmentRole:
        return int(alignments_[size_t(section)] | Qt::AlignVCenter);
    case Qt::DecorationRole:
        return icons_[size_t(section)];
    case MarkRole:
        return marks_[size_t(section)];
    default:
        return {};
    }
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags f = QAbstractTableModel::flags(index);
    if (checkable_ && index.column() == 0)
        f |= Qt::ItemIsUserCheckable;
    return f;
}
