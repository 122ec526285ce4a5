#include "shell/frmMain.h"

#include "customers/frmAddCust.h"
#include "customers/frmCustomer.h"
#include "customers/frmsearchCust.h"
#include "invoices/frmInvoice.h"
#include "items/frm_Parts.h"
#include "options/frmOptions.h"
#include "options/frm_setup.h"
#include "platform/Activation.h"
#include "platform/Platform.h"
#include "safety/BackupRestore.h"
#include "shell/Globals.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Numbers.h"
#include "store/Recordset.h"
#include "store/Schema.h"

#include <QAction>
#include <QCloseEvent>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>
#include <cstdio>

using namespace platform;

namespace
{

const QString Module = QStringLiteral("frmMain");

QString dataFile()
{
    return programFile(QStringLiteral("data.mdb"));
}

} // namespace

QString plainConnectionString()
{
    return QStringLiteral("Provider='SQLite';Data Source='") + dataFile() + QStringLiteral("';");
}

QString shapeConnectionString()
{
    return QStringLiteral("Data Provider = SQLite;Data Source = ") + dataFile();
}

frmMain::frmMain(QWidget* parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Velk Invoice"));
    onActivate(this, [this] { MDIForm_Activate(); });
    resize(900, 600);

    auto action = [this](QMenu* menu, const char* name, const QString& caption) {
        QAction* a = caption == QLatin1String("-") ? menu->addSeparator() : menu->addAction(caption);
        a->setObjectName(QLatin1String(name));
        return a;
    };
    QMenu* file = menuBar()->addMenu(QStringLiteral("File"));
    file->setObjectName(QStringLiteral("mnuFile"));
    action(file, "mnuExport", QStringLiteral("&Export")); // the export window comes with the reports
    action(file, "mnusep", QStringLiteral("-"));
    connect(action(file, "MnuSave", QStringLiteral("&Save")), &QAction::triggered, this, &frmMain::MnuSave_Click);
    connect(action(file, "mnurestore", QStringLiteral("&Restore")), &QAction::triggered, this,
            &frmMain::mnurestore_Click);
    action(file, "mn", QStringLiteral("-"));
    connect(action(file, "mnuExit", QStringLiteral("&Exit")), &QAction::triggered, this, &QWidget::close);

    QMenu* tools = menuBar()->addMenu(QStringLiteral("Tools"));
    tools->setObjectName(QStringLiteral("mnuTools"));
    connect(action(tools, "mnuOptions", QStringLiteral("&Options")), &QAction::triggered, this, [this] {
        frmOptions window(this);
        showModal(window);
    });
    action(tools, "mnuWeb", QStringLiteral("&Web"));
    // Off by design: the import reads one fixed file and is not for everyday use.
    action(tools, "mnuImport", QStringLiteral("Import"))->setEnabled(false);

    auto* bar = new QToolBar(QStringLiteral("Toolbar1"), this);
    bar->setObjectName(QStringLiteral("Toolbar1"));
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    bar->setMovable(false);
    addToolBar(bar);
    const struct {
        const char* caption;
        QStyle::StandardPixmap icon;
    } buttons[] = {
        {"Customers", QStyle::SP_DirHomeIcon},     {"Invoices", QStyle::SP_FileDialogDetailedView},
        {"Add Invoice", QStyle::SP_FileIcon},      {"Reports", QStyle::SP_FileDialogContentsView},
        {"Debtors", QStyle::SP_MessageBoxWarning}, {"Items", QStyle::SP_FileDialogListView},
        {"Help", QStyle::SP_DialogHelpButton},     {"Exit", QStyle::SP_DialogCloseButton},
    };
    int index = 1;
    for (const auto& b : buttons) {
        if (index > 1) {
            QAction* sep = bar->addSeparator();
            sep->setObjectName(QStringLiteral("Toolbar1(%1)").arg(index - 1));
        }
        QAction* a = bar->addAction(style()->standardIcon(b.icon), QLatin1String(b.caption));
        a->setObjectName(QStringLiteral("Toolbar1(%1)").arg(index));
        connect(a, &QAction::triggered, this, [this, index] { Toolbar1_ButtonClick(index); });
        index += 2;
    }

    auto* status = new QStatusBar(this);
    status->setObjectName(QStringLiteral("StatusBar1"));
    setStatusBar(status);
    const QString panels[] = {QStringLiteral("Version 1.1"), ProductWebSite,
                              QStringLiteral("\"Auto invoice routine available in November\"")};
    for (int i = 0; i < 3; ++i) {
        auto* panel = new QLabel(panels[i], status);
        panel->setObjectName(QStringLiteral("Panel(%1)").arg(i + 1));
        panel->setToolTip(panels[i]);
        panel->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        status->addPermanentWidget(panel, i == 2 ? 1 : 0);
    }
}

