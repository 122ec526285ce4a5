#include "store/SelectWalk.h"

#include "store/Database.h"
#include "store/Errors.h"
#include "store/ShapeRecordset.h"

#include <sqlite3.h>

SelectWalk::SelectWalk(const QString& source, const std::shared_ptr<Database>& db, const QStringList& fields)
    : db_(db), sql_(translateSelect(narrowedSelect(parentSelect(source), fields)))
{
    const QByteArray utf8 = sql_.toUtf8();
    const int rc = sqlite3_prepare_v2(db_->handle(), utf8.constData(), int(utf8.size()), &st_, nullptr);
    if (rc != SQLITE_OK)
        db_->fail(rc, sql_);
    types_ = selectColumnTypes(st_, &names_);
}

SelectWalk::~SelectWalk()
{
    sqlite3_finalize(st_);
}

int SelectWalk::fieldIndex(const QString& name) const
{
    for (int i = 0; i < names_.size(); ++i)
        if (names_[i].compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

bool SelectWalk::next()
{
    const int rc = sqlite3_step(st_);
    if (rc == SQLITE_ROW)
        return true;
    if (rc != SQLITE_DONE)
        db_->fail(rc, sql_);
    return false;
}

Value SelectWalk::field(int i) const
{
    if (i < 0 || i >= int(types_.size()))
        throw VbError(err::ItemNotFound);
    return Database::column(st_, i, types_[size_t(i)]);
}
