#include "options/frm_setup.h"

#include "options/SetupControls.h"
#include "platform/Activation.h"
#include "platform/Platform.h"
#include "platform/Window.h"
#include "store/Connection.h"
#include "store/Functions.h"
#include "store/Globals.h"
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
    // Sized once for its largest page with the tax rows shown, so nothing moves later.
    for (QWidget* w : std::initializer_list<QWidget*>{Frame1[0], Frame1[1], Frame1[2], Heading[0], Heading[1],
                                                      Heading[2], Next_cmd, Finish_cmd})
        keepRoomWhenHidden(w);
    controls_->keepTaxRoom();
    centreWindow(this);

    onActivate(this, [this] { Form_Activate(); });
}

// The first time the window comes up: the answers go into the settings row, kept open
// to the end.
void frm_setup::Form_Activate()
{
    if (rs_->isOpen())
        return;
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

// What Finish writes: the answers, and the program's default for everything else.
SettingsValues frm_setup::Setup_values() const
{
    SettingsValues v = controls_->values();
    v += SettingsValues{{"DefaultStart", StartDefault},
                        {"DefaultEnd", dateText(today())}, // our short date form is DD/MM/YYYY
                        {"Debtorstart", 0},
                        {"Reminder1", Default_reminder(1)},
                        {"Reminder2", Default_reminder(2)},
                        {"Reminder3", Default_reminder(3)},
                        {"includeStatement", 1},
                        {"includeterms", 1},
                        {"includeshipping", 0},
                        {"Statement", StatementDefault},
                        {"terms1", TermsDefault},
                        {"ConfirmBackup", 1},
                        {"ConfirmAll", 0}};
    for (const char* column : {"FaxVisible", "phoneVisible", "emailVisible", "shippingVisible", "mobileVisible",
                               "text1Visible", "text2Visible", "text3Visible", "text4Visible"})
        v.append({QLatin1String(column), 1});
    for (int i = 0; i < 4; ++i)
        v.append({QStringLiteral("text%1Name").arg(i + 1), TextNames[i]});
    v += SettingsValues{{"present", 1}, {"InvoiceType", "1"}};
    return v;
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
    SettingsValues row = Setup_values();
    row.removeIf([](const auto& value) { return value.first == QLatin1String("CrdPrefix"); });
    writeSettings(rs, row);
    rs.update();
    Busy_off();
    Settings();
}

// Load_settings does not run again in this run: the record takes the same answers.
void frm_setup::Settings()
{
    Trap(Module, "Settings", [this] { copySettings(Setup_values()); });
}
