#include "customers/frmAddCust.h"

#include "einvoice/frmEInvoicing.h"
#include "platform/Activation.h"
#include "platform/Controls.h"
#include "platform/DateBox.h"
#include "platform/Keys.h"
#include "platform/MemoBox.h"
#include "platform/Platform.h"
#include "platform/Window.h"
#include "store/Connection.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/Invoices.h"
#include "store/ListRules.h"
#include "store/Numbering.h"
#include "store/Numbers.h"
#include "store/Opener.h"
#include "store/Recordset.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace platform;

namespace
{

QLabel* caption(const QString& text, const char* name, QWidget* parent)
{
    auto* l = new QLabel(text, parent);
    if (name)
        l->setObjectName(QLatin1String(name));
    return l;
}

} // namespace

// Prompts, focus and the check of a typed id come through the window's filter; any
// typed character marks the record changed.
void frmAddCust::watch(QWidget* control)
{
    control->installEventFilter(this);
    onKeyPress(control, [this](int keyAscii) {
        Changed = true;
        return keyAscii;
    });
}

QLineEdit* frmAddCust::line(const char* name, int maxLength)
{
    auto* e = new QLineEdit(this);
    e->setObjectName(QLatin1String(name));
    e->setMaxLength(maxLength);
    watch(e);
    return e;
}

frmAddCust::frmAddCust(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAddCust"));
    onActivate(this, [this] { Form_Activate(); });
    setWindowTitle(QStringLiteral("Customer"));
    // Built top to bottom: the controls take the focus in the order they are made.
    auto* layout = new QVBoxLayout(this);
    buildDetails(layout);
    buildHelpLine(layout);
    buildHistory(layout);
    buildCommands(layout);
    connectEvents();
    setPrompts();
    openCustomer();
    addEInvoicing();
}

// Beside "Customize", made last so that the Tab order of the rest stays: the customer's
// e-invoicing values, kept under the number the record shows.
void frmAddCust::addEInvoicing()
{
    EInvoicing_cmd = platform::button(QStringLiteral("EInvoicing_cmd"), QStringLiteral("E-invoi&cing..."), this);
    commands_->insertWidget(1, EInvoicing_cmd);
    connect(EInvoicing_cmd, &QPushButton::clicked, this, [this] {
        einvoice::frmEInvoicing window(custid_lbl->text().trimmed(), this);
        showModal(window);
    });
}

