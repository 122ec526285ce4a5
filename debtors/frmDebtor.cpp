#include "debtors/frmDebtor.h"

#include "help/Help_frm.h"
#include "platform/Activation.h"
#include "platform/Controls.h"
#include "platform/MemoBox.h"
#include "platform/Platform.h"
#include "report/Report.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/ListModel.h"
#include "store/ListRules.h"
#include "store/ListView.h"
#include "store/Numbers.h"
#include "store/Opener.h"
#include "store/Recordset.h"
#include "store/SettingsTable.h"
#include "store/ShapeRecordset.h"

#include <QAction>
#include <QCheckBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QToolBar>
#include <QVBoxLayout>

using namespace platform;

namespace
{

// Columns of debtor_lst.
enum { ColCustID, ColCustomer, ColPhone, ColInvNo, Col30, Col60, Col61, ColNotes, ColReminders };

// Columns of the query that chooses its rows.
enum { QId, QBalance, QInvoiceDate, QCustNo, QCustID, QUnreadable };

const QString NoLetters = QStringLiteral("No letters to print.");

// The period of an invoice of this age in days: 0 for up to 29 days, 1 for 31 to 59,
// 2 for 61 and over, -1 for none. Days 30 and 60 and dates to come belong to no period.
// The age counts whole days, a time of day rounding half to even.
int agePeriod(double days)
{
    const qint16 age = toInt16(days);
    if (age >= 0 && age <= 29)
        return 0;
    if (age >= 31 && age <= 59)
        return 1;
    if (age >= 61)
        return 2;
    return -1;
}

// The period an invoice owing this balance on this day stands in, or -1.
int owingPeriod(const Value& balance, const Value& date, double day)
{
    if (Null_to_zero(balance) <= Currency())
        return -1;
    return agePeriod(day - date.toDouble());
}

// A row of the list: the invoice's customer, and its balance in the period of its age.
// Two of a row's three amounts are empty: their text is made once.
ListModel::Source debtorRows(const std::shared_ptr<Recordset>& customers, double day)
{
    const QString empty = Format_amount(Currency(), 7, 2);
    return {QStringLiteral("Invoices"),
            {"InvNo", "Balance", "Date", "CustNo", "Notes", "ReminderSent"},
            {},
            [customers, day, empty](const Record& invoice) {
                const Value balance = invoice.field(QStringLiteral("Balance"));
                const int period = owingPeriod(balance, invoice.field(QStringLiteral("Date")), day);
                QStringList amounts{empty, empty, empty};
                if (period >= 0)
                    amounts[period] = Format_amount(Null_to_zero(balance), 7, 2);
                customers->seek(invoice.field(QStringLiteral("CustNo")));
                return QStringList{customers->field(QStringLiteral("CustID")).toText(),
                                   customers->field(QStringLiteral("LastName")).toText() + QStringLiteral(", ") +
                                       customers->field(QStringLiteral("FirstName")).toText(),
                                   customers->field(QStringLiteral("Phone")).toText(),
                                   invoice.field(QStringLiteral("InvNo")).toText(),
                                   amounts[0],
                                   amounts[1],
                                   amounts[2],
                                   Null_to_text(invoice.field(QStringLiteral("Notes"))),
                                   Null_to_zero(invoice.field(QStringLiteral("ReminderSent"))).toString()};
            }};
}

// The address block of a letter: the parts that are not empty, one a line. A missing
// first line still leaves its line break.
QString addressBlock(const Recordset& customer)
{
    QString text = Null_to_text(customer.field(QStringLiteral("Address")));
    for (const char* part : {"Address2", "City", "address4", "Postcode"}) {
        const QString line = Null_to_text(customer.field(QLatin1String(part)));
        if (!line.isEmpty())
            text += QStringLiteral("\r\n") + line;
    }
    return text;
}

// The letter layout with the logo of the settings. An empty path means no logo; a
// path that gives no picture is a failure.
std::unique_ptr<report::Report> Letter_rpt()
{
    auto letter = report::Report::load(QStringLiteral(":/designs/Letter_rpt.rpt.json"));
    if (!settings.Logopath.isEmpty()) {
        letter->control(QStringLiteral("Header1"), QStringLiteral("Image1")).picture =
            report::loadPicture(settings.Logopath);
    }
    return letter;
}

// Amounts and counts stand right-aligned in their columns.
class RightAligned : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
    }
};

} // namespace

