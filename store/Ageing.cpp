#include "store/Ageing.h"

#include "platform/Platform.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Globals.h"
#include "store/Numbers.h"
#include "store/Recordset.h"
#include "store/ShapeRecordset.h"
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
    // The owing rows are read once and written by their place in the table: a walk that
    // updates as it goes would read the table again after every write.
    const auto owing = ShapeRecordset::open(
        QStringLiteral("SELECT rowid, DATE, BALANCE, BALANCE1, BALANCE2, BALANCE3 FROM invoices WHERE Balance > 0"),
        db);
    // One transaction, committed even when a row fails, so that each update stands as
    // if made alone; it spares a disk flush per invoice.
    int written = 0;
    Write_batch(db, [&] {
        sqlite3_stmt* st = db->prepare(
            QStringLiteral("UPDATE invoices SET BALANCE1 = ?1, BALANCE2 = ?2, BALANCE3 = ?3 WHERE rowid = ?4"));
        const double today = Value(platform::today()).toDouble();
        for (; !owing->eof(); owing->moveNext()) {
            const int column = rule(toInt16(today - owing->field(1).toDouble()));
            if (column == 0)
                continue;
            // Only an invoice whose figures move is written: most keep their period from one
            // day to the next, and every write costs the journal a page.
            const std::array<Value, 3> aged{column == 1 ? owing->field(2) : Value(Currency()),
                                            column == 2 ? owing->field(2) : Value(Currency()),
                                            column == 3 ? owing->field(2) : Value(Currency())};
            if (owing->field(3) == aged[0] && owing->field(4) == aged[1] && owing->field(5) == aged[2])
                continue;
            StatementScope scope(st);
            for (int i = 1; i <= 3; ++i)
                Database::bind(st, i, aged[i - 1]);
            sqlite3_bind_int64(st, 4, owing->field(0).toLong());
            const int rc = sqlite3_step(st);
            if (rc != SQLITE_DONE)
                db->fail(rc);
            ++written;
        }
    });
    return written;
}