// The customer's fields, billing address beside delivery address.
void frmAddCust::buildDetails(QVBoxLayout* layout)
{
    auto* cust_frame = new QGroupBox(QStringLiteral("Customer Info:"), this);
    cust_frame->setObjectName(QStringLiteral("cust_frame"));
    auto* grid = new QGridLayout(cust_frame);
    custid_lbl = line("custid_lbl", 12);
    custid_lbl->setText(QStringLiteral("000001"));
    custid_lbl->setEnabled(false);
    DTPicker1 = new platform::DateBox(this);
    DTPicker1->setObjectName(QStringLiteral("DTPicker1"));
    DTPicker1->setCalendarPopup(true);
    DTPicker1->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    watch(DTPicker1);
    FirstName_txt = line("FirstName_txt", 20);
    Lastname_txt = line("Lastname_txt", 20);
    Phone_txt = line("Phone_txt", 30);
    mobile_txt = line("mobile_txt", 30);
    Fax_txt = line("Fax_txt", 30);
    email_txt = line("email_txt", 30);
    address1 = new MemoBox(30, this);
    address1->setObjectName(QStringLiteral("address1"));
    watch(address1);
    address1->setFixedHeight(48);
    address2 = line("address2", 30);
    address3 = line("address3", 30);
    address4 = line("address4", 30);
    postcode_txt = line("postcode_txt", 20);
    delAddress1 = line("delAddress1", 30);
    delAddress2 = line("delAddress2", 30);
    delAddress3 = line("delAddress3", 30);
    delAddress4 = line("delAddress4", 30);
    delpostcode = line("delpostcode", 30);
    Notes_txt = new MemoBox(200, this);
    Notes_txt->setObjectName(QStringLiteral("Notes_txt"));
    watch(Notes_txt);
    Notes_txt->setFixedHeight(60);

    int r = 0;
    auto row = [&](int column, QLabel* label, QWidget* field) {
        grid->addWidget(label, r, column);
        grid->addWidget(field, r, column + 1);
    };
    row(0, caption(QStringLiteral("Customer ID:"), nullptr, this), custid_lbl);
    row(2, caption(QStringLiteral("Date:"), nullptr, this), DTPicker1);
    ++r;
    row(0, caption(QStringLiteral("First Name:"), nullptr, this), FirstName_txt);
    row(2, caption(QStringLiteral("Last Name:"), nullptr, this), Lastname_txt);
    ++r;
    row(0, caption(QStringLiteral("Phone:"), "phone_lbl", this), Phone_txt);
    row(2, caption(QStringLiteral("Mobile:"), "mobile_lbl", this), mobile_txt);
    ++r;
    row(0, caption(QStringLiteral("Fax:"), "Fax_lbl", this), Fax_txt);
    row(2, caption(QStringLiteral("Email:"), "email_lbl", this), email_txt);
    ++r;
    grid->addWidget(caption(QStringLiteral("Billing Address:"), nullptr, this), r, 0, 1, 2);
    grid->addWidget(caption(QStringLiteral("Delivery Address:"), "delivery1_lbl", this), r, 2, 1, 2);
    ++r;
    row(0, caption(QStringLiteral("Street:"), nullptr, this), address1);
    row(2, caption(QStringLiteral("Street:"), "delivery2", this), delAddress1);
    ++r;
    row(0, caption(QStringLiteral("Town:"), nullptr, this), address2);
    row(2, caption(QStringLiteral("Town:"), "delivery3", this), delAddress2);
    ++r;
    row(0, caption(QStringLiteral("City:"), nullptr, this), address3);
    row(2, caption(QStringLiteral("City:"), "delivery4", this), delAddress3);
    ++r;
    row(0, caption(QStringLiteral("County"), nullptr, this), address4);
    row(2, caption(QStringLiteral("County"), "Label5", this), delAddress4);
    ++r;
    row(0, caption(QStringLiteral("Zip/Postcode:"), nullptr, this), postcode_txt);
    row(2, caption(QStringLiteral("Zip/Postcode:"), "delivery5", this), delpostcode);
    ++r;
    row(0, caption(QStringLiteral("Private Notes:"), nullptr, this), Notes_txt);
    copy_cmd = new QPushButton(QStringLiteral("Copy Billing to Delivery Address"), this);
    copy_cmd->setObjectName(QStringLiteral("copy_cmd"));
    grid->addWidget(copy_cmd, r, 3);
    layout->addWidget(cust_frame);
}

void frmAddCust::buildHelpLine(QVBoxLayout* layout)
{
    auto* status = new QHBoxLayout;
    status->addWidget(caption(QStringLiteral("Help Notes"), nullptr, this));
    help_lbl = caption(QString(), "help_lbl", this);
    help_lbl->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    status->addWidget(help_lbl, 1);
    layout->addLayout(status);
}

