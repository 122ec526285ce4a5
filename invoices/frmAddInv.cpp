#include "invoices/frmAddInv.h"

#include "platform/Activation.h"
#include "platform/Controls.h"
#include "platform/DateBox.h"
#include "platform/Keys.h"
#include "platform/MemoBox.h"
#include "platform/Platform.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/ListRules.h"
#include "store/ListView.h"
#include "store/Numbering.h"
#include "store/Numbers.h"
#include "store/Opener.h"
#include "store/Recordset.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QDateEdit>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

using namespace platform;

namespace
{

const QColor White(0xFF, 0xFF, 0xFF);
const QColor RowColour(0xC0, 0xC0, 0xFF);
const QColor FocusColour(0xFF, 0xFF, 0xC0);

QString indexed(const char* name, int i)
{
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i);
}

QLabel* label(const QString& text, const QString& name, QWidget* parent)
{
    auto* l = new QLabel(text, parent);
    if (!name.isEmpty())
        l->setObjectName(name);
    return l;
}

QLineEdit* box(const QString& name, int maxLength, Qt::Alignment align, QWidget* parent)
{
    auto* e = new QLineEdit(parent);
    e->setObjectName(name);
    if (maxLength > 0)
        e->setMaxLength(maxLength);
    e->setAlignment(align | Qt::AlignVCenter);
    return e;
}

void paint(QWidget* control, const QColor& colour)
{
    QPalette p = control->palette();
    p.setColor(QPalette::Base, colour);
    control->setPalette(p);
}

// A focus move to a control that cannot take it fails, as it always did.
void moveFocus(QWidget* control)
{
    if (!control->isEnabled())
        throw VbError(err::InvalidArgument);
    control->setFocus();
}

template <class Control> void put(Control* control, const QString& text)
{
    if (control->text() != text)
        control->setText(text);
}

QString amountText(double value)
{
    return Format_amount(value, 7, 2);
}

} // namespace

frmAddInv::frmAddInv(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAddInv"));
    onActivate(this, [this] { Form_Activate(); });
    setWindowTitle(QStringLiteral("Invoice"));
    // Built top to bottom: the controls take the focus in the order they are made.
    auto* layout = new QVBoxLayout(this);
    buildToolbar(layout);
    buildHeader(layout);
    buildLines(layout);
    buildTotals(layout);
    buildCommands(layout);
    buildPicker();
    connectEvents();
    openInvoice();
}

void frmAddInv::buildToolbar(QVBoxLayout* layout)
{
    Toolbar1 = new QToolBar(this);
    Toolbar1->setObjectName(QStringLiteral("Toolbar1"));
    Toolbar1->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    const QList<QPair<const char*, QStyle::StandardPixmap>> buttons = {
        {"Add Item", QStyle::SP_FileIcon},
        {"Clear Line", QStyle::SP_DialogResetButton},
        {"Clear All", QStyle::SP_TrashIcon},
        {"Print", QStyle::SP_DialogSaveButton},
        {"Customize", QStyle::SP_FileDialogDetailedView}};
    int place = 1;
    for (const auto& [caption, icon] : buttons) {
        Toolbar1->addSeparator()->setObjectName(indexed("Toolbar1", place++));
        QAction* a = Toolbar1->addAction(style()->standardIcon(icon), QLatin1String(caption));
        a->setObjectName(indexed("Toolbar1", place));
        connect(a, &QAction::triggered, this, [this, place] { Toolbar1_ButtonClick(place); });
        ++place;
    }
    layout->addWidget(Toolbar1);
}

