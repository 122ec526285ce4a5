#include "options/frmOptions.h"

#include "options/InvoiceOptions.h"
#include "options/SetupControls.h"
#include "platform/Activation.h"
#include "platform/DateBox.h"
#include "platform/Keys.h"
#include "platform/Platform.h"
#include "platform/Window.h"
#include "store/Connection.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/Numbering.h"
#include "store/Numbers.h"
#include "store/Recordset.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDateEdit>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QVBoxLayout>

using namespace platform;

namespace
{

const QString Module = QStringLiteral("frmOptions");

} // namespace

frmOptions::frmOptions(QWidget* parent)
    : QDialog(parent), c_(new SetupControls(this, true)), io_(new InvoiceOptions(this, true)),
      rs_(std::make_unique<Recordset>())
{
    setObjectName(Module);
    setWindowTitle(QStringLiteral("Options"));
    resize(780, 500);
    auto* layout = new QVBoxLayout(this);

    tbsOptions = named(new QTabBar(this), "tbsOptions");
    const char* tabs[8][3] = {
        {"Company", "Set Name & Address", "Business Name and Address"},
        {"Currency", "Set Options for Currency and Tax", "Currency and Date"},
        {"Prefixes", "Set Options for Prefixes", "Prefixes"},
        {"Set Defaults", "Set Options for Defaults", "Defaults"},
        {"Invoice 1", "Set Options for Invoice Layout", "Invoice 1  Layout"},
        {"Invoice 2", "Set Options for Invoice Layout", "Invoice 2  Layout"},
        {"Reminders", "Set Options for Reminders", "Reminders"},
        {"Customize", "", "Customize Screens"},
    };
    auto* pages = new QGridLayout;
    for (int i = 0; i < 8; ++i) {
        tbsOptions->addTab(QLatin1String(tabs[i][0]));
        tbsOptions->setTabToolTip(i, QLatin1String(tabs[i][1]));
        Frame1[i] = new QGroupBox(QLatin1String(tabs[i][2]), this);
        Frame1[i]->setObjectName(QStringLiteral("Frame1(%1)").arg(i));
        pages->addWidget(Frame1[i], 0, 0);
    }
    layout->addWidget(tbsOptions);
    layout->addLayout(pages);
    c_->buildCompanyPage(Frame1[0]);
    c_->buildCurrencyPage(Frame1[1], QStringLiteral("$"));
    c_->buildPrefixPage(Frame1[2],
                        {QStringLiteral("Next Number"), QStringLiteral("Itrem\\Part:"), QStringLiteral("PRT"), false});
    auto* check = button("CheckRanges_cmd", "Check Prefix Numbers", Frame1[2]);
    static_cast<QGridLayout*>(Frame1[2]->layout())->addWidget(check, 6, 0, 1, 2);
    connect(check, &QPushButton::clicked, this, &frmOptions::CheckRanges_cmd_Click);
    buildDefaultsPage(Frame1[3]);
    buildInvoicePage(Frame1[4]);
    buildLayoutPage(Frame1[5]);
    buildRemindersPage(Frame1[6]);
    buildCustomizePage(Frame1[7]);
    bindOwnControls();

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    auto* ok = button("cmdOK", "OK", this);
    auto* cancel = button("cmdCancel", "Cancel", this);
    auto* apply = button("cmdApply", "Apply", this);
    for (QPushButton* b : {ok, cancel, apply})
        buttons->addWidget(b);
    layout->addLayout(buttons);
    connect(ok, &QPushButton::clicked, this, &frmOptions::cmdOK_Click);
    connect(cancel, &QPushButton::clicked, this, &frmOptions::cmdCancel_Click);
    connect(apply, &QPushButton::clicked, this, &frmOptions::cmdApply_Click);
    connect(tbsOptions, &QTabBar::currentChanged, this, &frmOptions::showFrame);
    showFrame(0);
    // Sized once for its largest page, so that no page is cut.
    for (QGroupBox* frame : Frame1)
        keepRoomWhenHidden(frame);
    c_->keepTaxRoom();

    // The window sees Ctrl+Tab before any of its controls.
    installEventFilter(this);
    for (QWidget* w : findChildren<QWidget*>())
        w->installEventFilter(this);

    // Opening: the logo, and the country of the currency in use, as if clicked; what
    // the click writes is overwritten by the row below.
    if (QFileInfo(settings.Logopath).isFile())
        io_->Load_picture(settings.Logopath);
    const int country = settings.Currency == QStringLiteral("$")        ? 0
                        : settings.Currency == QStringLiteral("\u00a3") ? 1
                                                                        : 2;
    c_->Option[country]->setChecked(true);
    c_->Option_Click(country);

    centreWindow(this);
    onActivate(this, [this] { Form_Activate(); });
}