frmDebtor::frmDebtor(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmDebtor"));
    onActivate(this, [this] { Form_Activate(); });
    setWindowTitle(QStringLiteral("Aged Debtors"));
    resize(1000, 560);
    auto* layout = new QVBoxLayout(this);
    buildToolbar(layout);
    buildList(layout);
    buildTotals(layout);
    buildCommands(layout);
    buildLetterPanel();

    // Opening, under the hourglass.
    BusyTrap(objectName(), "Load", [this] {
        debtor_chk->setChecked(settings.Debtorstart == 1);
        Load_list();
        Prepare_letters();
    });
}

// View, Letters and Help, with separators between them.
void frmDebtor::buildToolbar(QVBoxLayout* layout)
{
    Toolbar1 = new QToolBar(this);
    Toolbar1->setObjectName(QStringLiteral("Toolbar1"));
    Toolbar1->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    const struct {
        const char* caption;
        QStyle::StandardPixmap icon;
    } buttons[] = {{"View", QStyle::SP_FileDialogContentsView},
                   {"Letters", QStyle::SP_FileDialogDetailedView},
                   {"Help", QStyle::SP_DialogHelpButton}};
    int place = 1;
    for (const auto& b : buttons) {
        if (place > 1)
            Toolbar1->addSeparator()->setObjectName(QStringLiteral("Toolbar1(%1)").arg(place - 1));
        QAction* a = Toolbar1->addAction(style()->standardIcon(b.icon), QLatin1String(b.caption));
        a->setObjectName(QStringLiteral("Toolbar1(%1)").arg(place));
        connect(a, &QAction::triggered, this, [this, place] { Toolbar1_ButtonClick(place); });
        place += 2;
    }
    layout->addWidget(Toolbar1);
}

void frmDebtor::buildList(QVBoxLayout* layout)
{
    debtor_lst = new ListView({QStringLiteral("Cust ID"), QStringLiteral("Customer"), QStringLiteral("Phone No."),
                               QStringLiteral("Inv No"), QStringLiteral("0-30 Days"), QStringLiteral("31-60 Days"),
                               QStringLiteral("61+ Days"), QStringLiteral("Notes"), QStringLiteral("Reminders")},
                              this);
    debtor_lst->setObjectName(QStringLiteral("debtor_lst"));
    debtor_lst->rows()->setCheckable(true);
    const int widths[] = {100, 180, 110, 90, 90, 90, 90, 150, 70};
    for (int c = 0; c < 9; ++c)
        debtor_lst->setColumnWidth(c, widths[c]);
    auto* right = new RightAligned(debtor_lst);
    for (int c : {Col30, Col60, Col61, ColReminders})
        debtor_lst->setItemDelegateForColumn(c, right);
    connect(debtor_lst, &ListView::doubleClicked, this, [this] { OpenRow(); });
    rules_ = new ListRules(debtor_lst, ListConfig{}, objectName());
    layout->addWidget(debtor_lst, 1);
}

// The totals stand under the columns of their periods, wherever those are.
void frmDebtor::buildTotals(QVBoxLayout* layout)
{
    totalsStrip = new QWidget(this);
    totalsStrip->setMinimumHeight(48);
    auto label = [this](const QString& name, const QString& text) {
        auto* l = new QLabel(text, totalsStrip);
        l->setObjectName(name);
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        return l;
    };
    label(QStringLiteral("Label1"), QStringLiteral("Owed to you for each period:"));
    total30 = label(QStringLiteral("total30"), QString());
    total60 = label(QStringLiteral("total60"), QString());
    Total61 = label(QStringLiteral("Total61"), QString());
    label(QStringLiteral("Label2"), QStringLiteral("Total Owed:"));
    TotalG = label(QStringLiteral("TotalG"), QString());
    connect(debtor_lst->header(), &QHeaderView::sectionResized, this, &frmDebtor::placeTotals);
    connect(debtor_lst->header(), &QHeaderView::geometriesChanged, this, &frmDebtor::placeTotals);
    connect(debtor_lst->horizontalScrollBar(), &QScrollBar::valueChanged, this, &frmDebtor::placeTotals);
    layout->addWidget(totalsStrip);
}