// The customer's invoices with their commands and the balance due.
void frmAddCust::buildHistory(QVBoxLayout* layout)
{
    inv_frame = new QGroupBox(QStringLiteral("Invoice History:"), this);
    inv_frame->setObjectName(QStringLiteral("inv_frame"));
    auto* history = new QVBoxLayout(inv_frame);
    Inv_lst = new QTreeWidget(this);
    Inv_lst->setObjectName(QStringLiteral("Inv_lst"));
    Inv_lst->setRootIsDecorated(false);
    Inv_lst->setHeaderLabels({QStringLiteral("Date"), QStringLiteral("Inv No."), QStringLiteral("Total"),
                              QStringLiteral("Paid"), QStringLiteral("Balance"), QStringLiteral("Notes")});
    Inv_lst->header()->setSectionsClickable(false);
    alignMoneyColumns(Inv_lst, {2, 3, 4});
    Inv_lst->setMinimumHeight(120);
    history->addWidget(Inv_lst);
    auto* historyButtons = new QHBoxLayout;
    Add_cmd = new QPushButton(QStringLiteral("&Add"), this);
    Add_cmd->setObjectName(QStringLiteral("Add_cmd"));
    Edit_cmd = new QPushButton(QStringLiteral("Ed&it"), this);
    Edit_cmd->setObjectName(QStringLiteral("Edit_cmd"));
    Delete_cmd = new QPushButton(QStringLiteral("&Delete"), this);
    Delete_cmd->setObjectName(QStringLiteral("Delete_cmd"));
    for (QPushButton* b : {Add_cmd, Edit_cmd, Delete_cmd})
        historyButtons->addWidget(b);
    historyButtons->addStretch();
    historyButtons->addWidget(caption(QStringLiteral("Total Balance Due"), nullptr, this));
    Total_lbl = caption(QString(), "Total_lbl", this);
    Total_lbl->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    Total_lbl->setMinimumWidth(90);
    Total_lbl->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    historyButtons->addWidget(Total_lbl);
    history->addLayout(historyButtons);
    layout->addWidget(inv_frame);
}

void frmAddCust::buildCommands(QVBoxLayout* layout)
{
    auto* buttons = commands_ = new QHBoxLayout;
    Customize_cmd = new QPushButton(QStringLiteral("Customize"), this);
    Customize_cmd->setObjectName(QStringLiteral("Customize_cmd"));
    buttons->addWidget(Customize_cmd);
    buttons->addStretch();
    Save_cmd = new QPushButton(QStringLiteral("&Save"), this);
    Save_cmd->setObjectName(QStringLiteral("Save_cmd"));
    Save_cmd->setDefault(true);
    exit_cmd = new QPushButton(QStringLiteral("&Exit"), this);
    exit_cmd->setObjectName(QStringLiteral("exit_cmd"));
    buttons->addWidget(Save_cmd);
    buttons->addWidget(exit_cmd);
    layout->addLayout(buttons);
}

void frmAddCust::connectEvents()
{
    for (QPushButton* b : {copy_cmd, Add_cmd, Edit_cmd, Delete_cmd, Customize_cmd, exit_cmd})
        b->setAutoDefault(false);
    connect(Save_cmd, &QPushButton::clicked, this, &frmAddCust::Save_cmd_Click);
    connect(exit_cmd, &QPushButton::clicked, this, &frmAddCust::exit_cmd_Click);
    connect(copy_cmd, &QPushButton::clicked, this, &frmAddCust::copy_cmd_Click);
    connect(Customize_cmd, &QPushButton::clicked, this, &frmAddCust::Customize_cmd_Click);
    connect(Add_cmd, &QPushButton::clicked, this, &frmAddCust::Add_cmd_Click);
    connect(Edit_cmd, &QPushButton::clicked, this, &frmAddCust::Edit_cmd_Click);
    connect(Delete_cmd, &QPushButton::clicked, this, &frmAddCust::Delete_cmd_Click);
    connect(Inv_lst, &QTreeWidget::itemDoubleClicked, this, &frmAddCust::Edit_cmd_Click);
    connect(DTPicker1, &QDateEdit::dateChanged, this, [this] { Changed = true; });
}

// What the help line says as each field is entered, and whether entering it makes Save
// the default button.
void frmAddCust::setPrompts()
{
    const QString address = QStringLiteral("Please enter address.");
    prompts_ = {{FirstName_txt, {QStringLiteral("Please enter first name."), true}},
                {Lastname_txt, {QStringLiteral("Please enter last name."), true}},
                {Phone_txt, {QStringLiteral("Please enter phone number."), false}},
                {mobile_txt, {QStringLiteral("Please enter mobile number."), false}},
                {Fax_txt, {QStringLiteral("Please enter fax number."), false}},
                {email_txt, {QStringLiteral("Please enter email."), false}},
                {address1, {QStringLiteral("Please enter address"), false}},
                {address2, {address, true}},
                {address3, {address, true}},
                {address4, {QStringLiteral("Please enter County."), true}},
                {postcode_txt, {QStringLiteral("Please enter postcode."), true}},
                {delAddress1, {address, true}},
                {delAddress2, {address, true}},
                {delAddress3, {address, true}},
                {delAddress4, {address, true}},
                {delpostcode, {address, true}},
                {Notes_txt, {QStringLiteral("Please enter any notes here."), true}}};
}