void frmMain::MDIForm_Load()
{
    BusyTrap(Module, "Load", [this] {
        SetupDone = 0;
        // Only a plain file counts: a folder of that name is no data file.
        const QFileInfo info(dataFile());
        if (!info.exists() || !info.isFile())
            Create_database();
        else
            SetupDone = 1;
        ConnectionString = plainConnectionString();
        PlainConnection.open(ConnectionString);
        ShapeConnection.open(shapeConnectionString());
        if (SetupDone == 1)
            Load_settings();
        BackupDone = 0;
    });
}

// Builds the empty data file. It is made under a temporary name and put in place when
// complete, so that a start cut short never leaves half a file behind.
void frmMain::Create_database()
{
    const QString building = dataFile() + QStringLiteral(".new");
    std::shared_ptr<Database> db;
    // Each step may be retried, skipped or abandoned from the box, as the user chooses.
    auto step = [](const std::function<void()>& statement) {
        for (;;) {
            try {
                statement();
                return true;
            } catch (const VbError& e) {
                const int answer = MsgBox(e.description() + QStringLiteral("    Error No. ") +
                                              QString::number(e.number()) + QStringLiteral(" \r\n"),
                                          vbAbortRetryIgnore + vbCritical, QStringLiteral("Code Gen Error"));
                if (answer == vbAbort)
                    return false;
                if (answer == vbIgnore)
                    return true;
            }
        }
    };
    auto finish = [&] {
        if (db) {
            try {
                db->exec(QStringLiteral("COMMIT"));
            } catch (const VbError&) {
            }
            db.reset();
        }
    };
    QFile::remove(building);
    if (!step([&] {
            db = Database::create(building);
            db->exec(QStringLiteral("BEGIN"));
        }))
        return finish();
    for (const TableDef& table : schemaTables()) {
        for (const QString& sql : createStatements(table)) {
            if (!step([&] {
                    if (!db)
                        throw VbError(err::CannotOpenFile);
                    db->exec(sql);
                }))
                return finish();
        }
    }
    finish();
    step([&] {
        if (std::rename(QFile::encodeName(building).constData(), QFile::encodeName(dataFile()).constData()) != 0)
            throw VbError(err::PathFileAccess);
    });
}

void frmMain::Load_settings()
{
    BusyTrap(Module, "Load_settings", [] {
        Recordset rs;
        rs.open(QStringLiteral("system"), ConnectionString, Recordset::adLockPessimistic);
        if (rs.recordCount() <= 0) {
            SetupDone = 0;
            rs.close();
            return;
        }
        rs.moveFirst();
        auto text = [&](const char* column) { return Null_to_text(rs.field(QLatin1String(column))); };
        auto flag = [&](const char* column) {
            return toInt16(Null_to_zero(rs.field(QLatin1String(column))).toDouble());
        };
        // A Null in these is a failure, not a zero.
        auto strict = [&](const char* column) { return rs.field(QLatin1String(column)).toInt16(); };
        SettingsRecord& s = settings;
        s.BusinessName = text("BusinessName");
        s.Address = text("Address");
        s.Phone = text("Phone");
        s.Mobile = text("Mobile");
        s.Email = text("Email");
        s.Web = text("Web");
        s.InvPrefix = text("InvPrefix");
        s.CrdPrefix = text("CrdPrefix");
        s.CustPrefix = text("CustPrefix");
        s.PartPrefix = text("PartPrefix");
        s.CustStart = text("CustStart");
        s.Invstart = text("Invstart");
        s.CrdStart = text("CrdStart");
        s.PartStart = text("PartStart");
        s.Currency = text("Currency");
        s.TaxName = text("TaxName");
        s.TaxNo = text("TaxNo");
        s.TaxAmount = Null_to_zero(rs.field(QStringLiteral("TaxAmount"))).toDouble();
        s.TaxEnabled = flag("TaxEnabled");
        s.DefaultStart = text("DefaultStart");
        s.DefaultEnd = text("DefaultEnd");
        s.Debtorstart = flag("Debtorstart");
        s.Reminder1 = text("Reminder1");
        s.Reminder2 = text("Reminder2");
        s.Reminder3 = text("Reminder3");
        s.FreeformInv = strict("FreeformInv");
        s.freeformCus = strict("freeformCus");
        s.freeformPart = strict("freeformPart");
        s.FreeformCrd = strict("FreeformCrd");
        s.IncludeShipping = flag("IncludeShipping");
        s.IncludeTerms = flag("IncludeTerms");
        s.IncludeStatement = flag("IncludeStatement");
        s.Statement = text("Statement");
        s.terms1 = text("terms1");
        s.ConfirmExit = flag("ConfirmExit");
        s.ConfirmBackup = flag("ConfirmBackup");
        s.ConfirmAll = flag("ConfirmAll");
        s.FaxVisible = flag("FaxVisible");
        s.phoneVisible = flag("phoneVisible");
        s.emailVisible = flag("emailVisible");
        s.webVisible = flag("webVisible");
        s.shippingVisible = flag("shippingVisible");
        s.mobileVisible = flag("mobileVisible");
        s.text1Visible = flag("text1Visible");
        s.text2Visible = flag("text2Visible");
        s.text3Visible = flag("text3Visible");
        s.text4Visible = flag("text4Visible");
        s.text1Name = text("text1Name").trimmed();
        s.text2Name = text("text2Name").trimmed();
        s.text3Name = text("text3Name").trimmed();
        s.text4Name = text("text4Name").trimmed();
        s.Present = flag("Present");
        s.InvoiceType = text("InvoiceType");
        s.Logopath = text("Logopath");
        rs.close();
    });
}