// The selection buttons, the start-up tick and Exit.
void frmDebtor::buildCommands(QVBoxLayout* layout)
{
    auto* bottom = new QHBoxLayout;
    All_cmd = button(QStringLiteral("All_cmd"), QStringLiteral("Select All"), this);
    Select7_cmd = button(QStringLiteral("Select7_cmd"), QStringLiteral("30 Days"), this);
    Select14 = button(QStringLiteral("Select14"), QStringLiteral("30 -60 Days"), this);
    Select30 = button(QStringLiteral("Select30"), QStringLiteral("61+ Days"), this);
    Unselect_all = button(QStringLiteral("Unselect_all"), QStringLiteral("Unselect All"), this);
    for (QPushButton* b : {All_cmd, Select7_cmd, Select14, Select30, Unselect_all})
        bottom->addWidget(b);
    connect(All_cmd, &QPushButton::clicked, this, [this] { SelectPeriod(-1); });
    connect(Select7_cmd, &QPushButton::clicked, this, [this] { SelectPeriod(Col30); });
    connect(Select14, &QPushButton::clicked, this, [this] { SelectPeriod(Col60); });
    connect(Select30, &QPushButton::clicked, this, [this] { SelectPeriod(Col61); });
    connect(Unselect_all, &QPushButton::clicked, this, &frmDebtor::Unselect_all_Click);
    bottom->addSpacing(20);
    debtor_chk = tick(QStringLiteral("debtor_chk"), QStringLiteral("Show Debtors at Startup"), this);
    bottom->addWidget(debtor_chk);
    bottom->addStretch();
    Command1 = button(QStringLiteral("Command1"), QStringLiteral("&Exit"), this);
    bottom->addWidget(Command1);
    connect(Command1, &QPushButton::clicked, this, &QDialog::accept);
    layout->addLayout(bottom);
}

// The letter panel stands over the list, hidden until "Letters" shows it.
void frmDebtor::buildLetterPanel()
{
    Letter_frame = new QGroupBox(QStringLiteral("Letter Setup"), this);
    Letter_frame->setObjectName(QStringLiteral("Letter_frame"));
    Letter_frame->setAutoFillBackground(true);
    auto* grid = new QGridLayout(Letter_frame);
    auto* Picture1 = new QLabel(Letter_frame);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    Picture1->setPixmap(style()->standardIcon(QStyle::SP_FileDialogDetailedView).pixmap(48, 48));
    grid->addWidget(Picture1, 0, 0);
    auto* Label3 = new QLabel(QStringLiteral("Please select which reminder to send out. Then make sure its signed "
                                             "correctly. Once happy click OK to preview letters, otherwise press "
                                             "Cancel to Exit."),
                              Letter_frame);
    Label3->setObjectName(QStringLiteral("Label3"));
    Label3->setWordWrap(true);
    grid->addWidget(Label3, 0, 1, 1, 2);
    const char* options[] = {"1st Reminder", "2nd Reminder", "3rd Reminder"};
    for (int i = 0; i < 3; ++i) {
        Option[i] = new QRadioButton(QLatin1String(options[i]), Letter_frame);
        Option[i]->setObjectName(QStringLiteral("Option%1").arg(i + 1));
        grid->addWidget(Option[i], 1 + i, 0, Qt::AlignTop);
        Reminder[i] = new MemoBox(250, Letter_frame);
        Reminder[i]->setObjectName(QStringLiteral("Reminder%1").arg(i + 1));
        Reminder[i]->setFixedHeight(60);
        grid->addWidget(Reminder[i], 1 + i, 1, 1, 2);
    }
    Signed1_txt = new QLineEdit(QStringLiteral("Yours Sincerely"), Letter_frame);
    Signed1_txt->setObjectName(QStringLiteral("Signed1_txt"));
    grid->addWidget(Signed1_txt, 4, 1, 1, 2);
    auto* Signed_lbl = new QLabel(QStringLiteral("Signed:"), Letter_frame);
    Signed_lbl->setObjectName(QStringLiteral("Signed_lbl"));
    grid->addWidget(Signed_lbl, 5, 0);
    Signed_txt = new QLineEdit(Letter_frame);
    Signed_txt->setObjectName(QStringLiteral("Signed_txt"));
    grid->addWidget(Signed_txt, 5, 1, 1, 2);
    auto* buttonsRow = new QHBoxLayout;
    buttonsRow->addStretch();
    for (const auto& [name, caption] : {std::pair{"OK_cmd", "&OK"}, std::pair{"Cancel_cmd", "&Cancel"}}) {
        auto* b = new QPushButton(QLatin1String(caption), Letter_frame);
        b->setObjectName(QLatin1String(name));
        b->setAutoDefault(false);
        buttonsRow->addWidget(b);
        connect(b, &QPushButton::clicked, this,
                name == std::string_view("OK_cmd") ? &frmDebtor::OK_cmd_Click : &frmDebtor::Cancel_cmd_Click);
    }
    grid->addLayout(buttonsRow, 6, 0, 1, 3);
    grid->setColumnStretch(1, 1);
    Letter_frame->resize(560, 440);
    Letter_frame->hide();
}

