#include "customers/frmCustomer.h"

#include "customers/CustomerRows.h"
#include "customers/frmAddCust.h"
#include "help/Help_frm.h"
#include "platform/Activation.h"
#include "platform/Platform.h"
#include "platform/Window.h"
#include "store/Connection.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/ListRules.h"
#include "store/ListView.h"
#include "store/ListWindow.h"
#include "store/Recordset.h"

using namespace platform;

frmCustomer::frmCustomer(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmCustomer"));
    setWindowTitle(QStringLiteral("Customers"));
    resize(820, 520);
    ListWindowPlan plan;
    plan.buttons = recordButtons("View");
    plan.onButton = [this](int place) { Toolbar1_ButtonClick(place); };
    plan.listName = "Cust_lst";
    plan.headings = {QStringLiteral("Cust ID"), QStringLiteral("Customer Name"), QStringLiteral("Phone"),
                     QStringLiteral("Address")};
    plan.searchName = "Search_txt";
    plan.onOpen = [this] { OpenRow(); };
    const ListWindow w = buildListWindow(this, plan);
    Cust_lst = w.list;
    Cust_lst->setColumnWidth(0, 110);
    Cust_lst->setColumnWidth(1, 200);
    Cust_lst->setColumnWidth(2, 120);

    ListConfig config;
    config.furtherColumns = 3;
    config.foundLabel = w.found;
    rules_ = new ListRules(Cust_lst, config, objectName());
    rules_->attachSearch(w.search, w.searchButton, true);
    rules_->setSource(customerRows(), QStringLiteral("CUSTID"));
    onActivate(this, [this] { rules_->focusList(); });
    centreWindow(this);
    Load_list();
}

void frmCustomer::Load_list()
{
    BusyTrap(objectName(), "Load_list", [this] {
        CustomerChanged = 0;
        rules_->loadRows();
    });
}

void frmCustomer::OpenRow()
{
    const int row = rules_->selected();
    if (row < 0)
        return;
    NewCustomerMode = 0;
    SelectedCustID = Cust_lst->text(row, 0);
    frmAddCust window(this);
    showModal(window);
    if (CustomerChanged == 1)
        ChangedCust();
}

void frmCustomer::ChangedCust()
{
    BusyTrap(objectName(), "ChangedCust", [this] {
        const int row = rules_->selected();
        rules_->refreshSelected(row >= 0 ? Cust_lst->text(row, 0) : QString());
    });
}

void frmCustomer::NewCustomer()
{
    BusyTrap(objectName(), "NewCustomer", [this] { rules_->addRecord(LastCustID.trimmed()); });
}

void frmCustomer::Delete_item()
{
    Trap(objectName(), "Delete_item", [this] {
        CustomerDeleted = 0;
        const int answer = MsgBox(QStringLiteral("Are you sure you want to delete this customer?"),
                                  vbYesNo + vbQuestion, QStringLiteral("Delete?"));
        const int row = rules_->selected();
        if (answer == vbNo || row < 0)
            return;
        const QString id = Cust_lst->text(row, 0);
        Recordset customers;
        customers.open(QStringLiteral("Customers"), ConnectionString, Recordset::adLockPessimistic);
        customers.setIndex(QStringLiteral("CUSTID"));
        if (customers.recordCount() == 0)
            return;
        // Only this customer's invoices are read, through the index; the count compares
        // the number exactly, as a walk of the whole table would.
        int count = 0;
        Recordset invoices;
        invoices.open(QStringLiteral("invoices"), ConnectionString, Recordset::adLockReadOnly);
        invoices.setIndex(QStringLiteral("CUSTNO"));
        for (invoices.seek(id); !invoices.eof(); invoices.moveNext()) {
            const QString custNo = Null_to_text(invoices.field(QStringLiteral("CustNo")));
            if (custNo.compare(id, Qt::CaseInsensitive) != 0)
                break;
            if (custNo == id)
                ++count;
        }
        invoices.close();
        if (count > 1) {
            MsgBox(QStringLiteral("Customer ") + id + QStringLiteral(" cannot be deleted, as it has ") +
                       QString::number(count) +
                       QStringLiteral(
                           " invoices attached! Please delete these invoices first before deleting this customer."),
                   vbExclamation, QStringLiteral("Cannot Delete!"));
        } else if (count == 1) {
            MsgBox(QStringLiteral("Customer ") + id + QStringLiteral(" cannot be deleted, as it has ") +
                       QStringLiteral("1") +
                       QStringLiteral(
                           " invoice attached! Please delete this invoice first before deleting this customer."),
                   vbExclamation, QStringLiteral("Cannot Delete!"));
        } else {
            customers.seek(id);
            customers.deleteRecord();
            CustomerDeleted = 1;
            MsgBox(QStringLiteral("Customer ") + id + QStringLiteral(" has been deleted!"), vbInformation,
                   QStringLiteral("Customer Deleted!"));
        }
        customers.close();
    });
}

void frmCustomer::Toolbar1_ButtonClick(int place)
{
    Trap(objectName(), "ToolbarButton", [&] {
        switch (place) {
        case 2: {
            NewCustomerMode = 1;
            frmAddCust window(this);
            showModal(window);
            if (CustomerChanged == 1) {
                if (!LastCustID.trimmed().isEmpty())
                    NewCustomer();
                else
                    Load_list();
            }
            break;
        }
        case 4:
            Delete_item();
            if (CustomerDeleted == 1)
                rules_->removeSelected();
            break;
        case 6:
            OpenRow();
            break;
        case 8:
            Show_help(this, QStringLiteral("customers.htm"));
            break;
        default:
            break;
        }
    });
}
