#include "reports/ReportList.h"

#include "platform/DateBox.h"
#include "platform/Platform.h"
#include "store/Connection.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/Recordset.h"
#include "store/ShapeRecordset.h"

#include <QDateEdit>
#include <QDialog>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QScreen>

const std::array<ListEntry, 6>& listEntries()
{
    static const std::array<ListEntry, 6> entries{{
        {"Customers - Summary", "Summary_Customers", "SumCustomers"},
        {"Customers - Detailed", "Detailed_Customers", "DetailCustomers"},
        {"Invoices - Summary", "Invoices", "SumInvoices"},
        {"Invoices and Invoice Details", "Invoice_Details", "DetailInvoices"},
        {"Items", "Parts", "Items"},
        {"Debtors", "Debtors", "Debtors"},
    }};
    return entries;
}

namespace
{

QString between(const char* table, const QDate& start, const QDate& end)
{
    const QString month = QStringLiteral("MM/dd/yyyy");
    return QStringLiteral("SHAPE {SELECT * FROM %1 where Date BETWEEN #").arg(QLatin1String(table)) +
           start.toString(month) + QStringLiteral("# and #") + end.toString(month) + QStringLiteral("#} ");
}

} // namespace

QString Customers_source(const QDate& start, const QDate& end)
{
    return between("customers", start, end) + QStringLiteral("as details");
}

QString Invoices_source(const QDate& start, const QDate& end)
{
    return between("invoices", start, end) + QStringLiteral("as details");
}

QString Invoice_lines_source(const QDate& start, const QDate& end)
{
    return between("invoices", start, end) + QStringLiteral("as main ") +
           QStringLiteral("APPEND ({SELECT * FROM invoiceD} as Details ") +
           QStringLiteral("RELATE 'invno' TO 'invno')  ");
}

QString Items_source()
{
    return QStringLiteral("SHAPE {SELECT * FROM parts} as details");
}

QString Debtors_source()
{
    return QStringLiteral("SHAPE {SELECT * FROM invoices where balance > 0} as details");
}

namespace
{

// The stored dates are texts in our short date form. One that isn't a date (a settings
// row made by hand) leaves the picker on today rather than closing the program.
QDate settingDate(const QString& text)
{
    try {
        return Value(text).toDate().date();
    } catch (const VbError&) {
        return platform::today();
    }
}

} // namespace

RangeControls buildRangeControls(QDialog* window, QGridLayout* grid)
{
    RangeControls c;
    c.list1 = new QListWidget(window);
    c.list1->setObjectName(QStringLiteral("list1"));
    for (const ListEntry& e : listEntries())
        c.list1->addItem(QLatin1String(e.text));
    c.list1->setCurrentRow(0);
    auto picker = [&](const char* name, const char* label, const char* caption, int row) {
        auto* l = new QLabel(QLatin1String(caption), window);
        l->setObjectName(QLatin1String(label));
        auto* p = new platform::DateBox(window);
        p->setObjectName(QLatin1String(name));
        p->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
        p->setCalendarPopup(true);
        grid->addWidget(l, row, 1);
        grid->addWidget(p, row, 2);
        return p;
    };
    grid->addWidget(c.list1, 0, 0, 3, 1);
    c.DTPicker1 = picker("DTPicker1", "From_lbl", "From:", 0);
    c.DTPicker2 = picker("DTPicker2", "to_lbl", "To:", 1);
    c.DTPicker1->setDate(settingDate(settings.DefaultStart));
    c.DTPicker2->setDate(settings.Present == 1 ? platform::today() : settingDate(settings.DefaultEnd));
    window->adjustSize();
    if (const QScreen* screen = window->screen())
        window->move(screen->availableGeometry().center() - window->rect().center());
    return c;
}