// Each time the window comes to the front.
void frmDebtor::Form_Activate()
{
    if (debtor_lst->rowCount() > 0)
        debtor_lst->setFocus();
}

void frmDebtor::placeTotals()
{
    const int x0 = debtor_lst->geometry().x() - totalsStrip->geometry().x() + debtor_lst->viewport()->x();
    QHeaderView* header = debtor_lst->header();
    auto column = [&](int c) { return x0 + header->sectionViewportPosition(c); };
    const int row = 22;
    auto put = [&](const char* name, int left, int width, int top) {
        if (auto* l = totalsStrip->findChild<QLabel*>(QLatin1String(name)))
            l->setGeometry(left, top, width, row);
    };
    put("Label1", 0, std::max(0, column(Col30) - 6), 2);
    put("total30", column(Col30), header->sectionSize(Col30), 2);
    put("total60", column(Col60), header->sectionSize(Col60), 2);
    put("Total61", column(Col61), header->sectionSize(Col61), 2);
    put("Label2", 0, std::max(0, column(Col61) - 6), 2 + row);
    put("TotalG", column(Col61), header->sectionSize(Col61), 2 + row);
}

// Fills the list and the totals. The amounts are worked out here each time; they are
// not kept in the invoices. The list keeps the invoices it shows by id and reads their
// texts as they come into view.
void frmDebtor::Load_list()
{
    BusyTrap(objectName(), "Load_list", [this] {
        const double day = Value(today()).toDouble();
        const QString connection = ConnectionString;
        // The invoices in table order, each with its customer by one join on the
        // customer number's index, and whether its row has a Null it cannot show.
        const auto invoices = ShapeRecordset::open(
            QStringLiteral("SELECT i.rowid AS Id, i.Balance, i.Date, i.CustNo, c.CustID, "
                           "c.LastName IS NULL OR c.FirstName IS NULL OR c.Phone IS NULL OR i.InvNo IS NULL "
                           "FROM Invoices i LEFT JOIN Customers c ON c.CustID = i.CustNo ORDER BY i.rowid"),
            Database::open(dataSourceOf(connection)));
        auto customers = std::make_shared<Recordset>();
        customers->open(QStringLiteral("Customers"), connection, Recordset::adLockReadOnly);
        customers->setIndex(QStringLiteral("CUSTID"));
        debtor_lst->rows()->setSource(debtorRows(customers, day));
        debtor_lst->rows()->clear();
        Currency totals[3];
        std::vector<qint64> shown;
        for (; !invoices->eof(); invoices->moveNext()) {
            const Value balance = invoices->field(QBalance);
            const int period = owingPeriod(balance, invoices->field(QInvoiceDate), day);
            // The customer is the one whose number is the invoice's as it stands, as a
            // walk through the customers comparing each would find.
            const Value custId = invoices->field(QCustID);
            if (period >= 0 && !custId.isNull() && custId.toText() == invoices->field(QCustNo).toText()) {
                // A row that cannot be shown fails the whole list, which stays empty.
                if (invoices->field(QUnreadable).toLong() != 0)
                    return debtor_lst->rows()->setRows(connection, {}, invoices->field(QId).toLong());
                shown.push_back(invoices->field(QId).toLong());
            }
            if (period >= 0)
                totals[period] += Null_to_zero(balance);
        }
        // With no invoices at all the period totals stay blank.
        if (invoices->recordCount() > 0) {
            total30->setText(Format_amount(totals[0], 7, 2));
            total60->setText(Format_amount(totals[1], 7, 2));
            Total61->setText(Format_amount(totals[2], 7, 2));
        }
        debtor_lst->rows()->setRows(connection, shown);
        if (rules_->sorted())
            debtor_lst->rows()->sortByText(rules_->sortColumn(), rules_->sortOrder());
        // The grand total is the sum of the totals as they are shown.
        TotalG->setText(Format_amount(Val(total30->text()) + Val(total60->text()) + Val(Total61->text()), 7, 2));
        rules_->select(0);
    });
}