// A new customer or the one handed over; filling the fields is no change by the user.
void frmAddCust::openCustomer()
{
    Changed = false;
    Inv_lst->clear();
    if (NewCustomerMode == 1) {
        Newdetails();
        for (QWidget* w : std::initializer_list<QWidget*>{inv_frame, Add_cmd, Edit_cmd, Delete_cmd})
            w->setEnabled(false);
    } else {
        Load_customer();
    }
    CustomerChanged = 0;
    LoadSetup();
    Changed = false;
    centreWindow(this);
}

QString frmAddCust::boxText(QWidget* box) const
{
    if (auto* memo = qobject_cast<MemoBox*>(box))
        return memo->text();
    return static_cast<QLineEdit*>(box)->text();
}

void frmAddCust::setBoxText(QWidget* box, const QString& text)
{
    if (auto* memo = qobject_cast<MemoBox*>(box))
        memo->setText(text);
    else
        static_cast<QLineEdit*>(box)->setText(text);
}

// Each time the window comes to the front.
void frmAddCust::Form_Activate()
{
    if (NewCustomerMode != 1)
        return;
    if (settings.freeformCus == 1) {
        custid_lbl->setEnabled(true);
        custid_lbl->setFocus();
    } else {
        custid_lbl->setEnabled(false);
        FirstName_txt->setFocus();
    }
}

bool frmAddCust::eventFilter(QObject* watched, QEvent* event)
{
    auto* widget = qobject_cast<QWidget*>(watched);
    switch (event->type()) {
    case QEvent::FocusIn:
        if (prompts_.contains(widget)) {
            help_lbl->setText(prompts_[widget].first);
            if (prompts_[widget].second)
                Save_cmd->setDefault(true);
            if (auto* e = qobject_cast<QLineEdit*>(widget))
                QTimer::singleShot(0, e, &QLineEdit::selectAll);
            else if (auto* m = qobject_cast<MemoBox*>(widget))
                QTimer::singleShot(0, m, &QPlainTextEdit::selectAll);
        }
        break;
    case QEvent::FocusOut:
        // An id typed by hand is checked as soon as the box is left, but not for Exit.
        if (widget == custid_lbl && QApplication::focusWidget() != exit_cmd && CheckCustNo() == 1)
            QTimer::singleShot(0, custid_lbl, [this] { custid_lbl->setFocus(); });
        break;
    default:
        break;
    }
    return QDialog::eventFilter(watched, event);
}

void frmAddCust::Newdetails()
{
    Trap(objectName(), "Newdetails", [this] {
        const Proposal proposal = Propose_number(Series::Customer);
        custid_lbl->setText(proposal.number);
        custid_lbl->setEnabled(proposal.enabled);
        DTPicker1->setDate(today());
    });
}

void frmAddCust::Load_customer()
{
    Trap(objectName(), "Load_customer", [this] {
        Recordset rs;
        rs.open(QStringLiteral("customers"), ConnectionString, Recordset::adLockReadOnly);
        rs.setIndex(QStringLiteral("CUSTID"));
        rs.seek(SelectedCustID, Recordset::adSeekFirstEQ);
        if (!rs.eof()) {
            custid_lbl->setText(rs.field(QStringLiteral("custid")).toText());
            const Value date = rs.field(QStringLiteral("Date"));
            if (!Null_to_text(date).isEmpty())
                DTPicker1->setDate(date.toDate().date());
            const QList<QPair<QWidget*, const char*>> fields = {{FirstName_txt, "firstname"},
                                                                {Lastname_txt, "lastname"},
                                                                {Phone_txt, "phone"},
                                                                {mobile_txt, "mobile"},
                                                                {Fax_txt, "fax"},
                                                                {email_txt, "email"},
                                                                {address1, "address"},
                                                                {address2, "address2"},
                                                                {address3, "city"},
                                                                {address4, "address4"},
                                                                {postcode_txt, "postcode"},
                                                                {delAddress1, "delAddress1"},
                                                                {delAddress2, "delAddress2"},
                                                                {delAddress3, "delAddress3"},
                                                                {delAddress4, "delAddress4"},
                                                                {delpostcode, "Deladdress5"},
                                                                {Notes_txt, "notes"}};
            for (const auto& [box, column] : fields)
                setBoxText(box, Null_to_text(rs.field(QLatin1String(column))));
        }
        rs.close();
        Load_invoices();
    });
}

