#pragma once
// What the report chooser and the export share: the six lists and their sources, and the
// window's list and date range.

#include <QDate>
#include <QString>
#include <array>

class QDateEdit;
class QDialog;
class QGridLayout;
class QListWidget;

struct ListEntry {
    const char* text;
    const char* routine;  // the routine's name, also the one a failure reports
    const char* fileName; // the export's default file name
};
// In list order: the two customer lists, the two invoice lists, items, debtors.
const std::array<ListEntry, 6>& listEntries();

// The record sources. Dates go in month first whatever the system's date order, and
// both ends are included.
QString Customers_source(const QDate& start, const QDate& end);
QString Invoices_source(const QDate& start, const QDate& end);
QString Invoice_lines_source(const QDate& start, const QDate& end);
QString Items_source();
QString Debtors_source();

// The list and the two date pickers, with their labels, in the grid's first rows. The
// list holds the six entries with the first selected; the start date is the default
// start, the end today's date or the default end, as the settings say.
struct RangeControls {
    QListWidget* list1;
    QDateEdit* DTPicker1;
    QDateEdit* DTPicker2;
};
RangeControls buildRangeControls(QDialog* window, QGridLayout* grid);
