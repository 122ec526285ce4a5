#include "customers/frmsearchCust.h"

#include "platform/Activation.h"
#include "platform/Platform.h"
#include "store/Connection.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/ListRules.h"
#include "store/ListView.h"
#include "store/ListWindow.h"
#include "store/Opener.h"
#include "store/Recordset.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolBar>

using namespace platform;

frmsearchCust::frmsearchCust(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmsearchCust"));
    onActivate(this, [this] { Form_Activate(); });
    setWindowTitle(QStringLiteral("Search for a Customer"));
    resize(640, 420);
    ListWindowPlan plan;
    plan.listName = "cust_lst";
    plan.headings = {QStringLiteral("Customer ID"), QStringLiteral("Last Name"), QStringLiteral("First Name"),
                     QStringLiteral("Phone")};
    plan.searchName = "search_txt";
    plan.searchMaxLength = 40;
    plan.onOpen = [this] { select_cmd_Click(); };
    const ListWindow w = buildListWindow(this, plan);
    cust_lst = w.list;
    search_txt = w.search;
    // The picker has no toolbar and shows nothing for a search; its Exit is Cancel.
    delete w.toolbar;
    delete w.found;
    w.exit->setObjectName(QStringLiteral("cancel_cmd"));
    w.exit->setText(QStringLiteral("&Cancel"));
    auto* select_cmd = new QPushButton(QStringLiteral("Select"), this);
    select_cmd->setObjectName(QStringLiteral("select_cmd"));
    select_cmd->setAutoDefault(false);
    connect(select_cmd, &QPushButton::clicked, this, &frmsearchCust::select_cmd_Click);
    auto* layout = static_cast<QBoxLayout*>(this->layout());
    static_cast<QBoxLayout*>(layout->itemAt(layout->count() - 1)->layout())->insertWidget(1, select_cmd);

    ListConfig config;
    config.sortMarks = false;
    config.furtherColumns = 3;
    rules_ = new ListRules(cust_lst, config, objectName());
    rules_->attachSearch(search_txt, w.searchButton, false);
    rules_->setSource({QStringLiteral("customers"),
                       {"custid", "lastname", "firstname", "phone"},
                       {"custid", "firstname"},
                       [](const Record& rs) {
                           return QStringList{rs.field(QStringLiteral("custid")).toText(),
                                              Null_to_text(rs.field(QStringLiteral("lastname"))),
                                              rs.field(QStringLiteral("firstname")).toText(),
                                              Null_to_text(rs.field(QStringLiteral("phone")))};
                       }},
                      QStringLiteral("CUSTID"));
    Load_list();
}

void frmsearchCust::Load_list()
{
    BusyTrap(objectName(), "Load_list", [this] { rules_->loadRows(); });
}

// Each time the window comes to the front.
void frmsearchCust::Form_Activate()
{
    if (cust_lst->rowCount() > 0) {
        rules_->select(0);
        cust_lst->setFocus();
    }
    search_txt->setFocus();
}

void frmsearchCust::select_cmd_Click()
{
    const int row = rules_->selected();
    if (row < 0)
        return;
    PickedCustID = cust_lst->text(row, 0);
    PickedFirstName = cust_lst->text(row, 2);
    PickedLastName = cust_lst->text(row, 1);
    PickedPhone = cust_lst->text(row, 3);
    EditInvoiceMode = 0;
    Open_window(WindowName::frmAddInv, this);
    done(0);
}