QStringList frmAddCust::invoiceRow(const Recordset& rs) const
{
    auto amount = [&](const char* column) {
        return Format_amount(Null_to_zero(rs.field(QLatin1String(column))), 7, 2);
    };
    return {Null_to_text(rs.field(QStringLiteral("Date"))),
            rs.field(QStringLiteral("invno")).toText(),
            amount("total"),
            amount("paid"),
            amount("balance"),
            Null_to_text(rs.field(QStringLiteral("notes")))};
}

void frmAddCust::Load_invoices()
{
    Trap(objectName(), "Load_invoices", [this] {
        Recordset rs;
        rs.open(QStringLiteral("invoices"), ConnectionString, Recordset::adLockReadOnly);
        Inv_lst->clear();
        Currency total;
        if (rs.recordCount() > 0) {
            rs.setIndex(QStringLiteral("CUSTNO"));
            const QString id = custid_lbl->text();
            for (rs.seek(id); !rs.eof(); rs.moveNext()) {
                if (Null_to_text(rs.field(QStringLiteral("CUSTNO"))) != id)
                    break;
                Inv_lst->addTopLevelItem(new ListRow(invoiceRow(rs)));
                total += Null_to_zero(rs.field(QStringLiteral("balance")));
            }
        }
        Show_history();
        Total_lbl->setText(Format_amount(total, 7, 2));
        rs.close();
    });
}

// With invoices listed the first is selected and the history's buttons all work; with
// none, Edit and Delete are off and Add and the frame keep their state.
void frmAddCust::Show_history()
{
    if (Inv_lst->topLevelItemCount() > 0) {
        Inv_lst->setCurrentItem(Inv_lst->topLevelItem(0));
        for (QWidget* w : std::initializer_list<QWidget*>{Edit_cmd, Delete_cmd, Add_cmd, inv_frame})
            w->setEnabled(true);
    } else {
        Edit_cmd->setEnabled(false);
        Delete_cmd->setEnabled(false);
    }
}

void frmAddCust::LoadSetup()
{
    Trap(objectName(), "LoadSetup", [this] {
        auto show = [this](qint16 setting, std::initializer_list<const char*> names) {
            for (const char* name : names)
                if (auto* w = findChild<QWidget*>(QLatin1String(name)))
                    w->setVisible(setting == 1);
        };
        show(settings.FaxVisible, {"Fax_txt", "Fax_lbl"});
        show(settings.phoneVisible, {"Phone_txt", "phone_lbl"});
        show(settings.emailVisible, {"email_txt", "email_lbl"});
        show(settings.shippingVisible,
             {"copy_cmd", "delAddress1", "delAddress2", "delAddress3", "delAddress4", "delpostcode", "delivery1_lbl",
              "delivery2", "delivery3", "delivery4", "delivery5", "Label5"});
        show(settings.mobileVisible, {"mobile_txt", "mobile_lbl"});
    });
}

int frmAddCust::CheckEntries()
{
    QWidget* refused = nullptr;
    if (custid_lbl->text().isEmpty())
        refused = custid_lbl;
    else if (FirstName_txt->text().isEmpty())
        refused = FirstName_txt;
    else if (Lastname_txt->text().trimmed().isEmpty())
        refused = Lastname_txt;
    if (!refused)
        return 0;
    Beep();
    refused->setFocus();
    return 1;
}

