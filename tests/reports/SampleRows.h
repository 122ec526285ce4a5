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

inline void addSampleRows()
{
    const QString customers = QStringLiteral("Customers"), invoices = QStringLiteral("Invoices");
    addRow(customers, {{"CustID", QStringLiteral("CUS1")},
                       {"Date", QDate(2026, 3, 4)},
                       {"FirstName", QStringLiteral("Ann")},
                       {"LastName", QStringLiteral("Smith")},
                       {"Address", QStringLiteral("1 High St")},
                       {"Address2", QStringLiteral("Oldtown")},
                       {"City", QStringLiteral("Leeds")},
                       {"address4", QStringLiteral("Yorks")},
                       {"Postcode", QStringLiteral("LS1 1AA")},
                       {"Phone", QStringLiteral("0113 1")},
                       {"Mobile", QStringLiteral("07700 1")},
                       {"Email", QStringLiteral("ann@x.uk")},
                       {"DelAddress1", QStringLiteral("Dock 4")},
                       {"notes", QStringLiteral("Good payer")}});
    // The comma in the name shifts the columns after it.
    addRow(customers, {{"CustID", QStringLiteral("CUS2")},
                       {"Date", QDate(2026, 6, 30)},
                       {"FirstName", QStringLiteral("Bo")},
                       {"LastName", QStringLiteral("Café, Ltd")}});
    addRow(customers, {{"CustID", QStringLiteral("CUS3")},
                       {"Date", QDate(2025, 12, 31)},
                       {"FirstName", QStringLiteral("Early")},
                       {"LastName", QStringLiteral("Bird")}});
    addRow(invoices, {{"InvNo", QStringLiteral("INV001")},
                      {"Date", QDate(2026, 2, 10)},
                      {"CustNo", QStringLiteral("CUS1")},
                      {"CustomerName", QStringLiteral("Ann Smith")},
                      {"Phone", QStringLiteral("0113 1")},
                      {"Subtotal", 100.0},
                      {"Vat", 17.5},
                      {"Total", 117.5},
                      {"Paid", 17.5},
                      {"Balance", 100.0},
                      {"Notes", QStringLiteral("one")},
                      {"SalesPerson", QStringLiteral("Jo")}});
    addRow(invoices, {{"InvNo", QStringLiteral("INV002")},
                      {"Date", QDate(2026, 6, 30)},
                      {"CustNo", QStringLiteral("CUS2")},
                      {"CustomerName", QStringLiteral("Bo Café")},
                      {"Subtotal", 20.0},
                      {"Vat", Value()},
                      {"Total", 20.0},
                      {"Balance", 0.0},
                      {"Notes", QString()}});
    addRow(invoices, {{"InvNo", QStringLiteral("INV003")},
                      {"Date", QDate(2025, 12, 1)},
                      {"CustNo", QStringLiteral("CUS1")},
                      {"CustomerName", QStringLiteral("Ann Smith")},
                      {"Subtotal", 50.0},
                      {"Total", 50.0},
                      {"Balance", 50.0}});
    addRow(invoices, {{"InvNo", QStringLiteral("INV004")},
                      {"Date", QDate(2026, 11, 1)},
                      {"CustNo", QStringLiteral("CUS2")},
                      {"CustomerName", QStringLiteral("Bo Café")},
                      {"Subtotal", 30.0},
                      {"Total", 30.0},
                      {"Balance", 30.0},
                      {"Notes", QStringLiteral("€ due")}});
    const QString lines = QStringLiteral("InvoiceD");
    addRow(lines, {{"InvNo", QStringLiteral("INV001")},
                   {"PartID", QStringLiteral("P1")},
                   {"Qty", 2},
                   {"Description", QStringLiteral("Widget")},
                   {"Amount", 25.0},
                   {"Total", 50.0}});
    addRow(lines, {{"InvNo", QStringLiteral("INV003")},
                   {"PartID", QStringLiteral("P1")},
                   {"Qty", 1},
                   {"Description", QStringLiteral("Widget")},
                   {"Amount", 50.0},
                   {"Total", 50.0}});
    addRow(lines, {{"InvNo", QStringLiteral("INV001")},
                   {"PartID", QStringLiteral("P2")},
                   {"Qty", 1},
                   {"Description", QStringLiteral("Gadget")},
                   {"Amount", 12.345},
                   {"Total", 12.345}});
    addRow(lines, {{"InvNo", QStringLiteral("INV001")},
                   {"PartID", QStringLiteral("P1")},
                   {"Qty", 3},
                   {"Description", QStringLiteral("Widget")},
                   {"Amount", 25.0},
                   {"Total", 75.0}});
    addRow(QStringLiteral("Parts"), {{"ID", QStringLiteral("P1")},
                                     {"ShortDesc", QStringLiteral("Widget")},
                                     {"Desc", QStringLiteral("A widget")},
                                     {"Price", 25.0},
                                     {"Taxable", 1}});
    addRow(QStringLiteral("Parts"), {{"ID", QStringLiteral("P2")},
                                     {"ShortDesc", QStringLiteral("Gadget")},
                                     {"Desc", QStringLiteral("A gadget")},
                                     {"Price", 12.5},
                                     {"Taxable", Value()}});
}