void frmAddInv::buildHeader(QVBoxLayout* layout)
{
    auto* header = new QGridLayout;
    Inv_lbl = box(QStringLiteral("Inv_lbl"), 12, Qt::AlignHCenter, this);
    Cust_lbl = label(QString(), QStringLiteral("Cust_lbl"), this);
    Customername_lbl = box(QStringLiteral("Customername_lbl"), 45, Qt::AlignHCenter, this);
    Label16 = label(QString(), QStringLiteral("Label16"), this);
    Date_txt = new platform::DateBox(this);
    Date_txt->setObjectName(QStringLiteral("Date_txt"));
    Date_txt->setCalendarPopup(true);
    Date_txt->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
    Paid_lbl = label(QStringLiteral("PAID IN FULL"), QStringLiteral("Paid_lbl"), this);
    StillOwes_lbl = label(QStringLiteral("BALANCE:"), QStringLiteral("StillOwes_lbl"), this);
    // The banners keep their room while hidden, as wide as the widest balance, so that
    // the header stands still when one appears or its figure grows.
    for (QLabel* banner : {Paid_lbl, StillOwes_lbl}) {
        banner->setStyleSheet(QStringLiteral("color: red; font-weight: bold"));
        QFont bold = banner->font();
        bold.setBold(true);
        banner->setMinimumWidth(QFontMetrics(bold).horizontalAdvance(QStringLiteral("BALANCE: -9999999.99")));
        QSizePolicy policy = banner->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        banner->setSizePolicy(policy);
        banner->hide();
    }
    SalesPerson_lbl = label(QStringLiteral("Sales Person"), QStringLiteral("SalesPerson_lbl"), this);
    SalesOrder_lbl = label(QStringLiteral("Sales Order No"), QStringLiteral("SalesOrder_lbl"), this);
    Shipped_lbl = label(QStringLiteral("Shipped By"), QStringLiteral("Shipped_lbl"), this);
    TrackingNo_lbl = label(QStringLiteral("Tracking No:"), QStringLiteral("TrackingNo_lbl"), this);
    SalesPerson_txt = box(QStringLiteral("SalesPerson_txt"), 20, Qt::AlignHCenter, this);
    SalesOrder_txt = box(QStringLiteral("SalesOrder_txt"), 20, Qt::AlignHCenter, this);
    Shipped_txt = box(QStringLiteral("Shipped_txt"), 20, Qt::AlignHCenter, this);
    TrackingNo_txt = box(QStringLiteral("TrackingNo_txt"), 20, Qt::AlignHCenter, this);
    header->addWidget(label(QStringLiteral("Invoice No:"), QString(), this), 0, 0);
    header->addWidget(Inv_lbl, 0, 1);
    header->addWidget(label(QStringLiteral("Date:"), QString(), this), 0, 2);
    header->addWidget(Date_txt, 0, 3);
    header->addWidget(Paid_lbl, 0, 4);
    header->addWidget(StillOwes_lbl, 0, 4);
    header->addWidget(label(QStringLiteral("Customer ID:"), QString(), this), 1, 0);
    header->addWidget(Cust_lbl, 1, 1);
    header->addWidget(label(QStringLiteral("Customer:"), QString(), this), 1, 2);
    header->addWidget(Customername_lbl, 1, 3);
    header->addWidget(label(QStringLiteral("Phone:"), QString(), this), 1, 4);
    header->addWidget(Label16, 1, 5);
    header->addWidget(SalesPerson_lbl, 2, 0);
    header->addWidget(SalesPerson_txt, 2, 1);
    header->addWidget(SalesOrder_lbl, 2, 2);
    header->addWidget(SalesOrder_txt, 2, 3);
    header->addWidget(Shipped_lbl, 3, 0);
    header->addWidget(Shipped_txt, 3, 1);
    header->addWidget(TrackingNo_lbl, 3, 2);
    header->addWidget(TrackingNo_txt, 3, 3);
    layout->addLayout(header);
}

// The eight lines. Check1 and tax stand on their filler fields, which carry the
// row's colour behind them.
void frmAddInv::buildLines(QVBoxLayout* layout)
{
    auto* lines = new QGridLayout;
    lines->setHorizontalSpacing(2);
    lines->setVerticalSpacing(2);
    lines->addWidget(label(QStringLiteral("Item"), QStringLiteral("Part_lbl"), this), 0, 0, 1, 2);
    lines->addWidget(label(QStringLiteral("Qty"), QStringLiteral("Quan_lbl"), this), 0, 2);
    Desc_lbl = label(QStringLiteral("Description"), QStringLiteral("Desc_lbl"), this);
    lines->addWidget(Desc_lbl, 0, 3);
    lines->addWidget(label(QStringLiteral("Amount"), QStringLiteral("Label15"), this), 0, 4);
    lines->addWidget(label(QStringLiteral("Total"), QStringLiteral("Total2_lbl"), this), 0, 5);
    toptax = label(QStringLiteral("Tax"), QStringLiteral("toptax"), this);
    lines->addWidget(toptax, 0, 6);
    for (int i = 0; i < Lines; ++i) {
        PartID_txt[i] = box(indexed("PartID_txt", i), 12, Qt::AlignHCenter, this);
        Blank[i] = box(indexed("Blank", i), 0, Qt::AlignLeft, this);
        Check1[i] = tick(indexed("Check1", i), QString(), this);
        Qty_txt[i] = box(indexed("Qty_txt", i), 4, Qt::AlignHCenter, this);
        Desc_txt[i] = box(indexed("Desc_txt", i), 120, Qt::AlignLeft, this);
        Amount_txt[i] = box(indexed("Amount_txt", i), 10, Qt::AlignRight, this);
        tota1l_txt[i] = box(indexed("tota1l_txt", i), 0, Qt::AlignRight, this);
        tax1[i] = box(indexed("tax1", i), 0, Qt::AlignLeft, this);
        tax[i] = tick(indexed("tax", i), QString(), this);
        tota1l_txt[i]->setEnabled(false);
        tota1l_txt[i]->setFocusPolicy(Qt::NoFocus);
        for (QLineEdit* filler : {Blank[i], tax1[i]}) {
            filler->setEnabled(false);
            filler->setFixedWidth(26);
        }
        PartID_txt[i]->setFixedWidth(100);
        Qty_txt[i]->setFixedWidth(44);
        Desc_txt[i]->setMinimumWidth(320);
        Amount_txt[i]->setFixedWidth(90);
        tota1l_txt[i]->setFixedWidth(90);
        const int r = i + 1;
        lines->addWidget(PartID_txt[i], r, 0);
        lines->addWidget(Blank[i], r, 1);
        lines->addWidget(Check1[i], r, 1, Qt::AlignCenter);
        lines->addWidget(Qty_txt[i], r, 2);
        lines->addWidget(Desc_txt[i], r, 3);
        lines->addWidget(Amount_txt[i], r, 4);
        lines->addWidget(tota1l_txt[i], r, 5);
        lines->addWidget(tax1[i], r, 6);
        lines->addWidget(tax[i], r, 6, Qt::AlignCenter);
    }
    lines->setColumnStretch(3, 1);
    layout->addLayout(lines);
}