int frmAddCust::CheckCustNo()
{
    int result = 0;
    Trap(objectName(), "CheckCustNo", [&] {
        if (custid_lbl->text().trimmed().isEmpty()) {
            MsgBox(QStringLiteral(" Please enter a Customer ID."), vbExclamation, QStringLiteral("Enter Customer ID"));
            if (custid_lbl->isEnabled()) {
                custid_lbl->setFocus();
                result = 1;
                return;
            }
        }
        if (NewCustomerMode != 0 && Number_in_use(Series::Customer, custid_lbl->text()))
            result = 1;
    });
    return result;
}

void frmAddCust::Save_cmd_Click()
{
    Trap(objectName(), "Save_cmd", [this] {
        if (settings.freeformCus == 1 && CheckCustNo() == 1)
            custid_lbl->setFocus();
        if (CheckEntries() == 1)
            return;
        Recordset rs;
        rs.open(QStringLiteral("customers"), ConnectionString, Recordset::adLockPessimistic);
        rs.setIndex(QStringLiteral("CUSTID"));
        rs.seek(custid_lbl->text().trimmed());
        CustomerChanged = 1;
        if (rs.eof()) {
            rs.addNew();
        } else if (NewCustomerMode == 1) {
            if (rs.field(QStringLiteral("custid")).toText().trimmed() == custid_lbl->text().trimmed()) {
                MsgBox(QStringLiteral("This Customer number has already been used. Please try again!"), vbExclamation,
                       QStringLiteral("Customer Number Already In Use"));
                if (settings.freeformCus == 1)
                    custid_lbl->setFocus();
                rs.close();
                return;
            }
            rs.addNew();
        }
        // An existing customer is written to the row the seek found.
        const QList<QPair<const char*, QWidget*>> fields = {
            {"custid", custid_lbl}, {"lastname", Lastname_txt}, {"firstname", FirstName_txt},
            {"phone", Phone_txt},   {"address", address1},      {"address2", address2},
            {"city", address3},     {"address4", address4},     {"postcode", postcode_txt},
            {"mobile", mobile_txt}, {"fax", Fax_txt},           {"email", email_txt},
            {"notes", Notes_txt}};
        for (const auto& [column, box] : fields)
            rs.setField(QLatin1String(column), boxText(box).trimmed());
        rs.setField(QStringLiteral("Date"), DTPicker1->date());
        const QList<QPair<const char*, QLineEdit*>> delivery = {{"delAddress1", delAddress1},
                                                                {"delAddress2", delAddress2},
                                                                {"delAddress3", delAddress3},
                                                                {"delAddress4", delAddress4},
                                                                {"Deladdress5", delpostcode}};
        for (const auto& [column, box] : delivery)
            rs.setField(QLatin1String(column), box->text().trimmed());
        rs.update();
        rs.close();
        MsgBox(QStringLiteral("Customer details have been saved."), vbInformation, QStringLiteral("Saved"));
        if (NewCustomerMode == 1 && MsgBox(QStringLiteral("Do you want to add an invoice to this customer?"),
                                           vbYesNo + vbQuestion, QStringLiteral("Add Invoice")) == vbYes)
            Add_cmd_Click();
        if (settings.freeformCus == 0 && NewCustomerMode == 1)
            Advance_number(Series::Customer, custid_lbl->text());
        NewCustomerMode = 0;
        Add_cmd->setEnabled(true);
        inv_frame->setEnabled(true);
        Changed = false;
    });
}

void frmAddCust::Add_cmd_Click()
{
    Trap(objectName(), "Add_cmd", [this] {
        EditInvoiceMode = 0;
        PickedCustID = custid_lbl->text();
        PickedFirstName = FirstName_txt->text().trimmed();
        PickedLastName = Lastname_txt->text().trimmed();
        PickedPhone = Phone_txt->text().trimmed();
        Open_window(WindowName::frmAddInv, this);
        if (InvoiceSaved == 1) {
            if (!LastInvoiceNo.trimmed().isEmpty())
                NewInvoice();
            else
                Load_invoices();
        }
    });
}

void frmAddCust::Edit_cmd_Click()
{
    if (Inv_lst->topLevelItemCount() < 1 || !Inv_lst->currentItem())
        return;
    OpenInvoiceNo = Inv_lst->currentItem()->text(1);
    EditInvoiceMode = 1;
    Open_window(WindowName::frmAddInv, this);
    if (InvoiceSaved == 1) {
        Changed_Inv();
        InvoiceSaved = 0;
    }
}

