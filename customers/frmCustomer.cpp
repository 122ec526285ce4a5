#include "customers/frmCustomer.h"

#include "customers/CustomerRows.h"
#include "customers/frmAddCust.h"
#include "platform/Platform.h"
#include "shell/Globals.h"
#include "store/Connection.h"
#include "store/Functions.h"
#include "store/ListRules.h"
#include "store/Recordset.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace platform;

frmCustomer::frmCustomer(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmCustomer"));
    setWindowTitle(QStringLiteral("Customers"));
    resize(820, 520);
    auto* layout = new QVBoxLayout(this);

    auto* bar = new QToolBar(this);
    bar->setObjectName(QStringLiteral("Toolbar1"));
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    const struct {
        const char* caption;
        QStyle::StandardPixmap icon;
    } buttons[] = {{"Add", QStyle::SP_FileIcon},
                   {"Delete", QStyle::SP_TrashIcon},
                   {"View", QStyle::SP_FileDialogContentsView},
                   {"Help", QStyle::SP_DialogHelpButton}};
    int place = 1;
    for (const auto& b : buttons) {
        bar->addSeparator()->setObjectName(QStringLiteral("Toolbar1(%1)").arg(place++));
        QAction* a = bar->addAction(style()->standardIcon(b.icon), QLatin1String(b.caption));
        a->setObjectName(QStringLiteral("Toolbar1(%1)").arg(place));
        connect(a, &QAction::triggered, this, [this, place] { Toolbar1_ButtonClick(place); });
        ++place;
    }
    layout->addWidget(bar);

    auto* search = new QHBoxLayout;
    search->addWidget(new QLabel(QStringLiteral("Search:"), this));
    Search_txt = new QLineEdit(this);
    Search_txt->setObjectName(QStringLiteral("Search_txt"));
    search->addWidget(Search_txt, 1);
    search_cmd = new QPushButton(style()->standardIcon(QStyle::SP_FileDialogContentsView), QString(), this);
    search_cmd->setObjectName(QStringLiteral("search_cmd"));
    search_cmd->setAutoDefault(false);
    search->addWidget(search_cmd);
    Found_lbl = new QLabel(this);
    Found_lbl->setObjectName(QStringLiteral("Found_lbl"));
    Found_lbl->setMinimumWidth(80);
    search->addWidget(Found_lbl);
    layout->addLayout(search);

    Cust_lst = new QTreeWidget(this);
    Cust_lst->setObjectName(QStringLiteral("Cust_lst"));
    Cust_lst->setHeaderLabels({QStringLiteral("Cust ID"), QStringLiteral("Customer Name"), QStringLiteral("Phone"),
                               QStringLiteral("Address")});
    Cust_lst->setColumnWidth(0, 110);
    Cust_lst->setColumnWidth(1, 200);
    Cust_lst->setColumnWidth(2, 120);
    Cust_lst->installEventFilter(this);
    connect(Cust_lst, &QTreeWidget::itemDoubleClicked, this, [this] { OpenRow(); });
    layout->addWidget(Cust_lst, 1);

    ListConfig config;
    config.furtherColumns = 3;
    config.foundLabel = Found_lbl;
    rules_ = new ListRules(Cust_lst, config, objectName());
    rules_->attachSearch(Search_txt, search_cmd, true);

    auto* exit = new QPushButton(QStringLiteral("&Exit"), this);
    exit->setObjectName(QStringLiteral("Exit_cmd"));
    exit->setAutoDefault(false);
    connect(exit, &QPushButton::clicked, this, &QDialog::accept);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(exit);
    layout->addLayout(bottom);

    Load_list();
}

void frmCustomer::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (Cust_lst->topLevelItemCount() > 0)
        Cust_lst->setFocus();
}

bool frmCustomer::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == Cust_lst && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            OpenRow();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmCustomer::Load_list()
{
    BusyTrap(objectName(), "Load_list", [this] {
        CustomerChanged = 0;
        Recordset rs;
        rs.open(QStringLiteral("customers"), ConnectionString, Recordset::adLockReadOnly);
        Cust_lst->clear();
        if (rs.recordCount() > 0) {
            for (rs.moveFirst(); !rs.eof(); rs.moveNext()) {
                const QStringList cells = customerRow(rs);
                rules_->addRow(cells, QStringLiteral("C") + cells[0]);
            }
            rs.close();
            rules_->select(Cust_lst->topLevelItem(0));
        }
    });
}

void frmCustomer::OpenRow()
{
    if (Cust_lst->topLevelItemCount() < 1 || !rules_->selected())
        return;
    NewCustomerMode = 0;
    SelectedCustID = rules_->selected()->text(0);
    frmAddCust window(this);
    showModal(window);
    if (CustomerChanged == 1)
        ChangedCust();
}

void frmCustomer::ChangedCust()
{
    BusyTrap(objectName(), "ChangedCust", [this] {
        QTreeWidgetItem* row = rules_->selected();
        Recordset rs;
        rs.open(QStringLiteral("customers"), ConnectionString, Recordset::adLockReadOnly);
        rs.setIndex(QStringLiteral("CUSTID"));
        if (rs.recordCount() > 0 && row) {
            rs.seek(row->text(0));
            if (!rs.eof())
                ListRules::setRow(row, customerRow(rs));
            rs.close();
            rules_->select(row);
        }
    });
}

void frmCustomer::NewCustomer()
{
    BusyTrap(objectName(), "NewCustomer", [this] {
        Recordset rs;
        rs.open(QStringLiteral("customers"), ConnectionString, Recordset::adLockReadOnly);
        rs.setIndex(QStringLiteral("CUSTID"));
        if (rs.recordCount() > 0) {
            rs.seek(LastCustID.trimmed());
            QTreeWidgetItem* row = nullptr;
            if (!rs.eof()) {
                const QStringList cells = customerRow(rs);
                row = rules_->addRow(cells, QStringLiteral("C") + cells[0]);
            }
            rs.close();
            if (row) {
                Cust_lst->clearSelection();
                rules_->select(row);
            }
        }
    });
}

void frmCustomer::Delete_item()
{
    Trap(objectName(), "Delete_item", [this] {
        CustomerDeleted = 0;
        const int answer = MsgBox(QStringLiteral("Are you sure you want to delete this customer?"), vbYesNo + vbQuestion,
                                  QStringLiteral("Delete?"));
        if (answer == vbNo || Cust_lst->topLevelItemCount() == 0 || !rules_->selected())
            return;
        const QString id = rules_->selected()->text(0);
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
            MsgBox(QStringLiteral("Customer ") + id + QStringLiteral(" cannot be deleted, as it has ") + QString::number(count)
                       + QStringLiteral(" invoices attached! Please delete these invoices first before deleting this customer."),
                   vbExclamation, QStringLiteral("Cannot Delete!"));
        } else if (count == 1) {
            MsgBox(QStringLiteral("Customer ") + id + QStringLiteral(" cannot be deleted, as it has ") + QStringLiteral("1")
                       + QStringLiteral(" invoice attached! Please delete this invoice first before deleting this customer."),
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
            HelpTopic = QStringLiteral("customers.htm");  // the help window shows it once it exists
            break;
        default:
            break;
        }
    });
}
