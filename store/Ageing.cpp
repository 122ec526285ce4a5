#include "store/Ageing.h"

#include "platform/Platform.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Globals.h"
#include "store/Numbers.h"
#include "store/Recordset.h"
#include "store/Value.h"

#include <array>
#include <sqlite3.h>

int reportAgeing(int days)
{
    if (days < 0)
        return 0;
    return days <= 30 ? 1 : days <= 60 ? 2 : 3;
}

// Days 31 and 60 write nothing here: the gaps stay as users have always had them.
int exportAgeing(int days)
{
    if (days < 0 || days == 31 || days == 60)
        return 0;
    return days <= 30 ? 1 : days < 60 ? 2 : 3;
}

int Age_invoices(int (*rule)(int days))
{
    const auto db = Database::open(dataSourceOf(ConnectionString));
    // The owing rows are read in one walk, and only the invoices whose figures move are
    // kept to be written after it: most keep their period from one day to the next, and
    // every write costs the journal a page.
    struct Change {
        qint64 rowid;
        std::array<Value, 3> aged;
    };
    std::vector<Change> changes;
    // A row that fails the walk (a Null date) ends it; the changes found before it are
    // still written, as a walk writing as it went would have left them.
    std::exception_ptr failure;
    try {
        sqlite3_stmt* st = db->prepare(QStringLiteral(
            "SELECT rowid, DATE, BALANCE, BALANCE1, BALANCE2, BALANCE3 FROM invoices WHERE Balance > 0"));
        StatementScope scope(st);
        const double today = Value(platform::today()).toDouble();
        const int money = int(ColumnType::Currency);
        int rc;
        while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
            const int column = rule(toInt16(today - Database::column(st, 1, int(ColumnType::Date)).toDouble()));
            if (column == 0)
                continue;
            const Value balance = Database::column(st, 2, money);
            const std::array<Value, 3> aged{column == 1 ? balance : Value(Currency()),
                                            column == 2 ? balance : Value(Currency()),
                                            column == 3 ? balance : Value(Currency())};
            if (Database::column(st, 3, money) == aged[0] && Database::column(st, 4, money) == aged[1] &&
                Database::column(st, 5, money) == aged[2])
                continue;
            changes.push_back({sqlite3_column_int64(st, 0), aged});
        }
        if (rc != SQLITE_DONE)
            db->fail(rc);
    } catch (...) {
        failure = std::current_exception();
    }
    // One transaction, committed even when a row fails, so that each update stands as
    // if made alone; it spares a disk flush per invoice.
    int written = 0;
    Write_batch(db, [&] {
        sqlite3_stmt* st = db->prepare(
            QStringLiteral("UPDATE invoices SET BALANCE1 = ?1, BALANCE2 = ?2, BALANCE3 = ?3 WHERE rowid = ?4"));
        for (const Change& change : changes) {
            StatementScope scope(st);
            for (int i = 1; i <= 3; ++i)
                Database::bind(st, i, change.aged[size_t(i - 1)]);
            sqlite3_bind_int64(st, 4, change.rowid);
            const int rc = sqlite3_step(st);
            if (rc != SQLITE_DONE)
                db->fail(rc);
            db->touched();
            ++written;
        }
    });
    if (failure)
        std::rethrow_exception(failure);
    return written;
}