// Notes, totals and payment.
void frmAddInv::buildTotals(QVBoxLayout* layout)
{
    auto* bottom = new QHBoxLayout;
    auto* notes = new QVBoxLayout;
    notes->addWidget(label(QStringLiteral("Notes:"), QString(), this));
    notes_txt = new MemoBox(150, this);
    notes_txt->setObjectName(QStringLiteral("notes_txt"));
    notes_txt->setFixedHeight(70);
    notes->addWidget(notes_txt);
    Notes_chk = tick(QStringLiteral("Notes_chk"), QStringLiteral("Include Notes"), this);
    notes->addWidget(Notes_chk);
    bottom->addLayout(notes, 1);

    auto amountLabel = [this](const char* name) {
        QLabel* l = label(QStringLiteral("0.00"), QLatin1String(name), this);
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        l->setMinimumWidth(90);
        return l;
    };
    auto* totals = new QGroupBox(this);
    totals->setObjectName(QStringLiteral("Frame1"));
    auto* tgrid = new QGridLayout(totals);
    subtotal_txt = amountLabel("subtotal_txt");
    vat_txt = amountLabel("vat_txt");
    Discount_txt = amountLabel("Discount_txt");
    total_txt = amountLabel("total_txt");
    vat_lbl = label(QStringLiteral("VAT"), QStringLiteral("vat_lbl"), this);
    taxamount = label(QStringLiteral("0"), QStringLiteral("taxamount"), this);
    taxamount->hide();
    Discount2_txt = box(QStringLiteral("Discount2_txt"), 4, Qt::AlignRight, this);
    Discount2_txt->setText(QStringLiteral("0"));
    Discount2_txt->setFixedWidth(44);
    tgrid->addWidget(label(QStringLiteral("Sub Total"), QString(), this), 0, 0, 1, 2);
    tgrid->addWidget(subtotal_txt, 0, 2);
    tgrid->addWidget(vat_lbl, 1, 0, 1, 2);
    tgrid->addWidget(vat_txt, 1, 2);
    tgrid->addWidget(taxamount, 1, 3);
    tgrid->addWidget(label(QStringLiteral("Discount %"), QString(), this), 2, 0);
    tgrid->addWidget(Discount2_txt, 2, 1);
    tgrid->addWidget(Discount_txt, 2, 2);
    tgrid->addWidget(label(QStringLiteral("Total"), QString(), this), 3, 0, 1, 2);
    tgrid->addWidget(total_txt, 3, 2);
    bottom->addWidget(totals);

    auto* payment = new QGroupBox(this);
    payment->setObjectName(QStringLiteral("Frame2"));
    auto* pgrid = new QGridLayout(payment);
    total_txt2 = box(QStringLiteral("total_txt2"), 0, Qt::AlignRight, this);
    total_txt2->setEnabled(false);
    Paid_txt = box(QStringLiteral("Paid_txt"), 10, Qt::AlignRight, this);
    Writtenoff_txt = box(QStringLiteral("Writtenoff_txt"), 10, Qt::AlignRight, this);
    Paid_txt->setText(QStringLiteral("0.00"));
    Writtenoff_txt->setText(QStringLiteral("0.00"));
    Balance_txt = box(QStringLiteral("Balance_txt"), 0, Qt::AlignRight, this);
    Balance_txt->setEnabled(false);
    PaidFull_chk = tick(QStringLiteral("PaidFull_chk"), QStringLiteral("Paid In Full"), this);
    int r = 0;
    for (const auto& [caption, field] : {std::pair<const char*, QLineEdit*>{"Total", total_txt2},
                                         {"Paid", Paid_txt},
                                         {"Written Off", Writtenoff_txt},
                                         {"Balance", Balance_txt}}) {
        field->setFixedWidth(90);
        pgrid->addWidget(label(QLatin1String(caption), QString(), this), r, 0);
        pgrid->addWidget(field, r++, 1);
    }
    pgrid->addWidget(PaidFull_chk, r, 0, 1, 2);
    bottom->addWidget(payment);
    layout->addLayout(bottom);
}

void frmAddInv::buildCommands(QVBoxLayout* layout)
{
    auto* commands = new QHBoxLayout;
    commands->addStretch();
    update_cmd = new QPushButton(QStringLiteral("&Update"), this);
    update_cmd->setObjectName(QStringLiteral("update_cmd"));
    update_cmd->setDefault(true);
    Exit_cmd = new QPushButton(QStringLiteral("&Cancel"), this);
    Exit_cmd->setObjectName(QStringLiteral("Exit_cmd"));
    Exit_cmd->setAutoDefault(false);
    commands->addWidget(update_cmd);
    commands->addWidget(Exit_cmd);
    layout->addLayout(commands);
}

