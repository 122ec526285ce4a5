#include "store/ShapeRecordset.h"

#include "store/Database.h"
#include "store/Errors.h"
#include "store/Schema.h"

#include <QHash>
#include <QRegularExpression>
#include <sqlite3.h>

QString translateSelect(const QString& select)
{
    static const QRegularExpression date(QStringLiteral("#\\s*(\\d{1,2})/(\\d{1,2})/(\\d{4})\\s*#"));
    QString out;
    qsizetype last = 0;
    for (auto it = date.globalMatch(select); it.hasNext();) {
        const auto m = it.next();
        out += select.mid(last, m.capturedStart() - last);
        out += QStringLiteral("'%1-%2-%3'")
                   .arg(m.captured(3), m.captured(1).rightJustified(2, '0'), m.captured(2).rightJustified(2, '0'));
        last = m.capturedEnd();
    }
    return out + select.mid(last);
}

namespace
{
// "SHAPE {parent} as name APPEND ({child} as name RELATE 'key' TO 'key')", the APPEND optional.
const QRegularExpression& shapeCommand()
{
    static const QRegularExpression shape(QStringLiteral("^\\s*SHAPE\\s*\\{([^}]*)\\}\\s*(?:as\\s+(\\w+))?\\s*"
                                                         "(?:APPEND\\s*\\(\\s*\\{([^}]*)\\}\\s*(?:as\\s+(\\w+))?\\s*"
                                                         "RELATE\\s+'?(\\w+)'?\\s+TO\\s+'?(\\w+)'?\\s*\\))?\\s*$"),
                                          QRegularExpression::CaseInsensitiveOption);
    return shape;
}
} // namespace

std::vector<int> selectColumnTypes(sqlite3_stmt* st, QStringList* names)
{
    std::vector<int> types;
    for (int i = 0; i < sqlite3_column_count(st); ++i) {
        if (names)
            *names << QString::fromUtf8(sqlite3_column_name(st, i));
        const QString decl = QString::fromUtf8(sqlite3_column_decltype(st, i)).toUpper();
        ColumnType t = ColumnType::Text;
        if (decl == QLatin1String("INTEGER"))
            t = ColumnType::Long;
        else if (decl == QLatin1String("CURRENCY"))
            t = ColumnType::Currency;
        else if (decl == QLatin1String("DOUBLE"))
            t = ColumnType::Double;
        else if (decl == QLatin1String("DATETIME"))
            t = ColumnType::Date;
        else if (decl.isEmpty())
            t = ColumnType(-1); // an expression: taken as stored
        types.push_back(int(t));
    }
    return types;
}

QString parentSelect(const QString& source)
{
    const auto m = shapeCommand().match(source);
    if (!m.hasMatch()) {
        if (!source.trimmed().startsWith(QLatin1String("SELECT"), Qt::CaseInsensitive))
            throw VbError(err::SqlSyntax, QStringLiteral("Not a SHAPE command or a SELECT: ") + source);
        return source;
    }
    return m.captured(1);
}

ShapeRecordset::ShapeRecordset(std::shared_ptr<Data> data, std::vector<size_t> rows)
    : data_(std::move(data)), rows_(std::move(rows))
{
}

std::shared_ptr<ShapeRecordset::Data> ShapeRecordset::query(const QString& sql, const std::shared_ptr<Database>& db)
{
    sqlite3_stmt* st = nullptr;
    const QByteArray utf8 = translateSelect(sql).toUtf8();
    int rc = sqlite3_prepare_v2(db->handle(), utf8.constData(), int(utf8.size()), &st, nullptr);
    if (rc != SQLITE_OK)
        db->fail(rc, sql);
    auto data = std::make_shared<Data>();
    const int n = sqlite3_column_count(st);
    const std::vector<int> types = selectColumnTypes(st, &data->fields);
    while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
        std::vector<Value> row;
        row.reserve(size_t(n));
        for (int i = 0; i < n; ++i)
            row.push_back(Database::column(st, i, types[size_t(i)]));
        data->rows.push_back(std::move(row));
    }
    sqlite3_finalize(st);
    if (rc != SQLITE_DONE)
        db->fail(rc, sql);
    return data;
}