void frmAddCust::Delete_cmd_Click()
{
    if (MsgBox(QStringLiteral("Are you sure you want to delete this invoice"), vbYesNo + vbQuestion,
               QStringLiteral("Confirm")) != vbYes)
        return;
    QTreeWidgetItem* row = Inv_lst->currentItem();
    if (Inv_lst->topLevelItemCount() == 0 || !row)
        return;
    Delete_item(row->text(1));
    const int index = Inv_lst->indexOfTopLevelItem(row);
    delete row;
    if (Inv_lst->topLevelItemCount() > 0)
        Inv_lst->setCurrentItem(Inv_lst->topLevelItem(std::min(index, Inv_lst->topLevelItemCount() - 1)));
}

void frmAddCust::Delete_item(const QString& invoiceNo)
{
    Trap(objectName(), "Delete_item", [&] {
        const Currency total = Currency::fromDouble(Val(Total_lbl->text()));
        Total_lbl->setText(Format_amount(total - Delete_invoice(invoiceNo), 7, 2));
    });
}

void frmAddCust::Changed_Inv()
{
    Trap(objectName(), "Changed_Inv", [this] {
        Recordset rs;
        rs.open(QStringLiteral("invoices"), ConnectionString, Recordset::adLockPessimistic);
        rs.setIndex(QStringLiteral("INVNO"));
        Currency total = Currency::fromDouble(Val(Total_lbl->text()));
        QTreeWidgetItem* row = Inv_lst->currentItem();
        if (rs.recordCount() > 0 && row) {
            rs.seek(row->text(1).trimmed());
            if (!rs.eof()) {
                total = total - Currency::fromDouble(Val(row->text(4)));
                const QStringList cells = invoiceRow(rs);
                for (int i = 0; i < 5; ++i)
                    row->setText(i, cells[i]);
                total += Null_to_zero(rs.field(QStringLiteral("BALANCE")));
                // A note removed stays in the row until the list is loaded again.
                if (!cells[5].isEmpty())
                    row->setText(5, cells[5]);
            }
        }
        Total_lbl->setText(Format_amount(total, 7, 2));
        rs.close();
        if (row)
            Inv_lst->setCurrentItem(row);
    });
}

void frmAddCust::NewInvoice()
{
    Trap(objectName(), "NewInvoice", [this] {
        Recordset rs;
        rs.open(QStringLiteral("invoices"), ConnectionString, Recordset::adLockReadOnly);
        rs.setIndex(QStringLiteral("INVNO"));
        Currency total = Currency::fromDouble(Val(Total_lbl->text()));
        rs.seek(LastInvoiceNo.trimmed());
        if (!rs.eof()) {
            Inv_lst->addTopLevelItem(new ListRow(invoiceRow(rs)));
            total += Null_to_zero(rs.field(QStringLiteral("BALANCE")));
        }
        Total_lbl->setText(Format_amount(total, 7, 2));
        rs.close();
        Show_history();
    });
}

void frmAddCust::copy_cmd_Click()
{
    Busy_on();
    delAddress1->setText(address1->text());
    delAddress2->setText(address2->text());
    delAddress3->setText(address3->text());
    delAddress4->setText(address4->text());
    delpostcode->setText(postcode_txt->text());
    Busy_off();
}

void frmAddCust::Customize_cmd_Click()
{
    Open_window(WindowName::frmCustomerSet, this);
    LoadSetup();
}

void frmAddCust::exit_cmd_Click()
{
    if (Changed && MsgBox(QStringLiteral("Do you wish to save changes?"), vbYesNo + vbQuestion,
                          QStringLiteral("Save Changes")) == vbYes)
        Save_cmd_Click();
    unload();
}

void frmAddCust::unload()
{
    if (!unloaded_ && CustomerChanged == 1)
        LastCustID = custid_lbl->text();
    unloaded_ = true;
    done(0);
}

void frmAddCust::closeEvent(QCloseEvent* event)
{
    unload();
    event->accept();
}
