#include "store/Recordset.h"

#include "store/Database.h"
#include "store/Errors.h"
#include "store/Numbers.h"

#include <QRegularExpression>
#include <sqlite3.h>

namespace
{
constexpr int MaxPage = 1024;
}

QString dataSourceOf(const QString& connectionString)
{
    static const QRegularExpression re(QStringLiteral("Data Source\\s*=\\s*'?([^';]+)'?"),
                                       QRegularExpression::CaseInsensitiveOption);
    const auto m = re.match(connectionString);
    return m.hasMatch() ? m.captured(1).trimmed() : QString();
}

Recordset::~Recordset() = default;

void Recordset::open(const QString& table, const QString& connectionString, int lockType)
{
    close();
    const TableDef* def = schemaTable(table);
    if (!def)
        throw VbError(err::UnknownTable);
    db_ = Database::open(dataSourceOf(connectionString));
    table_ = def;
    readOnly_ = lockType == adLockReadOnly;
    moveFirst();
}

void Recordset::close()
{
    table_ = nullptr;
    index_ = nullptr;
    orderColumn_ = -1;
    state_ = State::Closed;
    ahead_.clear();
    edit_ = Edit::None;
    db_.reset();
}

void Recordset::requireOpen() const
{
    if (!table_)
        throw VbError(err::NotSupported, QStringLiteral("Operation is not allowed when the object is closed."));
}

void Recordset::requireCurrent() const
{
    requireOpen();
    if (state_ != State::OnRow)
        throw VbError(err::NoCurrentRecord);
}

int Recordset::columnOf(const QString& name) const
{
    requireOpen();
    const int i = table_->columnIndex(name);
    if (i < 0)
        throw VbError(err::ItemNotFound);
    return i;
}

void Recordset::setIndex(const QString& name)
{
    requireOpen();
    if (name.isEmpty()) {
        index_ = nullptr;
        orderColumn_ = -1;
    } else {
        const IndexDef* idx = table_->index(name);
        if (!idx)
            throw VbError(err::ItemNotFound);
        index_ = idx;
        orderColumn_ = table_->columnIndex(QLatin1String(idx->column));
    }
    ahead_.clear();
}

QString Recordset::index() const
{
    return index_ ? QLatin1String(index_->name) : QString();
}

QString Recordset::selectList() const
{
    QString list = QStringLiteral("rowid");
    for (const ColumnDef& c : table_->columns)
        list += QStringLiteral(", \"%1\"").arg(QLatin1String(c.name));
    return list;
}

QString Recordset::orderBy(bool descending) const
{
    const QString dir = descending ? QStringLiteral(" DESC") : QString();
    if (orderColumn_ < 0)
        return QStringLiteral(" ORDER BY rowid") + dir;
    return QStringLiteral(" ORDER BY \"%1\"%2, rowid%2")
        .arg(QLatin1String(table_->columns[size_t(orderColumn_)].name), dir);
}

Recordset::Row Recordset::readRow(void* statement) const
{
    auto* st = static_cast<sqlite3_stmt*>(statement);
    Row row;
    row.rowid = sqlite3_column_int64(st, 0);
    const int n = int(table_->columns.size());
    row.cells.resize(size_t(n));
    for (int i = 0; i < n; ++i) {
        Cell& c = row.cells[size_t(i)];
        c.kind = sqlite3_column_type(st, i + 1);
        switch (c.kind) {
        case SQLITE_INTEGER:
            c.integer = sqlite3_column_int64(st, i + 1);
            break;
        case SQLITE_FLOAT:
            c.real = sqlite3_column_double(st, i + 1);
            break;
        case SQLITE_NULL:
            break;
        default:
            c.kind = SQLITE_TEXT;
            c.offset = int(row.text.size());
            c.length = sqlite3_column_bytes(st, i + 1);
            row.text.append(reinterpret_cast<const char*>(sqlite3_column_text(st, i + 1)), c.length);
            break;
        }
    }
    return row;
}