// The item picker floats over the lines, under the row that opened it.
void frmAddInv::buildPicker()
{
    part_frame = new QFrame(this);
    part_frame->setObjectName(QStringLiteral("part_frame"));
    part_frame->setFrameStyle(QFrame::Box | QFrame::Raised);
    part_frame->setAutoFillBackground(true);
    part_frame->resize(620, 220);
    auto* picker = new QVBoxLayout(part_frame);
    auto* search = new QHBoxLayout;
    search->addWidget(label(QStringLiteral("Search:"), QString(), part_frame));
    Search_txt = box(QStringLiteral("Search_txt"), 20, Qt::AlignLeft, part_frame);
    search->addWidget(Search_txt, 1);
    Search_cmd = new QPushButton(style()->standardIcon(QStyle::SP_FileDialogContentsView), QString(), part_frame);
    Search_cmd->setObjectName(QStringLiteral("Search_cmd"));
    select_cmd = new QPushButton(QStringLiteral("Select"), part_frame);
    select_cmd->setObjectName(QStringLiteral("select_cmd"));
    for (QPushButton* b : {Search_cmd, select_cmd}) {
        b->setAutoDefault(false);
        search->addWidget(b);
    }
    picker->addLayout(search);
    parts_lst = new ListView({QStringLiteral("Item ID"), QStringLiteral("Short Desciption"), QStringLiteral("Price"),
                              QStringLiteral("Long Desc"), QStringLiteral("Taxable")},
                             part_frame);
    parts_lst->setObjectName(QStringLiteral("parts_lst"));
    picker->addWidget(parts_lst);
    part_frame->hide();
    ListConfig config;
    config.furtherColumns = 2;
    pickerRules_ = new ListRules(parts_lst, config, objectName());
    pickerRules_->attachSearch(Search_txt, Search_cmd, false);
    pickerRules_->setSource(
        {QStringLiteral("Parts"),
         {"Id", "shortdesc", "Price", "Desc", "Taxable"},
         {"Id"},
         [](const Record& rs) {
             return QStringList{
                 rs.field(QStringLiteral("Id")).toText(), Null_to_text(rs.field(QStringLiteral("shortdesc"))),
                 Format_amount(Null_to_zero(rs.field(QStringLiteral("Price"))), 7, 2),
                 Null_to_text(rs.field(QStringLiteral("Desc"))), Null_to_text(rs.field(QStringLiteral("Taxable")))};
         }},
        QStringLiteral("ID"));
}

// What each control does.
void frmAddInv::connectEvents()
{
    for (int i = 0; i < Lines; ++i) {
        for (QWidget* c :
             std::initializer_list<QWidget*>{PartID_txt[i], Qty_txt[i], Desc_txt[i], Amount_txt[i], Check1[i], tax[i]})
            c->installEventFilter(this);
        onKeyPress(Qty_txt[i], [e = Qty_txt[i]](int k) { return numberKey(k, e->text(), false); });
        onKeyPress(Amount_txt[i], [e = Amount_txt[i]](int k) { return numberKey(k, e->text(), true); });
        for (QLineEdit* e : {Qty_txt[i], Amount_txt[i]})
            onKeyUp(e, [this](int, int) { Calc_Totals(); });
        connect(Check1[i], &QCheckBox::toggled, this, [this, i] { Check1_Click(i); });
        connect(tax[i], &QCheckBox::toggled, this, &frmAddInv::Calc_Totals);
    }
    for (QLineEdit* e : {Discount2_txt, Paid_txt, Writtenoff_txt}) {
        onKeyPress(e, [e](int k) { return numberKey(k, e->text(), true); });
        onKeyUp(e, [this](int, int) { Calc_Totals(); });
    }
    for (QWidget* c : std::initializer_list<QWidget*>{Inv_lbl, Date_txt, Notes_chk, notes_txt, SalesPerson_txt,
                                                      SalesOrder_txt, Shipped_txt, TrackingNo_txt, Discount2_txt,
                                                      Paid_txt, Writtenoff_txt, Balance_txt})
        c->installEventFilter(this);
    connect(PaidFull_chk, &QCheckBox::toggled, this, &frmAddInv::PaidFull_chk_Click);
    connect(select_cmd, &QPushButton::clicked, this, &frmAddInv::Pick_Item);
    connect(parts_lst, &ListView::doubleClicked, this, &frmAddInv::Pick_Item);
    // Any character picks at once: the list has no type-ahead.
    onKeyPress(parts_lst, [this](int) {
        Pick_Item();
        return 0;
    });
    connect(update_cmd, &QPushButton::clicked, this, &frmAddInv::Update_cmd_Click);
    connect(Exit_cmd, &QPushButton::clicked, this, &frmAddInv::Exit_cmd_Click);
}