void frmDebtor::Toolbar1_ButtonClick(int place)
{
    Trap(objectName(), "ToolbarButton", [&] {
        switch (place) {
        case 1:
            OpenRow();
            break;
        case 3:
            if (tickedRows().isEmpty()) {
                MsgBox(NoLetters, vbExclamation, QStringLiteral("No Records"));
                break;
            }
            Letter_frame->move((width() - Letter_frame->width()) / 2, (height() - Letter_frame->height()) / 2);
            Letter_frame->show();
            Letter_frame->raise();
            DisableList();
            break;
        case 5:
            Show_help(this, QStringLiteral("debtors.htm"));
            break;
        default:
            break;
        }
    });
}

// A double click on a row or "View": the invoice in its window, then the list afresh.
void frmDebtor::OpenRow()
{
    const int row = rules_->selected();
    if (row < 0)
        return;
    OpenInvoiceNo = debtor_lst->text(row, ColInvNo);
    EditInvoiceMode = 1;
    Open_window(WindowName::frmAddInv, this);
    Load_list();
}

// The period buttons only add ticks; a row is in a period when its amount there reads
// back as a number other than zero.
void frmDebtor::SelectPeriod(int column)
{
    for (int i = 0; i < debtor_lst->rowCount(); ++i)
        if (column < 0 || Val(debtor_lst->text(i, column)) != 0)
            debtor_lst->rows()->setCheckState(i, Qt::Checked);
}

void frmDebtor::Unselect_all_Click()
{
    for (int i = 0; i < debtor_lst->rowCount(); ++i)
        debtor_lst->rows()->setCheckState(i, Qt::Unchecked);
}

QList<int> frmDebtor::tickedRows() const
{
    QList<int> rows;
    for (int i = 0; i < debtor_lst->rowCount(); ++i)
        if (debtor_lst->rows()->checkState(i) == Qt::Checked)
            rows << i;
    return rows;
}

// The panel's texts come from the settings; changes made there serve this visit only.
void frmDebtor::Prepare_letters()
{
    Reminder[0]->setText(settings.Reminder1);
    Reminder[1]->setText(settings.Reminder2);
    Reminder[2]->setText(settings.Reminder3);
    Signed_txt->setText(settings.BusinessName);
    Option[0]->setChecked(true);
}

void frmDebtor::EnableControls(bool on)
{
    for (QWidget* w : std::initializer_list<QWidget*>{Toolbar1, debtor_lst, debtor_chk, All_cmd, Unselect_all,
                                                      Select7_cmd, Select14, Select30, Command1})
        w->setEnabled(on);
}

void frmDebtor::Cancel_cmd_Click()
{
    Letter_frame->hide();
    EnableList();
}

void frmDebtor::OK_cmd_Click()
{
    EnableList();
    Build_table();
    Print_cmd();
    Letter_frame->hide();
    if (LettersShown)
        Update_reminders();
}

// Fills the Letters table afresh with one row for each ticked invoice, in the order
// the list shows them.
void frmDebtor::Build_table()
{
    BusyTrap(objectName(), "Build_table", [this] {
        Recordset letters;
        letters.open(QStringLiteral("letters"), ConnectionString, Recordset::adLockPessimistic);
        Recordset customers;
        customers.open(QStringLiteral("customers"), ConnectionString, Recordset::adLockReadOnly);
        customers.setIndex(QStringLiteral("CUSTID"));
        Recordset invoices;
        invoices.open(QStringLiteral("invoices"), ConnectionString, Recordset::adLockReadOnly);
        invoices.setIndex(QStringLiteral("INVNO"));
        letterCount = 0;
        Write_batch(Database::open(dataSourceOf(ConnectionString)), [&] {
            if (letters.recordCount() > 0) {
                for (letters.moveFirst(); !letters.eof(); letters.moveNext())
                    letters.deleteRecord();
            }
            for (int row : tickedRows()) {
                // The rows found are taken as they are: the list came from these tables.
                customers.seek(debtor_lst->text(row, ColCustID));
                letters.addNew();
                letters.setField(QStringLiteral("CustID"), customers.field(QStringLiteral("CustID")));
                letters.setField(QStringLiteral("FirstName"),
                                 Null_to_text(customers.field(QStringLiteral("FirstName"))) + QStringLiteral(" ") +
                                     Null_to_text(customers.field(QStringLiteral("LastName"))));
                letters.setField(QStringLiteral("Address"), addressBlock(customers));
                invoices.seek(debtor_lst->text(row, ColInvNo));
                for (const char* column : {"InvNo", "Date", "Total", "Paid", "WrittenOff", "Balance"})
                    letters.setField(QLatin1String(column), invoices.field(QLatin1String(column)));
                letterCount = toInt16(letterCount + 1.0);
                letters.update();
            }
        });
    });
}