Value Recordset::cell(const Row& row, int column) const
{
    const Cell& c = row.cells[size_t(column)];
    return Database::decode(c.kind, c.integer, c.real, row.text.constData() + (c.kind == SQLITE_TEXT ? c.offset : 0),
                            c.kind == SQLITE_TEXT ? c.length : 0, int(table_->columns[size_t(column)].type));
}

// Reads the rows that follow the current one (or the first rows) into the page.
void Recordset::fetchPage(bool fromCurrent, int limit)
{
    QString where;
    const QString from = QStringLiteral("SELECT %1 FROM \"%2\"").arg(selectList(), QLatin1String(table_->name));
    bool keyNull = false;
    if (fromCurrent) {
        if (orderColumn_ < 0) {
            where = QStringLiteral(" WHERE rowid > ?2");
        } else {
            const QString col = QLatin1String(table_->columns[size_t(orderColumn_)].name);
            keyNull = current_.cells[size_t(orderColumn_)].kind == SQLITE_NULL;
            // Nulls sort first, so after a Null key come the other Nulls, then every value.
            where = keyNull ? QStringLiteral(" WHERE (\"%1\" IS NULL AND rowid > ?2) OR \"%1\" IS NOT NULL").arg(col)
                            : QStringLiteral(" WHERE (\"%1\", rowid) > (?1, ?2)").arg(col);
        }
    }
    sqlite3_stmt* st = db_->prepare(from + where + orderBy(false) + QStringLiteral(" LIMIT ?3"));
    StatementScope scope(st);
    if (fromCurrent) {
        if (orderColumn_ >= 0 && !keyNull)
            Database::bind(st, 1, cell(current_, orderColumn_));
        sqlite3_bind_int64(st, 2, current_.rowid);
    }
    sqlite3_bind_int(st, 3, limit);
    readPage(st);
}

void Recordset::readPage(void* statement)
{
    auto* st = static_cast<sqlite3_stmt*>(statement);
    ahead_.clear();
    aheadPos_ = 0;
    int rc;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW)
        ahead_.push_back(readRow(st));
    if (rc != SQLITE_DONE)
        db_->fail(rc);
    aheadVersion_ = db_->version();
}

// Takes the next row of the page as the current one, or ends at EOF.
void Recordset::settle()
{
    if (aheadPos_ < ahead_.size()) {
        current_ = std::move(ahead_[aheadPos_++]);
        currentVersion_ = db_->version();
        state_ = State::OnRow;
    } else {
        state_ = State::Eof;
    }
}

void Recordset::moveFirst()
{
    requireOpen();
    if (edit_ != Edit::None)
        update();
    pageSize_ = 1;
    fetchPage(false, pageSize_);
    settle(); // an empty table leaves the cursor at EOF, which is what callers test
}

void Recordset::moveNext()
{
    requireOpen();
    if (edit_ != Edit::None)
        update();
    if (state_ == State::Eof)
        throw VbError(err::NoCurrentRecord);
    if (aheadPos_ >= ahead_.size() || aheadVersion_ != db_->version()) {
        pageSize_ = std::min(MaxPage, std::max(16, pageSize_ * 4));
        fetchPage(true, pageSize_);
    }
    settle();
}

void Recordset::moveLast()
{
    requireOpen();
    if (edit_ != Edit::None)
        update();
    sqlite3_stmt* st =
        db_->prepare(QStringLiteral("SELECT %1 FROM \"%2\"").arg(selectList(), QLatin1String(table_->name)) +
                     orderBy(true) + QStringLiteral(" LIMIT 1"));
    StatementScope scope(st);
    readPage(st);
    settle();
}