// A new invoice or the one handed over; the tax columns go when tax is off and unused.
void frmAddInv::openInvoice()
{
    Inv_lbl->setEnabled(false);
    if (EditInvoiceMode != 0)
        OldInvoice();
    else
        NewInvoice();
    if (settings.TaxEnabled == 0 && Val(vat_txt->text()) == 0)
        hideTaxColumns();
    Fill_Parts_List();
}

void frmAddInv::hideTaxColumns()
{
    // The description column takes their room, being the one that stretches.
    toptax->hide();
    for (int i = 0; i < Lines; ++i) {
        tax[i]->hide();
        tax1[i]->hide();
    }
}

void frmAddInv::NewInvoice()
{
    BusyTrap(objectName(), "NewInvoice", [this] {
        const bool freeForm = settings.FreeformInv == 1;
        Inv_lbl->setText(freeForm ? QString() : settings.InvPrefix.trimmed() + settings.Invstart.trimmed());
        Inv_lbl->setEnabled(freeForm);
        Cust_lbl->setText(PickedCustID.trimmed());
        Customername_lbl->setText(PickedFirstName.trimmed() + QLatin1Char(' ') + PickedLastName.trimmed());
        Date_txt->setDate(today());
        Label16->setText(PickedPhone.trimmed());
        StillOwes_lbl->hide();
        taxamount->setText(numberText(settings.TaxAmount));
        vat_lbl->setText(settings.TaxName.trimmed() + QStringLiteral(" @ ") + taxamount->text() + QLatin1Char('%'));
        for (QCheckBox* t : tax)
            t->setChecked(settings.TaxEnabled == 1);
    });
}

void frmAddInv::OldInvoice()
{
    BusyTrap(objectName(), "OldInvoice", [this] {
        const QString number = OpenInvoiceNo.trimmed();
        Recordset invoices, lines;
        invoices.open(QStringLiteral("Invoices"), ConnectionString, Recordset::adLockPessimistic);
        invoices.setIndex(QStringLiteral("InvNo"));
        lines.open(QStringLiteral("InvoiceD"), ConnectionString, Recordset::adLockPessimistic);
        lines.setIndex(QStringLiteral("InvNo"));
        invoices.seek(number);

        const auto amount = [&](const char* column) {
            return Format_amount(Null_to_zero(invoices.field(QLatin1String(column))), 7, 2);
        };
        const auto text = [&](const char* column) { return Null_to_text(invoices.field(QLatin1String(column))); };
        Inv_lbl->setText(invoices.field(QStringLiteral("InvNo")).toText());
        Cust_lbl->setText(invoices.field(QStringLiteral("CustNo")).toText());
        Date_txt->setDate(invoices.field(QStringLiteral("Date")).toDate().date());
        subtotal_txt->setText(amount("Subtotal"));
        vat_txt->setText(amount("Vat"));
        Discount2_txt->setText(invoices.field(QStringLiteral("DiscountPercentage")).toCurrency().toString());
        Discount_txt->setText(amount("Discount"));
        total_txt->setText(amount("Total"));
        Paid_txt->setText(amount("Paid"));
        Writtenoff_txt->setText(amount("WrittenOff"));
        Balance_txt->setText(amount("Balance"));
        notes_txt->setText(text("Notes"));
        Customername_lbl->setText(text("CustomerName"));
        Label16->setText(text("Phone"));
        SalesPerson_txt->setText(text("SalesPerson"));
        SalesOrder_txt->setText(text("SalesNo"));
        Shipped_txt->setText(text("ShippedNo"));
        TrackingNo_txt->setText(text("TrackingNo"));
        taxamount->setText(invoices.field(QStringLiteral("TaxPer")).toCurrency().toString());

        // The lines follow each other in the index; a ninth of one invoice is ignored.
        int row = 0;
        for (lines.seek(number); !lines.eof() && row < Lines; lines.moveNext(), ++row) {
            if (Null_to_text(lines.field(QStringLiteral("InvNo"))).trimmed() != number)
                break;
            const Currency qty = Null_to_zero(lines.field(QStringLiteral("Qty")));
            const Currency price = Null_to_zero(lines.field(QStringLiteral("Amount")));
            const Currency total = Null_to_zero(lines.field(QStringLiteral("Total")));
            Qty_txt[row]->setText(qty != Currency() ? qty.toString() : QString());
            PartID_txt[row]->setText(Null_to_text(lines.field(QStringLiteral("PartID"))));
            Desc_txt[row]->setText(Null_to_text(lines.field(QStringLiteral("Description"))));
            Amount_txt[row]->setText(price != Currency() ? Format_amount(price, 7, 2) : QString());
            tota1l_txt[row]->setText(total != Currency() ? Format_amount(total, 7, 2) : QStringLiteral("0.00"));
            if (Null_to_zero(lines.field(QStringLiteral("Taxable"))) != Currency())
                tax[row]->setChecked(true);
        }
        invoices.close();
        lines.close();

        Calc_Totals();
        if (Val(Balance_txt->text()) == 0 && Val(total_txt2->text()) > 0)
            PaidFull_chk->setChecked(true);
        vat_lbl->setText(settings.TaxName.trimmed() + QStringLiteral(" @ ") + taxamount->text() + QLatin1Char('%'));
    });
}