// Each time the window comes to the front.
void frmOptions::Form_Activate()
{
    c_->Name_txt->setFocus();
    Trap(Module, "Form_Activate",
         [this] { rs_->open(QStringLiteral("system"), ConnectionString, Recordset::adLockPessimistic); });
    Load_system();
    Settings();
    io_->Tick_Captions();
}

frmOptions::~frmOptions() = default;

void frmOptions::buildDefaultsPage(QGroupBox* frame)
{
    auto* grid = new QGridLayout(frame);
    auto picker = [&](const char* name) {
        auto* p = named(new platform::DateBox(frame), name);
        p->setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
        p->setCalendarPopup(true);
        p->setDate(today()); // a picker starts on today until the row says otherwise
        return p;
    };
    DTPicker1 = picker("DTPicker1");
    DTPicker2 = picker("DTPicker2");
    Present_chk = tick("Present_chk", "Present Date", frame);
    DebtorStart = tick("DebtorStart", "Debtors to display at Startup", frame);
    confirmBackup_chk = tick("confirmBackup_chk", "Check for Backup on Exit", frame);
    ConfirmAll_chk = tick("ConfirmAll_chk", "Remove all Confirmation Questions", frame);
    grid->addWidget(new QLabel(QStringLiteral("Default Start Date:"), frame), 0, 0);
    grid->addWidget(DTPicker1, 0, 1);
    grid->addWidget(new QLabel(QStringLiteral("Default End Date:"), frame), 1, 0);
    grid->addWidget(DTPicker2, 1, 1);
    grid->addWidget(named(new QLabel(QStringLiteral("OR"), frame), "Label24"), 1, 2);
    grid->addWidget(Present_chk, 1, 3);
    grid->addWidget(DebtorStart, 2, 0, 1, 4);
    grid->addWidget(confirmBackup_chk, 3, 0, 1, 4);
    grid->addWidget(ConfirmAll_chk, 4, 0, 1, 4);
    grid->setRowStretch(5, 1);
    connect(Present_chk, &QCheckBox::clicked, this, [this](bool ticked) { DTPicker2->setEnabled(!ticked); });
}

void frmOptions::buildInvoicePage(QGroupBox* frame)
{
    io_->buildLayout(frame, 100, 200);
    c_->selectOnFocus(io_->statement_txt);
    c_->selectOnFocus(io_->terms_txt);
}

void frmOptions::buildLayoutPage(QGroupBox* frame)
{
    auto* grid = new QGridLayout(frame);
    auto* types = named(new QGroupBox(QStringLiteral("Invoice Type"), frame), "Frame3");
    io_->buildInvoiceTypes(types, "Opt");
    grid->addWidget(types, 0, 0, 3, 1);
    io_->buildLogo(frame, grid, "Label3");
}

void frmOptions::buildRemindersPage(QGroupBox* frame)
{
    auto* grid = new QGridLayout(frame);
    const char* captions[] = {"First Reminder", "Second Reminder", "Final Reminder"};
    for (int i = 0; i < 3; ++i) {
        Reminder[i] = memoBox(QStringLiteral("Reminder%1").arg(i + 1), 250, frame);
        c_->selectOnFocus(Reminder[i]);
        grid->addWidget(new QLabel(QLatin1String(captions[i]), frame), 2 * i, 0);
        grid->addWidget(Reminder[i], 2 * i + 1, 0);
    }
    auto* restore = button("RestoreReminders_cmd", "Restore Defaults", frame);
    grid->addWidget(restore, 6, 0, Qt::AlignRight);
    connect(restore, &QPushButton::clicked, this, &frmOptions::RestoreReminders_cmd_Click);
}

void frmOptions::buildCustomizePage(QGroupBox* frame)
{
    auto* layout = new QHBoxLayout(frame);
    auto* invoice = named(new QGroupBox(QStringLiteral("Invoice Screen"), frame), "Frame4");
    auto* invoiceGrid = new QGridLayout(invoice);
    io_->buildScreenFields(invoice, invoiceGrid, 0);
    auto* customer = named(new QGroupBox(QStringLiteral("Customer Screen"), frame), "Frame5");
    auto* customerLayout = new QVBoxLayout(customer);
    customerTicks_ = customerScreenTicks(customer, customerLayout);
    layout->addWidget(invoice);
    layout->addWidget(customer);
}

// The controls of the pages that neither the wizard nor "Customize Options" has, with
// their columns. The texts here read a Null as empty.
void frmOptions::bindOwnControls()
{
    const std::pair<const char*, QCheckBox*> ticks[] = {{"present", Present_chk},
                                                        {"Debtorstart", DebtorStart},
                                                        {"ConfirmBackup", confirmBackup_chk},
                                                        {"ConfirmAll", ConfirmAll_chk}};
    for (const auto& [column, box] : ticks)
        c_->bind(column, box, Binding::Tick, Binding::Direct);
    for (const CustomerScreenTick& t : customerTicks_)
        c_->bind(t.column, t.box, Binding::Tick, Binding::Direct);
    const std::pair<const char*, QWidget*> texts[] = {
        {"Reminder1", Reminder[0]}, {"Reminder2", Reminder[1]}, {"Reminder3", Reminder[2]}};
    for (const auto& [column, box] : texts)
        c_->bind(column, box, Binding::Trim, Binding::Empty);
}