void Recordset::seek(const Value& key, int option)
{
    requireOpen();
    if (!index_)
        throw VbError(err::NotSupported);
    if (edit_ != Edit::None)
        update();
    const ColumnDef& col = table_->columns[size_t(orderColumn_)];
    const QString name = QLatin1String(col.name);
    QString sql = QStringLiteral("SELECT %1 FROM \"%2\"").arg(selectList(), QLatin1String(table_->name));
    const bool equal = option == adSeekFirstEQ;
    if (key.isNull())
        sql += equal ? QStringLiteral(" WHERE \"%1\" IS NULL").arg(name) : QString();
    else
        sql += QStringLiteral(" WHERE \"%1\" %2 ?1").arg(name, equal ? QStringLiteral("=") : QStringLiteral(">="));
    sqlite3_stmt* st = db_->prepare(sql + orderBy(false) + QStringLiteral(" LIMIT 1"));
    StatementScope scope(st);
    if (!key.isNull())
        Database::bind(st, 1, coerce(col, key));
    readPage(st);
    pageSize_ = 1;
    settle();
}

int Recordset::recordCount() const
{
    requireOpen();
    sqlite3_stmt* st = db_->prepare(QStringLiteral("SELECT count(*) FROM \"%1\"").arg(QLatin1String(table_->name)));
    StatementScope scope(st);
    const int rc = sqlite3_step(st);
    if (rc != SQLITE_ROW)
        db_->fail(rc);
    return sqlite3_column_int(st, 0);
}

// Another recordset may have changed the row since it was read: read it again.
void Recordset::refreshCurrent() const
{
    if (currentVersion_ == db_->version())
        return;
    sqlite3_stmt* st = db_->prepare(
        QStringLiteral("SELECT %1 FROM \"%2\" WHERE rowid = ?1").arg(selectList(), QLatin1String(table_->name)));
    StatementScope scope(st);
    sqlite3_bind_int64(st, 1, current_.rowid);
    const int rc = sqlite3_step(st);
    if (rc == SQLITE_ROW) {
        current_ = readRow(st);
        currentVersion_ = db_->version();
        currentDeleted_ = false;
    } else if (rc == SQLITE_DONE) {
        currentDeleted_ = true;
        currentVersion_ = db_->version();
    } else {
        db_->fail(rc);
    }
}

Value Recordset::field(const QString& name) const
{
    const int i = columnOf(name);
    if (edit_ != Edit::None)
        return editValues_[size_t(i)];
    requireCurrent();
    refreshCurrent();
    if (currentDeleted_)
        throw VbError(err::RecordDeleted);
    return cell(current_, i);
}

int Recordset::fieldCount() const
{
    requireOpen();
    return int(table_->columns.size());
}

QString Recordset::fieldName(int i) const
{
    requireOpen();
    if (i < 0 || i >= fieldCount())
        throw VbError(err::ItemNotFound);
    return QLatin1String(table_->columns[size_t(i)].name);
}

Value Recordset::coerce(const ColumnDef& column, const Value& value) const
{
    if (value.isNull())
        return value;
    switch (column.type) {
    case ColumnType::Text: {
        const QString text = value.toText();
        if (text.size() > column.size)
            throw VbError(err::FieldTooSmall);
        return Value(text);
    }
    case ColumnType::Long:
        return Value(value.toLong());
    case ColumnType::Currency:
        return Value(value.toCurrency());
    case ColumnType::Double:
        return Value(value.toDouble());
    case ColumnType::Date:
        return Value(value.toDate());
    }
    return value;
}

void Recordset::setField(const QString& name, const Value& value)
{
    const int i = columnOf(name);
    if (readOnly_)
        throw VbError(err::NotSupported, QStringLiteral("The recordset was opened read-only."));
    const Value stored = coerce(table_->columns[size_t(i)], value);
    if (edit_ == Edit::None) {
        requireCurrent();
        refreshCurrent();
        if (currentDeleted_)
            throw VbError(err::RecordDeleted);
        editValues_.clear();
        for (int k = 0; k < fieldCount(); ++k)
            editValues_.push_back(cell(current_, k));
        dirty_.assign(editValues_.size(), false);
        edit_ = Edit::Editing;
    }
    editValues_[size_t(i)] = stored;
    dirty_[size_t(i)] = true;
}