// Each time the window comes to the front.
void frmAddInv::Form_Activate()
{
    CurrentLine = 0;
    if (settings.FreeformInv != 1)
        Date_txt->setFocus();
    else if (EditInvoiceMode == 0)
        Inv_lbl->setFocus();
    const struct {
        QLabel* caption;
        QLineEdit* field;
        const QString& name;
        qint16 visible;
    } optional[] = {{SalesPerson_lbl, SalesPerson_txt, settings.text1Name, settings.text1Visible},
                    {SalesOrder_lbl, SalesOrder_txt, settings.text2Name, settings.text2Visible},
                    {Shipped_lbl, Shipped_txt, settings.text3Name, settings.text3Visible},
                    {TrackingNo_lbl, TrackingNo_txt, settings.text4Name, settings.text4Visible}};
    for (const auto& o : optional) {
        o.caption->setText(o.name.trimmed());
        o.caption->setVisible(o.visible == 1);
        o.field->setVisible(o.visible == 1);
    }
}

void frmAddInv::Fill_Parts_List()
{
    // Only the ids are read here; the rows' texts as the picker shows them.
    BusyTrap(objectName(), "Fill_Parts_List", [this] { pickerRules_->loadRows(false); });
}

// Which line control this is, and in which row.
frmAddInv::Place frmAddInv::placeOf(QObject* control) const
{
    for (int i = 0; i < Lines; ++i) {
        if (control == PartID_txt[i])
            return {Field::PartID, i};
        if (control == Qty_txt[i])
            return {Field::Qty, i};
        if (control == Desc_txt[i])
            return {Field::Desc, i};
        if (control == Amount_txt[i])
            return {Field::Amount, i};
        if (control == Check1[i])
            return {Field::Check, i};
        if (control == tax[i])
            return {Field::Tax, i};
    }
    return {Field::None, -1};
}

bool frmAddInv::eventFilter(QObject* watched, QEvent* event)
{
    if (unloaded_ || (event->type() != QEvent::FocusIn && event->type() != QEvent::FocusOut))
        return QDialog::eventFilter(watched, event);
    const Place place = placeOf(watched);
    if (event->type() == QEvent::FocusIn) {
        if (place.field != Field::None)
            lineFocus(place, static_cast<QWidget*>(watched));
        else if (watched == Discount2_txt)
            part_frame->hide();
        else if (watched != Paid_txt && watched != Writtenoff_txt && watched != Balance_txt)
            Close_Picker(); // a header field: the lines are left
    } else if (place.field != Field::None) {
        lineLeft(place);
    } else if (watched == Paid_txt || watched == Writtenoff_txt) {
        auto* e = static_cast<QLineEdit*>(watched);
        e->setText(amountText(Val(e->text())));
        Calc_Totals();
    } else if (watched == Balance_txt) {
        Balance_txt->setText(amountText(Val(Balance_txt->text())));
    }
    return QDialog::eventFilter(watched, event);
}

std::array<QWidget*, 7> frmAddInv::rowFields(int i) const
{
    return {PartID_txt[i], Blank[i], Qty_txt[i], Desc_txt[i], Amount_txt[i], tota1l_txt[i], tax1[i]};
}

// The row highlight: the row entered in one colour, the field itself in another.
void frmAddInv::lineFocus(Place place, QWidget* control)
{
    for (int i = 0; i < Lines; ++i)
        for (QWidget* c : rowFields(i))
            paint(c, White);
    if (place.field == Field::Check || place.field == Field::Tax)
        return;
    const int i = place.row;
    CurrentLine = qint16(i);
    for (QWidget* c : rowFields(i))
        paint(c, RowColour);
    paint(control, FocusColour);
    auto* e = static_cast<QLineEdit*>(control);
    QTimer::singleShot(0, e, &QLineEdit::selectAll);
    // The item ID keeps the picker open: the picker fills it.
    if (place.field != Field::PartID)
        part_frame->hide();
}

void frmAddInv::lineLeft(Place place)
{
    const int i = place.row;
    switch (place.field) {
    case Field::Amount:
        if (!Amount_txt[i]->text().trimmed().isEmpty()) {
            Amount_txt[i]->setText(amountText(Val(Amount_txt[i]->text())));
            Calc_Totals();
        }
        break;
    case Field::Qty:
    case Field::PartID:
        Calc_Totals();
        break;
    default:
        break;
    }
}

// The totals pass under the failure trap; a failure turns the busy pointer off before
// the trap reports it.
void frmAddInv::Calc_Totals()
{
    Trap(objectName(), "Calc_Totals", [this] {
        try {
            Calc();
        } catch (...) {
            Busy_off();
            throw;
        }
    });
}