std::shared_ptr<ShapeRecordset> ShapeRecordset::open(const QString& source, const std::shared_ptr<Database>& db)
{
    const auto m = shapeCommand().match(source);
    if (!m.hasMatch()) {
        if (!source.trimmed().startsWith(QLatin1String("SELECT"), Qt::CaseInsensitive))
            throw VbError(err::SqlSyntax, QStringLiteral("Not a SHAPE command or a SELECT: ") + source);
        auto data = query(source, db);
        std::vector<size_t> rows(data->rows.size());
        for (size_t i = 0; i < rows.size(); ++i)
            rows[i] = i;
        return std::shared_ptr<ShapeRecordset>(new ShapeRecordset(data, std::move(rows)));
    }
    auto data = query(m.captured(1), db);
    data->name = m.captured(2);
    if (!m.captured(3).isEmpty()) {
        auto child = query(m.captured(3), db);
        child->name = m.captured(4);
        const int parentKey = QStringList(data->fields)
                                  .indexOf(QRegularExpression(
                                      QLatin1Char('^') + QRegularExpression::escape(m.captured(5)) + QLatin1Char('$'),
                                      QRegularExpression::CaseInsensitiveOption));
        const int childKey = QStringList(child->fields)
                                 .indexOf(QRegularExpression(
                                     QLatin1Char('^') + QRegularExpression::escape(m.captured(6)) + QLatin1Char('$'),
                                     QRegularExpression::CaseInsensitiveOption));
        if (parentKey < 0 || childKey < 0)
            throw VbError(err::ItemNotFound);
        // Keys match as the store compares text: without regard to case.
        QHash<QString, std::vector<size_t>> byKey;
        for (size_t i = 0; i < child->rows.size(); ++i) {
            const Value& k = child->rows[i][size_t(childKey)];
            if (!k.isNull())
                byKey[k.toText().toLower()].push_back(i);
        }
        data->childRows.resize(data->rows.size());
        for (size_t i = 0; i < data->rows.size(); ++i) {
            const Value& k = data->rows[i][size_t(parentKey)];
            if (!k.isNull())
                data->childRows[i] = byKey.value(k.toText().toLower());
        }
        data->child = child;
    }
    std::vector<size_t> rows(data->rows.size());
    for (size_t i = 0; i < rows.size(); ++i)
        rows[i] = i;
    return std::shared_ptr<ShapeRecordset>(new ShapeRecordset(data, std::move(rows)));
}

void ShapeRecordset::moveNext()
{
    if (eof())
        throw VbError(err::NoCurrentRecord);
    ++pos_;
}

int ShapeRecordset::fieldIndex(const QString& name) const
{
    for (int i = 0; i < data_->fields.size(); ++i)
        if (data_->fields[i].compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

const std::vector<Value>& ShapeRecordset::currentRow() const
{
    if (eof())
        throw VbError(err::NoCurrentRecord);
    return data_->rows[rows_[pos_]];
}

Value ShapeRecordset::field(const QString& name) const
{
    const int i = fieldIndex(name);
    if (i < 0)
        throw VbError(err::ItemNotFound);
    return currentRow()[size_t(i)];
}

Value ShapeRecordset::field(int i) const
{
    if (i < 0 || i >= fieldCount())
        throw VbError(err::ItemNotFound);
    return currentRow()[size_t(i)];
}

QString ShapeRecordset::chapterName() const
{
    return data_->child ? data_->child->name : QString();
}

std::shared_ptr<ShapeRecordset> ShapeRecordset::chapter(const QString& name) const
{
    if (!data_->child || data_->child->name.compare(name, Qt::CaseInsensitive) != 0)
        return nullptr;
    currentRow();
    return std::shared_ptr<ShapeRecordset>(new ShapeRecordset(data_->child, data_->childRows[rows_[pos_]]));
}