void frmOptions::showFrame(int index)
{
    for (int i = 0; i < 8; ++i)
        Frame1[i]->setVisible(i == index);
}

bool frmOptions::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Tab && key->modifiers() == Qt::ControlModifier) {
            tbsOptions->setCurrentIndex((tbsOptions->currentIndex() + 1) % tbsOptions->count());
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmOptions::Load_system()
{
    BusyTrap(Module, "Load_system", [this] {
        Recordset& rs = *rs_;
        if (rs.recordCount() <= 0) {
            io_->Default_Includes();
            Restore_Reminders();
            return;
        }
        rs.moveFirst();
        c_->loadRow(rs);
        if (c_->TaxEnabled_chk->isChecked())
            c_->Show_Tax_Fields();
        else
            c_->Hide_Tax_Fields();
        const QString start = Null_to_text(rs.field(QStringLiteral("DefaultStart")));
        DTPicker1->setDate(Value(start.isEmpty() ? QStringLiteral("01/01/2005") : start).toDate().date());
        DTPicker2->setDate(Value(Null_to_text(rs.field(QStringLiteral("DefaultEnd")))).toDate().date());
        DTPicker2->setEnabled(!Present_chk->isChecked());
        io_->loadLayout(rs);
        io_->loadScreenFields(rs);
    });
    c_->Show_Number_Boxes();
    io_->Show_Sample();
    c_->ShowExamples();
}

void frmOptions::Update()
{
    BusyTrap(Module, "Update", [this] {
        Recordset& rs = *rs_;
        if (rs.recordCount() <= 0)
            rs.addNew();
        else
            rs.moveFirst();
        writeSettings(rs, Option_values());
        rs.update();
        Settings();
    });
}

void frmOptions::Settings()
{
    Trap(Module, "Settings", [this] { copySettings(Option_values()); });
}

// What OK and Apply save, by column.
SettingsValues frmOptions::Option_values() const
{
    SettingsValues v = c_->values();
    v += SettingsValues{{"DefaultStart", dateText(DTPicker1->date())}, {"DefaultEnd", dateText(DTPicker2->date())}};
    v += io_->values();
    return v;
}

void frmOptions::Restore_Reminders()
{
    for (int i = 0; i < 3; ++i)
        Reminder[i]->setText(Default_reminder(i + 1));
}

// The Prefixes page comes up over the others while the tab strip keeps its tab.
int frmOptions::CheckNumberLength()
{
    return c_->CheckNumberLength([this] { showFrame(2); });
}

int frmOptions::CheckNo(Series series)
{
    const SetupControls::NumberRow& row = series == Series::Invoice    ? c_->inv
                                          : series == Series::Customer ? c_->cus
                                                                       : c_->prt;
    int inUse = 0;
    Trap(Module,
         series == Series::Invoice    ? "CheckInvNo"
         : series == Series::Customer ? "CheckCustNo"
                                      : "CheckItemNo",
         [&] { inUse = Number_in_use(series, row.prefix->text() + row.start->text()) ? 1 : 0; });
    return inUse;
}

int frmOptions::CheckInvNo()
{
    return CheckNo(Series::Invoice);
}
int frmOptions::CheckCustNo()
{
    return CheckNo(Series::Customer);
}
int frmOptions::CheckItemNo()
{
    return CheckNo(Series::Item);
}

int frmOptions::Check_numbers()
{
    if (CheckNumberLength() == 1)
        return 1;
    const std::pair<Series, const SetupControls::NumberRow*> order[] = {
        {Series::Invoice, &c_->inv}, {Series::Item, &c_->prt}, {Series::Customer, &c_->cus}};
    for (const auto& [series, row] : order) {
        if (row->freeForm->isChecked() || CheckNo(series) == 0)
            continue;
        showFrame(2);
        row->start->setFocus();
        return 1;
    }
    return 0;
}

void frmOptions::CheckRanges_cmd_Click()
{
    if (Check_numbers() == 0)
        MsgBox(QStringLiteral("All prefix numbers are OK"), vbInformation, QStringLiteral("All OK"));
}

void frmOptions::cmdApply_Click()
{
    if (Check_numbers() == 0)
        Update();
}

void frmOptions::cmdOK_Click()
{
    if (Check_numbers() == 1)
        return;
    Update();
    rs_->close();
    accept();
}

void frmOptions::cmdCancel_Click()
{
    rs_->close();
    QDialog::reject();
}

void frmOptions::RestoreReminders_cmd_Click()
{
    if (MsgBox(QStringLiteral("Are you sure you want to restore default reminders"), vbYesNo + vbQuestion,
               QStringLiteral("Are You Sure?")) == vbYes)
        Restore_Reminders();
}