// One plain pass over the eight rows. Every figure goes through its two-decimal text and
// is read back from it, so each step rounds as the invoice shows it; the tax alone is
// summed exactly, line by line at four decimals. A field is written only when its text
// changes, the pass being run on every key.
void frmAddInv::Calc()
{
    Currency taxSum;
    const bool taxed = settings.TaxAmount != 0;
    const double rate = Val(taxamount->text());
    QString subtotal = QStringLiteral("0");
    for (int i = 0; i < Lines; ++i) {
        const double qty = Val(Qty_txt[i]->text());
        const double price = Val(Amount_txt[i]->text());
        const QString line = amountText(qty == 0 ? price : qty * price);
        put(tota1l_txt[i], line);
        subtotal = amountText(Val(subtotal) + Val(line));
        // A line's tax keeps four decimals, through its general text form.
        if (taxed && price > 0 && tax[i]->isChecked())
            taxSum += Currency::fromDouble(Val(numberText(strictNumber(line) / 100 * rate)));
    }
    put(subtotal_txt, subtotal);
    const QString vat = taxed ? Format_amount(taxSum, 7, 2) : amountText(0);
    put(vat_txt, vat);
    const QString percent = Discount2_txt->text();
    const QString discount = percent.isEmpty()
                                 ? amountText(0)
                                 : amountText(strictNumber(subtotal) * (strictNumber(percent) / 100)).trimmed();
    put(Discount_txt, discount);
    const QString total = amountText((Val(subtotal) + Val(vat)) - Val(discount));
    put(total_txt, total);
    put(total_txt2, total);
    put(Balance_txt, amountText((Val(total) - Val(Writtenoff_txt->text())) - Val(Paid_txt->text())));
    Show_Balance();
}

void frmAddInv::Show_Balance()
{
    const bool total = strictNumber(total_txt->text()) != 0;
    const bool owing = strictNumber(Balance_txt->text()) != 0;
    Paid_lbl->setVisible(total && !owing);
    put(StillOwes_lbl, total && owing ? QStringLiteral("BALANCE: ") + Balance_txt->text().trimmed() : QString());
    StillOwes_lbl->setVisible(total && owing);
}

// Follows the tick, by hand or from an opened invoice; later changes leave it be.
void frmAddInv::PaidFull_chk_Click()
{
    Paid_txt->setText(PaidFull_chk->isChecked() ? total_txt2->text() : amountText(0));
    Close_Picker();
    Calc_Totals();
}

void frmAddInv::Check1_Click(int index)
{
    if (!Check1[index]->isChecked()) {
        part_frame->hide();
        return;
    }
    for (int i = 0; i < Lines; ++i)
        if (i != index)
            Check1[i]->setChecked(false);
    CurrentLine = qint16(index);
    part_frame->move(PartID_txt[index]->mapTo(this, QPoint(0, PartID_txt[index]->height())));
    part_frame->show();
    part_frame->raise();
    parts_lst->setFocus();
}

void frmAddInv::Pick_Item()
{
    const int row = pickerRules_->selected();
    if (row < 0)
        return;
    const int i = CurrentLine;
    PartID_txt[i]->setText(parts_lst->text(row, 0));
    Desc_txt[i]->setText(parts_lst->text(row, 3));
    Amount_txt[i]->setText(parts_lst->text(row, 2));
    if (settings.TaxEnabled == 1)
        tax[i]->setChecked(parts_lst->text(row, 4) == QLatin1String("1"));
    Calc_Totals();
    part_frame->hide();
    Check1[i]->setChecked(false);
    Qty_txt[i]->setFocus();
}

void frmAddInv::Close_Picker()
{
    for (QCheckBox* c : Check1)
        c->setChecked(false);
}

void frmAddInv::clearRow(int row)
{
    for (QLineEdit* e : {Qty_txt[row], PartID_txt[row], Desc_txt[row], Amount_txt[row]})
        e->clear();
}

void frmAddInv::Clear_Line()
{
    if (MsgBox(QStringLiteral("Are you sure you want to clear this line?"), vbYesNo + vbQuestion,
               QStringLiteral("Confirm")) != vbYes)
        return;
    clearRow(CurrentLine);
    Calc_Totals();
    PartID_txt[CurrentLine]->setFocus();
}

void frmAddInv::Clear_All()
{
    if (MsgBox(QStringLiteral("Are you very sure you want to clear all lines?"), vbYesNo + vbQuestion,
               QStringLiteral("Confirm")) != vbYes)
        return;
    for (int i = 0; i < Lines; ++i)
        clearRow(i);
    Calc_Totals();
    PartID_txt[0]->setFocus();
}

void frmAddInv::Toolbar1_ButtonClick(int place)
{
    Close_Picker();
    switch (place) {
    case 2:
        Open_window(WindowName::frm_Parts, this);
        Fill_Parts_List();
        break;
    case 4:
        Clear_Line();
        break;
    case 6:
        Clear_All();
        break;
    case 8:
        Print_Invoice();
        break;
    case 10:
        Open_window(WindowName::frmInvoiceSet, this);
        break;
    default:
        break;
    }
    Busy_off();
}