// One letter a page from the Letters table, shown as a preview.
void frmDebtor::Print_cmd()
{
    std::unique_ptr<report::Report> letter;
    BusyTrap(objectName(), "Print_cmd", [&] {
        LettersShown = true;
        if (letterCount < 1) {
            MsgBox(NoLetters, vbExclamation, QStringLiteral("No Records"));
            LettersShown = false;
            return;
        }
        std::shared_ptr<ShapeRecordset> source;
        Open_shape(QStringLiteral("SHAPE {SELECT * FROM Letters} as details"), source);
        letter = Letter_rpt();
        letter->setDataSource(source);
        const QString crlf = QStringLiteral("\r\n");
        // The fixed texts keep their trailing blanks.
        letter->control(QStringLiteral("Header1"), QStringLiteral("companyadd"))
            .setCaption(settings.BusinessName.text() + crlf + settings.Address + crlf + settings.Phone.text());
        int chosen = 0;
        while (chosen < 2 && !Option[chosen]->isChecked())
            ++chosen;
        letter->control(QStringLiteral("details"), QStringLiteral("Main_lbl")).setCaption(Reminder[chosen]->text());
        letter->control(QStringLiteral("details"), QStringLiteral("signed1")).setCaption(Signed1_txt->text());
        letter->control(QStringLiteral("details"), QStringLiteral("Signed")).setCaption(Signed_txt->text());
        letter->control(QStringLiteral("details"), QStringLiteral("date_lbl")).setCaption(dateText(today()));
    });
    if (!letter)
        return;
    Trap(objectName(), "Print_cmd", [&] { report::Show(*letter); });
    letter->setDataSource(nullptr);
}

// Counts one more reminder on each ticked invoice, if the user says so.
void frmDebtor::Update_reminders()
{
    if (MsgBox(QStringLiteral("Do you want to update the amount of reminders sent for the invoices selected?"),
               vbYesNo + vbQuestion, QStringLiteral("Update Reminders Sent")) != vbYes)
        return;
    Trap(objectName(), "Update_reminders", [this] {
        Recordset invoices;
        invoices.open(QStringLiteral("invoices"), ConnectionString, Recordset::adLockPessimistic);
        invoices.setIndex(QStringLiteral("INVNO"));
        Write_batch(Database::open(dataSourceOf(ConnectionString)), [&] {
            for (int row : tickedRows()) {
                invoices.seek(debtor_lst->text(row, ColInvNo));
                if (invoices.eof())
                    continue;
                invoices.setField(QStringLiteral("ReminderSent"),
                                  Null_to_zero(invoices.field(QStringLiteral("ReminderSent"))) +
                                      Currency::fromTicks(Currency::Scale));
                invoices.update();
            }
        });
    });
    Load_list();
}

// Every way out stores the start-up choice, in the row and in the settings.
void frmDebtor::done(int result)
{
    if (!unloaded_)
        Form_Unload();
    unloaded_ = true;
    QDialog::done(result);
}

void frmDebtor::Form_Unload()
{
    Trap(objectName(), "Unload", [this] {
        Recordset rs;
        rs.open(QStringLiteral("system"), ConnectionString, Recordset::adLockPessimistic);
        if (rs.recordCount() > 0) {
            rs.moveFirst();
            const SettingsValues flag{{QStringLiteral("Debtorstart"), Value(qint64(debtor_chk->isChecked() ? 1 : 0))}};
            writeSettings(rs, flag);
            copySettings(flag);
            rs.update();
        }
        rs.close();
    });
}
