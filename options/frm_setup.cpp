#include "options/frm_setup.h"

#include "options/SetupControls.h"
#include "platform/Platform.h"
#include "shell/Globals.h"
#include "store/Connection.h"
#include "store/Functions.h"
#include "store/Numbers.h"
#include "store/Recordset.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

using namespace platform;

namespace
{

const QString Module = QStringLiteral("frm_setup");

// The defaults of a first run that the row and the record both take.
const QString StatementDefault = QStringLiteral("Thank you for your business");
const QString TermsDefault = QStringLiteral(
    "Terms & Conditions:\nTo edit terms & conditions goto Options on the main menu and select the Invoice tab.");
const QString StartDefault = QStringLiteral("01/01/2005");
const char* const TextNames[4] = {"Sales Person", "Shipping No", "Sales No", "Tracking No"};

QLabel* heading(const char* name, const char* caption, QWidget* parent)
{
    auto* l = new QLabel(QLatin1String(caption), parent);
    l->setObjectName(QLatin1String(name));
    QFont f = l->font();
    f.setBold(true);
    l->setFont(f);
    return l;
}

} // namespace

frm_setup::frm_setup(QWidget* parent)
    : QDialog(parent), controls_(new SetupControls(this, false)), rs_(std::make_unique<Recordset>())
{
    setObjectName(Module);
    setWindowTitle(QStringLiteral("Company Setup"));
    setWindowFlag(Qt::WindowCloseButtonHint, false);
    auto* layout = new QVBoxLayout(this);
    auto* pages = new QGridLayout;
    const char* captions[] = {"Business Name and Address", "Currency and Date", "Prefixes"};
    const std::pair<const char*, const char*> headings[] = {{"Company_lbl", "Company Setup Part 1 of 3"},
                                                            {"Label7", "Company Setup Part 2 of 3"},
                                                            {"Label11", "Company Setup Part 3 of 3"}};
    for (int i = 0; i < 3; ++i) {
        Heading[i] = heading(headings[i].first, headings[i].second, this);
        Frame1[i] = new QGroupBox(QLatin1String(captions[i]), this);
        Frame1[i]->setObjectName(QStringLiteral("Frame1(%1)").arg(i));
        pages->addWidget(Heading[i], 0, 0);
        pages->addWidget(Frame1[i], 1, 0);
    }
    controls_->buildCompanyPage(Frame1[0]);
    controls_->buildCurrencyPage(Frame1[1], QString());
    controls_->buildPrefixPage(
        Frame1[2], {QStringLiteral("Start Number"), QStringLiteral("Item/Part:"), QStringLiteral("ITE"), true});
    layout->addLayout(pages);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    Back_cmd = button("Back_cmd", "&Back", this);
    Next_cmd = button("Next_cmd", "&Next", this);
    Finish_cmd = button("Finish_cmd", "&Finish", this);
    Cancel_cmd = button("Cancel_cmd", "&Cancel", this);
    for (QPushButton* b : {Back_cmd, Next_cmd, Finish_cmd, Cancel_cmd})
        buttons->addWidget(b);
    layout->addLayout(buttons);
    connect(Back_cmd, &QPushButton::clicked, this, &frm_setup::Back_cmd_Click);
    connect(Next_cmd, &QPushButton::clicked, this, &frm_setup::Next_cmd_Click);
    connect(Finish_cmd, &QPushButton::clicked, this, &frm_setup::Finish_cmd_Click);
    connect(Cancel_cmd, &QPushButton::clicked, this, &frm_setup::Cancel_cmd_Click);

    // Load: the first page, USA selected (its click alone fills anything), no tax rows.
    controls_->Option[0]->setChecked(true);
    Back_cmd->setEnabled(false);
    Finish_cmd->setVisible(false);
    controls_->Hide_Tax_Fields();
    Show_page();

    // Coming up: the answers go into the settings row, kept open to the end.
    controls_->Name_txt->setFocus();
    Trap(Module, "Form_Activate",
         [this] { rs_->open(QStringLiteral("system"), ConnectionString, Recordset::adLockPessimistic); });
}

frm_setup::~frm_setup() = default;

void frm_setup::closeEvent(QCloseEvent* event)
{
    event->ignore();
}

