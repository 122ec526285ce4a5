#include "customers/frmsearchCust.h"

#include "platform/Activation.h"
#include "platform/Platform.h"
#include "store/Connection.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/ListRules.h"
#include "store/ListWindow.h"
#include "store/Opener.h"
#include "store/Recordset.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolBar>
#include <QTreeWidget>

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
    Load_list();
}

void frmsearchCust::Load_list()
{
    BusyTrap(objectName(), "Load_list", [this] {
        Recordset rs;
        rs.open(QStringLiteral("customers"), ConnectionString, Recordset::adLockReadOnly);
        for (; !rs.eof(); rs.moveNext())
            rules_->addRow(
                {rs.field(QStringLiteral("custid")).toText(), Null_to_text(rs.field(QStringLiteral("lastname"))),
                 rs.field(QStringLiteral("firstname")).toText(), Null_to_text(rs.field(QStringLiteral("phone")))});
        rs.close();
    });
}

// Each time the window comes to the front.
void frmsearchCust::Form_Activate()
{
    if (cust_lst->topLevelItemCount() > 0) {
        rules_->select(cust_lst->topLevelItem(0));
        cust_lst->setFocus();
    }
    search_txt->setFocus();
}

void frmsearchCust::select_cmd_Click()
{
    QTreeWidgetItem* row = rules_->selected();
    if (cust_lst->topLevelItemCount() < 1 || !row)
        return;
    PickedCustID = row->text(0);
    PickedFirstName = row->text(2);
    PickedLastName = row->text(1);
    PickedPhone = row->text(3);
    EditInvoiceMode = 0;
    Open_window(WindowName::frmAddInv, this);
    done(0);
}
