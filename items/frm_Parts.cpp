#include "items/frm_Parts.h"

#include "help/Help_frm.h"
#include "items/frm_AddPart.h"
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

namespace
{

// "Item ID", "Short Descriprtion", "Long Description", "Price", "Taxable". The long
// description is read as it stands: a Null there is a failure.
QStringList itemRow(const Record& rs)
{
    const Value price = rs.field(QStringLiteral("Price"));
    return {rs.field(QStringLiteral("Id")).toText(), Null_to_text(rs.field(QStringLiteral("shortdesc"))),
            rs.field(QStringLiteral("Desc")).toText(), Format_amount(Null_to_text(price), 10, 2),
            Null_to_zero(rs.field(QStringLiteral("Taxable"))) == Currency::fromTicks(Currency::Scale)
                ? QStringLiteral("Yes")
                : QStringLiteral("No")};
}

} // namespace

frm_Parts::frm_Parts(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frm_Parts"));
    setWindowTitle(QStringLiteral("Items"));
    resize(820, 520);
    ListWindowPlan plan;
    plan.buttons = recordButtons("Edit");
    plan.onButton = [this](int place) { Toolbar1_ButtonClick(place); };
    plan.listName = "Parts_lst";
    plan.headings = {QStringLiteral("Item ID"), QStringLiteral("Short Descriprtion"),
                     QStringLiteral("Long Description"), QStringLiteral("Price"), QStringLiteral("Taxable")};
    plan.searchName = "search_txt";
    plan.searchMaxLength = 20;
    plan.onOpen = [this] { OpenItem(); };
    const ListWindow w = buildListWindow(this, plan);
    Parts_lst = w.list;
    Parts_lst->setColumnWidth(0, 100);
    Parts_lst->setColumnWidth(1, 160);
    Parts_lst->setColumnWidth(2, 260);

    ListConfig config;
    config.furtherColumns = 3;
    config.foundLabel = w.found;
    config.moneyColumns = {3};
    rules_ = new ListRules(Parts_lst, config, objectName());
    rules_->attachSearch(w.search, w.searchButton, false);
    rules_->setSource(
        {QStringLiteral("parts"), {"Id", "shortdesc", "Desc", "Price", "Taxable"}, {"Id", "Desc"}, itemRow},
        QStringLiteral("ID"));
    onActivate(this, [this] { rules_->focusList(); });
    centreWindow(this);
    Load_list();
}

void frm_Parts::Load_list()
{
    BusyTrap(objectName(), "Load_list", [this] { rules_->loadRows(); });
}

void frm_Parts::OpenItem()
{
    const int row = rules_->selected();
    if (row < 0)
        return;
    NewItemMode = 0;
    SelectedItemID = Parts_lst->text(row, 0);
    frm_AddPart window(this);
    showModal(window);
    if (ItemSaved == 1)
        ChangedItem();
}

void frm_Parts::ChangedItem()
{
    BusyTrap(objectName(), "ChangedItem", [this] { rules_->refreshSelected(LastItemID.trimmed()); });
}

// No failure path of its own.
void frm_Parts::NewItem()
{
    rules_->addRecord(LastItemID.trimmed());
}

void frm_Parts::Delete_item()
{
    Trap(objectName(), "Delete_item", [] {
        Recordset rs;
        rs.open(QStringLiteral("parts"), ConnectionString, Recordset::adLockPessimistic);
        rs.setIndex(QStringLiteral("ID"));
        const QString id = SelectedItemID.trimmed();
        rs.seek(id);
        if (!rs.eof() && rs.field(QStringLiteral("ID")).toText() == id)
            rs.deleteRecord();
        rs.close();
    });
}

void frm_Parts::Toolbar1_ButtonClick(int place)
{
    switch (place) {
    case 2: {
        NewItemMode = 1;
        frm_AddPart window(this);
        showModal(window);
        if (ItemSaved == 1)
            NewItem();
        break;
    }
    case 4:
        if (rules_->selected() < 0)
            break;
        if (MsgBox(QStringLiteral("Are you sure you want to delete this item"), vbYesNo + vbQuestion,
                   QStringLiteral("Confirm")) != vbYes)
            break;
        SelectedItemID = Parts_lst->text(rules_->selected(), 0);
        Delete_item();
        rules_->removeSelected();
        break;
    case 6:
        OpenItem();
        break;
    case 8:
        Show_help(this, QStringLiteral("Items.htm"));
        break;
    default:
        break;
    }
}
