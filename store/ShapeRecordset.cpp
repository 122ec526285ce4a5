#include "store/ShapeRecordset.h"

#include "store/Database.h"
#include "store/Errors.h"
#include "store/Schema.h"

#include <QHash>
#include <QRegularExpression>
#include <cstring>
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

QString narrowedSelect(const QString& select, const QStringList& fields)
{
    static const QRegularExpression star(QStringLiteral("^\\s*SELECT\\s+(\\*)\\s+FROM\\s+(\\w+)"),
                                         QRegularExpression::CaseInsensitiveOption);
    const auto m = star.match(select);
    const TableDef* table = m.hasMatch() ? schemaTable(m.captured(2)) : nullptr;
    if (!table)
        return select;
    QStringList kept;
    for (const QString& field : fields) {
        const int column = table->columnIndex(field);
        const QString quoted = column < 0 ? QString() : QStringLiteral("\"%1\"").arg(field);
        if (column >= 0 && !kept.contains(quoted, Qt::CaseInsensitive))
            kept << quoted;
    }
    if (kept.isEmpty())
        return select;
    return select.left(m.capturedStart(1)) + kept.join(QStringLiteral(", ")) + select.mid(m.capturedEnd(1));
}

namespace
{

constexpr qsizetype TextBlock = 1 << 20;

} // namespace

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
    data->types = selectColumnTypes(st, &data->fields);
    while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
        for (int i = 0; i < n; ++i) {
            Cell c;
            switch (sqlite3_column_type(st, i)) {
            case SQLITE_NULL:
                c.length = NullCell;
                break;
            case SQLITE_INTEGER: {
                const qint64 number = sqlite3_column_int64(st, i);
                std::memcpy(c.words, &number, sizeof number);
                c.length = IntegerCell;
                break;
            }
            case SQLITE_FLOAT: {
                const double real = sqlite3_column_double(st, i);
                std::memcpy(c.words, &real, sizeof real);
                c.length = RealCell;
                break;
            }
            default: {
                const char* text = reinterpret_cast<const char*>(sqlite3_column_text(st, i));
                c.length = sqlite3_column_bytes(st, i);
                if (data->texts.empty() || data->texts.back().size() + c.length > TextBlock) {
                    data->texts.emplace_back();
                    data->texts.back().reserve(std::max<qsizetype>(TextBlock, c.length));
                }
                c.words[0] = quint32(data->texts.size() - 1);
                c.words[1] = quint32(data->texts.back().size());
                data->texts.back().append(text, c.length);
                break;
            }
            }
            data->cells.push_back(c);
        }
    }
    sqlite3_finalize(st);
    if (rc != SQLITE_DONE)
        db->fail(rc, sql);
    return data;
}

std::shared_ptr<ShapeRecordset> ShapeRecordset::open(const QString& source, const std::shared_ptr<Database>& db,
                                                     const QStringList& fields)
{
    const auto m = shapeCommand().match(source);
    if (!m.hasMatch()) {
        if (!source.trimmed().startsWith(QLatin1String("SELECT"), Qt::CaseInsensitive))
            throw VbError(err::SqlSyntax, QStringLiteral("Not a SHAPE command or a SELECT: ") + source);
        auto data = query(narrowedSelect(source, fields), db);
        std::vector<size_t> rows(data->rowCount());
        for (size_t i = 0; i < rows.size(); ++i)
            rows[i] = i;
        return std::shared_ptr<ShapeRecordset>(new ShapeRecordset(data, std::move(rows)));
    }
    // The keys that relate the levels are read too, but only when the reader narrows at all.
    const auto withKey = [&](const QString& key) { return fields.isEmpty() ? fields : fields + QStringList{key}; };
    auto data = query(narrowedSelect(m.captured(1), withKey(m.captured(5))), db);
    data->name = m.captured(2);
    if (!m.captured(3).isEmpty()) {
        auto child = query(narrowedSelect(m.captured(3), withKey(m.captured(6))), db);
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
        QHash<QString, std::vector<quint32>> byKey;
        for (size_t i = 0; i < child->rowCount(); ++i) {
            const Value k = child->value(i, childKey);
            if (!k.isNull())
                byKey[k.toText().toLower()].push_back(quint32(i));
        }
        data->childStart.reserve(data->rowCount() + 1);
        data->childStart.push_back(0);
        for (size_t i = 0; i < data->rowCount(); ++i) {
            const Value k = data->value(i, parentKey);
            if (!k.isNull())
                if (const auto found = byKey.constFind(k.toText().toLower()); found != byKey.cend())
                    data->childRows.insert(data->childRows.end(), found->begin(), found->end());
            data->childStart.push_back(quint32(data->childRows.size()));
        }
        data->child = child;
    }
    std::vector<size_t> rows(data->rowCount());
    for (size_t i = 0; i < rows.size(); ++i)
        rows[i] = i;
    return std::shared_ptr<ShapeRecordset>(new ShapeRecordset(data, std::move(rows)));
}

Value ShapeRecordset::Data::value(size_t row, int field) const
{
    const Cell& c = cells[row * size_t(fields.size()) + size_t(field)];
    const int type = types[size_t(field)];
    switch (c.length) {
    case NullCell:
        return Value();
    case IntegerCell: {
        qint64 number;
        std::memcpy(&number, c.words, sizeof number);
        return Database::decode(SQLITE_INTEGER, number, 0, nullptr, 0, type);
    }
    case RealCell: {
        double real;
        std::memcpy(&real, c.words, sizeof real);
        return Database::decode(SQLITE_FLOAT, 0, real, nullptr, 0, type);
    }
    default:
        return Database::decode(SQLITE_TEXT, 0, 0, texts[c.words[0]].constData() + c.words[1], c.length, type);
    }
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

size_t ShapeRecordset::currentRow() const
{
    if (eof())
        throw VbError(err::NoCurrentRecord);
    return rows_[pos_];
}

Value ShapeRecordset::field(const QString& name) const
{
    const int i = fieldIndex(name);
    if (i < 0)
        throw VbError(err::ItemNotFound);
    return data_->value(currentRow(), i);
}

Value ShapeRecordset::field(int i) const
{
    if (i < 0 || i >= fieldCount())
        throw VbError(err::ItemNotFound);
    return data_->value(currentRow(), i);
}

QString ShapeRecordset::chapterName() const
{
    return data_->child ? data_->child->name : QString();
}

std::shared_ptr<ShapeRecordset> ShapeRecordset::chapter(const QString& name) const
{
    if (!data_->child || data_->child->name.compare(name, Qt::CaseInsensitive) != 0)
        return nullptr;
    const size_t row = currentRow();
    return std::shared_ptr<ShapeRecordset>(
        new ShapeRecordset(data_->child, std::vector<size_t>(data_->childRows.begin() + data_->childStart[row],
                                                             data_->childRows.begin() + data_->childStart[row + 1])));
}
