#include "invoices/frmInvoice.h"

#include "help/Help_frm.h"
#include "invoices/frmAddInv.h"
#include "platform/Activation.h"
#include "platform/Platform.h"
#include "store/Connection.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/Invoices.h"
#include "store/ListRules.h"
#include "store/ListView.h"
#include "store/ListWindow.h"
#include "store/Opener.h"
#include "store/Recordset.h"

#include <QAction>
#include <QPushButton>

using namespace platform;

namespace
{

enum Column { InvNo, Date, CustId, CustName, Amount, Balance, Notes, Date2, Columns };

// A number in so many digits, leading zeros kept: the list formats two dates a row, for
// every row of a sort or a search.
void putDigits(QChar*& to, int value, int digits)
{
    for (int i = digits - 1; i >= 0; --i, value /= 10)
        to[i] = QChar(u'0' + value % 10);
    to += digits;
}

// "dd/mm/yyyy", and the "yyyymmdd" that sorts the dates.
std::pair<QString, QString> dateTexts(const QDate& date)
{
    if (date.year() < 1 || date.year() > 9999)
        return {QString::asprintf("%02d/%02d/%04d", date.day(), date.month(), date.year()),
                QString::asprintf("%04d%02d%02d", date.year(), date.month(), date.day())};
    QString shown(10, u'/'), key(8, Qt::Uninitialized);
    QChar* to = shown.data();
    putDigits(to, date.day(), 2);
    ++to;
    putDigits(to, date.month(), 2);
    ++to;
    putDigits(to, date.year(), 4);
    to = key.data();
    putDigits(to, date.year(), 4);
    putDigits(to, date.month(), 2);
    putDigits(to, date.day(), 2);
    return {shown, key};
}

// The columns an invoice record fills by itself; the customer's two are left to the caller.
QStringList invoiceCells(const Record& rs)
{
    QStringList cells(Columns);
    const Value value = rs.field(QStringLiteral("DATE"));
    const QDate date = value.isNull() ? QDate() : value.toDate().date();
    cells[InvNo] = rs.field(QStringLiteral("INVNO")).toText();
    if (date.isValid()) {
        std::tie(cells[Date], cells[Date2]) = dateTexts(date);
    }
    cells[Amount] = Format_amount(Null_to_zero(rs.field(QStringLiteral("TOTAL"))), 7, 2);
    cells[Balance] = Format_amount(Null_to_zero(rs.field(QStringLiteral("BALANCE"))), 7, 2);
    cells[Notes] = Null_to_text(rs.field(QStringLiteral("NOTES")));
    return cells;
}

// The customer of the invoice as its row is corrected: the ID and the name last name
// first, when the seek reaches that very customer.
bool customerCells(Recordset& customers, const QString& custNo, QStringList& cells)
{
    if (customers.recordCount() <= 0)
        return false;
    customers.seek(custNo);
    if (customers.eof() || Null_to_text(customers.field(QStringLiteral("CUSTID"))) != custNo)
        return false;
    cells[CustId] = customers.field(QStringLiteral("CUSTID")).toText();
    cells[CustName] = Null_to_text(customers.field(QStringLiteral("LASTNAME"))) + QLatin1Char(' ') +
                      Null_to_text(customers.field(QStringLiteral("FIRSTNAME")));
    return true;
}

// A row as the list reads it: the customer as the invoice names it.
QStringList listedInvoice(const Record& rs)
{
    QStringList cells = invoiceCells(rs);
    cells[CustId] = Null_to_text(rs.field(QStringLiteral("CUSTNO")));
    cells[CustName] = Null_to_text(rs.field(QStringLiteral("CustomerName")));
    return cells;
}

} // namespace

frmInvoice::frmInvoice(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmInvoice"));
    onActivate(this, [this] { Form_Activate(); });
    setWindowTitle(QStringLiteral("Invoices"));
    resize(900, 540);
    ListWindowPlan plan;
    plan.buttons = recordButtons("Edit");
    plan.onButton = [this](int place) { Toolbar1_ButtonClick(place); };
    plan.listName = "Inv_lst";
    plan.headings = {QStringLiteral("Invoice No."),   QStringLiteral("Date"),   QStringLiteral("Cust ID."),
                     QStringLiteral("Customer Name"), QStringLiteral("Amount"), QStringLiteral("Balance"),
                     QStringLiteral("Notes"),         QStringLiteral("Date2")};
    plan.searchName = "Search_txt";
    plan.onOpen = [this] { OpenInvoice(); };
    const ListWindow w = buildListWindow(this, plan);
    w.exit->setObjectName(QStringLiteral("Command1"));
    Inv_lst = w.list;
    const int widths[] = {110, 90, 100, 200, 90, 90, 160};
    for (int c = 0; c < Date2; ++c)
        Inv_lst->setColumnWidth(c, widths[c]);
    Inv_lst->setColumnWidth(Date2, 0); // sorts the dates, never shows

    ListConfig config;
    config.replacedColumn = Date;
    config.replacementColumn = Date2;
    config.furtherColumns = 4; // the date, the customer and the amount, not balance or notes
    config.foundLabel = w.found;
    config.moneyColumns = {Amount, Balance};
    rules_ = new ListRules(Inv_lst, config, objectName());
    rules_->attachSearch(w.search, w.searchButton, false);
    rules_->setSource({QStringLiteral("Invoices"),
                       {"INVNO", "DATE", "TOTAL", "BALANCE", "NOTES", "CUSTNO", "CustomerName"},
                       {"INVNO"},
                       listedInvoice},
                      QStringLiteral("INVNO"));

    // Beside the Part's commands, on the list's own menu: the selected invoice as an e-invoice.
    auto* eInvoice = new QAction(QStringLiteral("Save as e-invoice\u2026"), Inv_lst);
    eInvoice->setObjectName(QStringLiteral("mnuEInvoice"));
    Inv_lst->addAction(eInvoice);
    Inv_lst->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(eInvoice, &QAction::triggered, this, &frmInvoice::SaveEInvoice);

    InvoiceSaved = 0;
    Load_list();
}