void frm_setup::Show_page()
{
    for (int i = 0; i < 3; ++i) {
        Heading[i]->setVisible(i == Page);
        Frame1[i]->setVisible(i == Page);
    }
}

void frm_setup::Next_cmd_Click()
{
    ++Page;
    Show_page();
    Back_cmd->setEnabled(true);
    if (Page == 2) {
        Next_cmd->setVisible(false);
        Finish_cmd->setVisible(true);
    }
}

void frm_setup::Back_cmd_Click()
{
    --Page;
    Show_page();
    if (Page == 0)
        Back_cmd->setEnabled(false);
    Next_cmd->setVisible(true);
    Finish_cmd->setVisible(false);
}

void frm_setup::Finish_cmd_Click()
{
    // The wizard's numbers are checked for length only: the tables are still empty.
    if (controls_->CheckNumberLength([] {}) == 1)
        return;
    if (MsgBox(QStringLiteral("Are you sure you want to update?"), vbYesNo + vbQuestion, QStringLiteral("Update?")) !=
        vbYes)
        return;
    Save_setup();
    rs_->close();
    SetupDone = 1;
    done(Accepted);
}

void frm_setup::Cancel_cmd_Click()
{
    if (MsgBox(QStringLiteral("Are you sure you want to cancel?"), vbYesNo + vbQuestion, QStringLiteral("Cancel?")) !=
        vbYes)
        return;
    rs_->close();
    SetupDone = 0;
    done(Rejected);
}

// No trap of its own: a failure here goes to the program's last resort.
void frm_setup::Save_setup()
{
    Busy_on();
    Recordset& rs = *rs_;
    if (rs.recordCount() <= 0)
        rs.addNew();
    else
        rs.moveFirst();
    // The credit prefix stays out of the row; it lasts for this run in the record.
    controls_->writeRow(rs, false);
    auto set = [&](const char* column, const Value& value) { rs.setField(QLatin1String(column), value); };
    set("DefaultStart", StartDefault);
    set("DefaultEnd", dateText(today())); // our short date form is DD/MM/YYYY
    set("Debtorstart", 0);
    for (int i = 1; i <= 3; ++i)
        rs.setField(QStringLiteral("Reminder%1").arg(i), Default_reminder(i));
    set("includeStatement", 1);
    set("includeterms", 1);
    set("includeshipping", 0);
    set("Statement", StatementDefault);
    set("terms1", TermsDefault);
    set("ConfirmBackup", 1);
    set("ConfirmAll", 0);
    for (const char* column : {"FaxVisible", "phoneVisible", "emailVisible", "shippingVisible", "mobileVisible",
                               "text1Visible", "text2Visible", "text3Visible", "text4Visible"})
        set(column, 1);
    for (int i = 0; i < 4; ++i)
        rs.setField(QStringLiteral("text%1Name").arg(i + 1), TextNames[i]);
    set("present", 1);
    set("InvoiceType", "1");
    rs.update();
    Busy_off();
    Settings();
}

// Load_settings does not run again in this run: the record takes the same answers.
void frm_setup::Settings()
{
    Trap(Module, "Settings", [this] {
        controls_->toSettings();
        SettingsRecord& s = settings;
        s.DefaultStart = StartDefault;
        s.DefaultEnd = dateText(today());
        s.Debtorstart = 0;
        s.Reminder1 = Default_reminder(1);
        s.Reminder2 = Default_reminder(2);
        s.Reminder3 = Default_reminder(3);
        s.IncludeStatement = 1;
        s.IncludeTerms = 1;
        s.IncludeShipping = 0;
        s.Statement = StatementDefault;
        s.terms1 = TermsDefault;
        s.ConfirmBackup = 1;
        s.ConfirmAll = 0;
        s.FaxVisible = s.phoneVisible = s.emailVisible = s.shippingVisible = s.mobileVisible = 1;
        s.text1Visible = s.text2Visible = s.text3Visible = s.text4Visible = 1;
        s.text1Name = QLatin1String(TextNames[0]);
        s.text2Name = QLatin1String(TextNames[1]);
        s.text3Name = QLatin1String(TextNames[2]);
        s.text4Name = QLatin1String(TextNames[3]);
        s.Present = 1;
        s.InvoiceType = QStringLiteral("1");
    });
}