void frmMain::MDIForm_Activate()
{
    if (SetupDone == 0) {
        frm_setup wizard(this);
        showModal(wizard);
        if (SetupDone == 0) // cancelled: the program ends
            close();
    }
    // "Show Debtors at Startup" opens the debtor list here on the first activation, when
    // that window arrives.
    ++FrontCount;
}

void frmMain::Toolbar1_ButtonClick(int index)
{
    Busy_on();
    // This handler's trap is silent: a failure ends the command without a word.
    try {
        switch (index) {
        case 5: {
            Busy_off();
            Add_invoice(this);
            break;
        }
        case 1: {
            Busy_off();
            frmCustomer window(this);
            showModal(window);
            break;
        }
        case 3: {
            Busy_off();
            frmInvoice window(this);
            showModal(window);
            break;
        }
        case 11: {
            Busy_off();
            frm_Parts window(this);
            showModal(window);
            break;
        }
        case 13:
            Busy_off();
            HelpTopic = QStringLiteral("help.htm");
            break;
        case 15:
            Busy_off();
            close();
            break;
        default:
            // Reports and Debtors open their windows here
            // as those windows come; separators do nothing.
            Busy_off();
            break;
        }
    } catch (const std::exception&) {
        Busy_off();
    }
}

void frmMain::MnuSave_Click()
{
    safety::MnuSave();
}

void frmMain::mnurestore_Click()
{
    safety::mnurestore();
}

void frmMain::closeEvent(QCloseEvent* event)
{
    if (!unloaded_)
        MDIForm_Unload();
    event->accept();
}

void frmMain::MDIForm_Unload()
{
    if (settings.ConfirmBackup == 1) {
        const int answer = MsgBox(QStringLiteral("Do you wish to backup before exiting?"), vbYesNo + vbQuestion,
                                  QStringLiteral("Backup?"));
        if (answer == vbYes)
            safety::MnuSave();
        else
            BackupDone = 1;
    }
    PlainConnection.close();
    ShapeConnection.close();
    unloaded_ = true;
}

frm_AutoInv::frm_AutoInv(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frm_AutoInv"));
    setWindowTitle(QStringLiteral("Auto Invoice"));
    auto* layout = new QVBoxLayout(this);
    auto* bar = new QToolBar(this);
    bar->setObjectName(QStringLiteral("Toolbar1"));
    for (const char* caption : {"Add", "Delete", "Edit", "Help"})
        bar->addAction(QLatin1String(caption))->setObjectName(QLatin1String(caption));
    layout->addWidget(bar);
    layout->addStretch();
    auto* exit = new QPushButton(QStringLiteral("&Exit"), this);
    exit->setObjectName(QStringLiteral("exit_cmd"));
    connect(exit, &QPushButton::clicked, this, &QDialog::reject);
    layout->addWidget(exit);
}