// Each time the window comes to the front.
void frmInvoice::Form_Activate()
{
    rules_->focusList();
}

void frmInvoice::Load_list()
{
    BusyTrap(objectName(), "Load_list", [this] { rules_->loadRows(); });
}

bool Add_invoice(QWidget* parent)
{
    const int answer = MsgBox(QStringLiteral("Do you want to add this invoice to a new customer"),
                              vbYesNoCancel + vbQuestion, QStringLiteral("Add to New Customer"));
    if (answer == vbYes) {
        NewCustomerMode = 1;
        Open_window(WindowName::frmAddCust, parent);
    } else if (answer == vbNo) {
        Open_window(WindowName::frmsearchCust, parent);
    }
    return answer == vbYes || answer == vbNo;
}

void frmInvoice::Toolbar1_ButtonClick(int place)
{
    switch (place) {
    case 2:
        if (!Add_invoice(this))
            return;
        if (InvoiceSaved == 1) {
            if (!LastInvoiceNo.trimmed().isEmpty())
                NewInvoice();
            else
                Load_list();
        }
        break;
    case 4:
        DeleteInvoice();
        break;
    case 6:
        OpenInvoice();
        break;
    case 8:
        Show_help(this, QStringLiteral("Invoice.htm"));
        break;
    default:
        break;
    }
}

// The selected invoice handed over to the invoice window; false with none selected.
bool frmInvoice::handOverSelected()
{
    const int row = rules_->selected();
    if (row < 0)
        return false;
    OpenInvoiceNo = Inv_lst->text(row, InvNo);
    EditInvoiceMode = 1;
    return true;
}

// A double click, Enter on a row, or "Edit".
void frmInvoice::OpenInvoice()
{
    if (!handOverSelected())
        return;
    {
        frmAddInv window(this);
        showModal(window);
    }
    if (InvoiceSaved == 1)
        Changed_Inv();
}

// The selected invoice through its window, unseen, as the window saves it.
void frmInvoice::SaveEInvoice()
{
    if (!handOverSelected())
        return;
    frmAddInv window(this);
    window.Save_einvoice();
}

void frmInvoice::DeleteInvoice()
{
    if (rules_->selected() < 0) {
        MsgBox(QStringLiteral("No row selected. Please try again."), vbExclamation, QStringLiteral("Please try again"));
        Busy_off();
        return;
    }
    if (MsgBox(QStringLiteral("Are you sure you want to delete this invoice"), vbYesNo + vbQuestion,
               QStringLiteral("Confirm")) != vbYes)
        return;
    DeleteNo = Inv_lst->text(rules_->selected(), InvNo);
    Delete_item();
    rules_->removeSelected();
}

void frmInvoice::Delete_item()
{
    Trap(objectName(), "Delete_item", [this] { Delete_invoice(DeleteNo); });
}

void frmInvoice::NewInvoice()
{
    Trap(objectName(), "NewInvoice", [this] {
        Recordset invoices, customers;
        invoices.open(QStringLiteral("Invoices"), ConnectionString, Recordset::adLockReadOnly);
        invoices.setIndex(QStringLiteral("INVNO"));
        customers.open(QStringLiteral("Customers"), ConnectionString, Recordset::adLockReadOnly);
        customers.setIndex(QStringLiteral("CUSTID"));
        int row = -1;
        if (invoices.recordCount() > 0) {
            invoices.seek(LastInvoiceNo.trimmed());
            if (!invoices.eof()) {
                QStringList cells = invoiceCells(invoices);
                customerCells(customers, Null_to_text(invoices.field(QStringLiteral("CUSTNO"))), cells);
                row = rules_->addRow(cells);
            }
        }
        invoices.close();
        customers.close();
        if (row >= 0) {
            Inv_lst->clearSelection();
            rules_->select(row);
        }
        LastInvoiceNo = QString();
    });
}

void frmInvoice::Changed_Inv()
{
    Trap(objectName(), "Changed_Inv", [this] {
        const int row = rules_->selected();
        Recordset invoices, customers;
        invoices.open(QStringLiteral("Invoices"), ConnectionString, Recordset::adLockReadOnly);
        invoices.setIndex(QStringLiteral("INVNO"));
        customers.open(QStringLiteral("Customers"), ConnectionString, Recordset::adLockReadOnly);
        customers.setIndex(QStringLiteral("CUSTID"));
        if (row >= 0 && invoices.recordCount() > 0) {
            invoices.seek(Inv_lst->text(row, InvNo));
            if (!invoices.eof()) {
                QStringList shown(Columns);
                for (int c = 0; c < Columns; ++c)
                    shown[c] = Inv_lst->text(row, c);
                QStringList cells = invoiceCells(invoices);
                for (int c : {InvNo, Date, Amount, Balance})
                    shown[c] = cells[c];
                if (customerCells(customers, Null_to_text(invoices.field(QStringLiteral("CUSTNO"))), cells)) {
                    shown[CustId] = cells[CustId];
                    shown[CustName] = cells[CustName];
                }
                // An emptied note, and the sort key of a changed date, stay until the
                // list is read again.
                if (!cells[Notes].isEmpty())
                    shown[Notes] = cells[Notes];
                rules_->setRow(row, shown);
            }
        }
        invoices.close();
        customers.close();
        if (row >= 0)
            rules_->select(row);
    });
}