void Recordset::addNew()
{
    requireOpen();
    if (readOnly_)
        throw VbError(err::NotSupported, QStringLiteral("The recordset was opened read-only."));
    if (edit_ != Edit::None)
        update();
    editValues_.clear();
    for (const ColumnDef& c : table_->columns) {
        if (!c.defaultValue)
            editValues_.emplace_back();
        else if (c.type == ColumnType::Currency)
            editValues_.emplace_back(Currency());
        else if (c.type == ColumnType::Double)
            editValues_.emplace_back(0.0);
        else
            editValues_.emplace_back(qint64(0));
    }
    dirty_.assign(editValues_.size(), true);
    edit_ = Edit::Adding;
}

void Recordset::update()
{
    requireOpen();
    if (edit_ == Edit::None)
        return;
    for (size_t i = 0; i < editValues_.size(); ++i)
        if (dirty_[i] && !table_->columns[i].nullable && editValues_[i].isNull())
            throw VbError(err::NullInRequired,
                          QStringLiteral("The field '%1.%2' cannot contain a Null value because it is required.")
                              .arg(QLatin1String(table_->name), QLatin1String(table_->columns[i].name)));
    QStringList names, marks;
    std::vector<size_t> bound;
    for (size_t i = 0; i < editValues_.size(); ++i) {
        if (!dirty_[i])
            continue;
        names << QStringLiteral("\"%1\"").arg(QLatin1String(table_->columns[i].name));
        bound.push_back(i);
    }
    QString sql;
    if (edit_ == Edit::Adding) {
        for (size_t k = 0; k < bound.size(); ++k)
            marks << QStringLiteral("?%1").arg(k + 1);
        sql = QStringLiteral("INSERT INTO \"%1\" (%2) VALUES (%3)")
                  .arg(QLatin1String(table_->name), names.join(", "), marks.join(", "));
    } else {
        if (bound.empty()) {
            edit_ = Edit::None;
            return;
        }
        for (size_t k = 0; k < bound.size(); ++k)
            marks << QStringLiteral("%1 = ?%2").arg(names[int(k)]).arg(k + 1);
        sql = QStringLiteral("UPDATE \"%1\" SET %2 WHERE rowid = ?%3")
                  .arg(QLatin1String(table_->name), marks.join(", "))
                  .arg(bound.size() + 1);
    }
    sqlite3_stmt* st = db_->prepare(sql);
    StatementScope scope(st);
    for (size_t k = 0; k < bound.size(); ++k)
        Database::bind(st, int(k) + 1, editValues_[bound[k]]);
    if (edit_ == Edit::Editing)
        sqlite3_bind_int64(st, int(bound.size()) + 1, current_.rowid);
    const int rc = sqlite3_step(st);
    if (rc != SQLITE_DONE)
        db_->fail(rc);
    db_->touched();
    if (edit_ == Edit::Adding)
        current_.rowid = sqlite3_last_insert_rowid(db_->handle());
    currentVersion_ = 0; // read the row back as stored at the next look
    currentDeleted_ = false;
    state_ = State::OnRow;
    edit_ = Edit::None;
    ahead_.clear();
    aheadPos_ = 0;
}

void Recordset::cancelUpdate()
{
    edit_ = Edit::None;
}

void Recordset::deleteRecord()
{
    requireOpen();
    if (readOnly_)
        throw VbError(err::NotSupported, QStringLiteral("The recordset was opened read-only."));
    if (edit_ == Edit::Adding) {
        edit_ = Edit::None;
        return;
    }
    edit_ = Edit::None;
    requireCurrent();
    sqlite3_stmt* st =
        db_->prepare(QStringLiteral("DELETE FROM \"%1\" WHERE rowid = ?1").arg(QLatin1String(table_->name)));
    StatementScope scope(st);
    sqlite3_bind_int64(st, 1, current_.rowid);
    const int rc = sqlite3_step(st);
    if (rc != SQLITE_DONE)
        db_->fail(rc);
    db_->touched();
    ahead_.clear();
    aheadPos_ = 0;
}