void frmAddInv::Update_cmd_Click()
{
    Trap(objectName(), "Update_cmd", [this] {
        if (settings.ConfirmAll == 0 && MsgBox(QStringLiteral("Are you sure you want to update?"), vbYesNo + vbQuestion,
                                               QStringLiteral("Continue?")) != vbYes)
            return;
        if (Inv_lbl->text().trimmed().isEmpty()) {
            noNumberBox();
            moveFocus(Inv_lbl);
            return;
        }
        if (EditInvoiceMode == 0 && CheckInvNo() == 1)
            return;
        // One transaction: a power cut leaves the invoice as it was or wholly saved.
        BusyTrap(objectName(), "Update_cmd",
                 [this] { Write_batch(Database::open(dataSourceOf(ConnectionString)), [this] { Save_invoice(); }); });
        done(1);
    });
}

void frmAddInv::noNumberBox()
{
    MsgBox(QStringLiteral(" Please enter an invoice number."), vbExclamation, QStringLiteral("Enter Invoice Number"));
}

int frmAddInv::CheckInvNo()
{
    int result = 0;
    Trap(objectName(), "CheckInvNo", [&] {
        const QString number = Inv_lbl->text().trimmed();
        if (number.isEmpty()) {
            noNumberBox();
            result = 1;
        } else if (Number_in_use(Series::Invoice, number)) {
            result = 1;
        }
    });
    return result;
}

void frmAddInv::Save_invoice()
{
    InvoiceSaved = 1;
    const QString number = Inv_lbl->text().trimmed();
    Recordset invoices, lines;
    invoices.open(QStringLiteral("Invoices"), ConnectionString, Recordset::adLockPessimistic);
    invoices.setIndex(QStringLiteral("INVNO"));
    lines.open(QStringLiteral("InvoiceD"), ConnectionString, Recordset::adLockPessimistic);
    invoices.seek(number);
    if (EditInvoiceMode == 0)
        invoices.addNew();
    const QList<QPair<const char*, Value>> header = {
        {"invno", number},
        {"Custno", Cust_lbl->text().trimmed()},
        {"Date", Date_txt->date()},
        {"Subtotal", subtotal_txt->text()},
        {"Vat", vat_txt->text()},
        {"Total", total_txt->text()},
        {"Discount", Format_amount(Discount_txt->text(), 7, 2)},
        {"Paid", Val(Paid_txt->text())},
        {"WrittenOff", Currency::fromDouble(Val(Writtenoff_txt->text()))},
        {"balance", Balance_txt->text()},
        {"Notes", notes_txt->text()},
        {"CustomerName", Customername_lbl->text()},
        {"DiscountPercentage", Currency::fromDouble(Val(Discount2_txt->text()))},
        {"SalesPerson", SalesPerson_txt->text().trimmed()},
        {"SalesNo", SalesOrder_txt->text().trimmed()},
        {"ShippedNo", Shipped_txt->text().trimmed()},
        {"TrackingNo", TrackingNo_txt->text().trimmed()},
        {"Phone", Label16->text()},
        {"TaxPer", settings.TaxAmount}};
    for (const auto& [column, value] : header)
        invoices.setField(QLatin1String(column), value);
    invoices.update();

    if (EditInvoiceMode != 0) {
        // The old lines stand together in the index on the number.
        lines.setIndex(QStringLiteral("InvNo"));
        for (lines.seek(number); !lines.eof(); lines.moveNext()) {
            const QString found = Null_to_text(lines.field(QStringLiteral("INVNO")));
            if (found.trimmed().compare(number, Qt::CaseInsensitive) != 0)
                break;
            if (found.trimmed() == number)
                lines.deleteRecord();
        }
    }
    for (int i = 0; i < Lines; ++i) {
        if (PartID_txt[i]->text().trimmed().isEmpty() && Qty_txt[i]->text().isEmpty() &&
            Desc_txt[i]->text().trimmed().isEmpty() && Amount_txt[i]->text().trimmed().isEmpty())
            continue;
        const double qty = Val(Qty_txt[i]->text());
        lines.addNew();
        lines.setField(QStringLiteral("invno"), number);
        lines.setField(QStringLiteral("Qty"), qty == 0 ? 1.0 : qty);
        lines.setField(QStringLiteral("PartID"), PartID_txt[i]->text().trimmed());
        lines.setField(QStringLiteral("Description"), Desc_txt[i]->text().trimmed());
        lines.setField(QStringLiteral("Amount"), Val(Amount_txt[i]->text()));
        lines.setField(QStringLiteral("Total"), Val(tota1l_txt[i]->text()));
        if (tax[i]->isChecked())
            lines.setField(QStringLiteral("Taxable"), 1);
        lines.update();
    }
    invoices.close();
    lines.close();

    // Only a new invoice that took the generated number moves the series on.
    if (settings.FreeformInv == 0 && EditInvoiceMode == 0)
        Advance_number(Series::Invoice, Inv_lbl->text());
}

void frmAddInv::Exit_cmd_Click()
{
    InvoiceSaved = 0;
    done(0);
}

void frmAddInv::done(int result)
{
    if (!unloaded_)
        LastInvoiceNo = InvoiceSaved == 1 ? Inv_lbl->text().trimmed() : QString();
    unloaded_ = true;
    QDialog::done(result);
}

// The close box leaves InvoiceSaved as it stands.
void frmAddInv::closeEvent(QCloseEvent* event)
{
    done(0);
    event->accept();
}
