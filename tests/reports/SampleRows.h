#pragma once
// A small fixed business for the report and export tests: customers, invoices with and
// without lines, items and debtors around the test's fixed date (22/11/2026).

#include "TestUi.h"

#include "shell/frmMain.h"

#include <memory>

// Starts the program with a default range of 01/01/2026 to 30/06/2026 (Present 0).
inline std::unique_ptr<frmMain> startWithRange(TestUi& ui, int present = 0)
{
    return startProgram(ui, {{"DefaultStart", QStringLiteral("01/01/2026")},
                             {"DefaultEnd", QStringLiteral("30/06/2026")},
                             {"Present", present}});
}

// One row per list of values, in the order of the columns named; a short list leaves the
// columns after it out (their defaults), where a Value() puts a Null.
inline void addRows(const QString& table, const QStringList& columns, const QList<QList<Value>>& rows)
{
    for (const QList<Value>& values : rows) {
        QMap<QString, Value> row;
        for (int i = 0; i < values.size(); ++i)
            row.insert(columns[i], values[i]);
        addRow(table, row);
    }
}

inline void addSampleRows()
{
    // The comma in the second name shifts the columns after it.
    addRows("Customers",
            {"CustID", "Date", "FirstName", "LastName", "Address", "Address2", "City", "address4", "Postcode", "Phone",
             "Mobile", "Email", "DelAddress1", "notes"},
            {{"CUS1", QDate(2026, 3, 4), "Ann", "Smith", "1 High St", "Oldtown", "Leeds", "Yorks", "LS1 1AA", "0113 1",
              "07700 1", "ann@x.uk", "Dock 4", "Good payer"},
             {"CUS2", QDate(2026, 6, 30), "Bo", "Café, Ltd"},
             {"CUS3", QDate(2025, 12, 31), "Early", "Bird"}});
    addRows(
        "Invoices",
        {"InvNo", "Date", "CustNo", "CustomerName", "Subtotal", "Total", "Balance", "Notes", "Vat", "Paid", "Phone",
         "SalesPerson"},
        {{"INV001", QDate(2026, 2, 10), "CUS1", "Ann Smith", 100.0, 117.5, 100.0, "one", 17.5, 17.5, "0113 1", "Jo"},
         {"INV002", QDate(2026, 6, 30), "CUS2", "Bo Café", 20.0, 20.0, 0.0, QString(), Value()},
         {"INV003", QDate(2025, 12, 1), "CUS1", "Ann Smith", 50.0, 50.0, 50.0},
         {"INV004", QDate(2026, 11, 1), "CUS2", "Bo Café", 30.0, 30.0, 30.0, "€ due"}});
    addRows("InvoiceD", {"InvNo", "PartID", "Qty", "Description", "Amount", "Total"},
            {{"INV001", "P1", 2, "Widget", 25.0, 50.0},
             {"INV003", "P1", 1, "Widget", 50.0, 50.0},
             {"INV001", "P2", 1, "Gadget", 12.345, 12.345},
             {"INV001", "P1", 3, "Widget", 25.0, 75.0}});
    addRows("Parts", {"ID", "ShortDesc", "Desc", "Price", "Taxable"},
            {{"P1", "Widget", "A widget", 25.0, 1}, {"P2", "Gadget", "A gadget", 12.5, Value()}});
}
