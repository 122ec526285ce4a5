#include "shell/frmMain.h"

#include "customers/frmAddCust.h"
#include "customers/frmCustomer.h"
#include "customers/frmsearchCust.h"
#include "debtors/frmDebtor.h"
#include "einvoice/frmEInvoicing.h"
#include "help/Help_frm.h"
#include "help/frmBrowser.h"
#include "invoices/frmInvoice.h"
#include "items/frm_Parts.h"
#include "options/frmOptions.h"
#include "options/frm_setup.h"
#include "platform/Activation.h"
#include "platform/Icons.h"
#include "platform/Platform.h"
#include "reports/FrmExport.h"
#include "reports/frmReports.h"
#include "safety/BackupRestore.h"
#include "safety/Import.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/EInvoiceData.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/Numbers.h"
#include "store/Recordset.h"
#include "store/Schema.h"
#include "store/SettingsTable.h"

#include <QAction>
#include <QCloseEvent>
#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

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
    connect(action(file, "mnuExport", QStringLiteral("&Export")), &QAction::triggered, this, [this] {
        FrmExport window(this);
        showModal(window);
    });
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
    connect(action(tools, "mnuWeb", QStringLiteral("&Web")), &QAction::triggered, this, [this] {
        frmBrowser window(this);
        showModal(window);
    });
    // The import is a one-shot migration aid that ends the program when its file is
    // missing, so it is offered only while Invoices1.csv stands beside the program.
    QAction* import = action(tools, "mnuImport", QStringLiteral("Import"));
    auto offerImport = [import] {
        import->setEnabled(QFileInfo(programFile(QStringLiteral("Invoices1.csv"))).isFile());
    };
    offerImport();
    connect(tools, &QMenu::aboutToShow, this, offerImport);
    connect(import, &QAction::triggered, this, [] { safety::mnuImport(); });
    connect(action(tools, "mnuEInvoicing", QStringLiteral("&E-invoicing")), &QAction::triggered, this, [this] {
        einvoice::frmEInvoicing window(QString(), this);
        showModal(window);
    });

    auto* bar = new QToolBar(QStringLiteral("Toolbar1"), this);
    bar->setObjectName(QStringLiteral("Toolbar1"));
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    bar->setMovable(false);
    addToolBar(bar);
    const struct {
        const char* caption;
        const char* icon; // freedesktop icon name
    } buttons[] = {
        {"Customers", "x-office-address-book"},
        {"Invoices", "x-office-spreadsheet"},
        {"Add Invoice", "document-new"},
        {"Reports", "x-office-document"},
        {"Debtors", "appointment-soon"},
        {"Items", "package-x-generic"},
        {"Help", "help-contents"},
        {"Exit", "application-exit"},
    };
    int index = 1;
    for (const auto& b : buttons) {
        if (index > 1) {
            QAction* sep = bar->addSeparator();
            sep->setObjectName(QStringLiteral("Toolbar1(%1)").arg(index - 1));
        }
        QAction* a = bar->addAction(themeIcon(b.icon), QLatin1String(b.caption));
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
        Remove_unfinished_writes();
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
    // Abandoned from the box: the file is not put in place.
    struct Abandoned {
    };
    // Each step may be retried, skipped or abandoned from the box, as the user chooses.
    auto step = [](const std::function<void()>& statement) {
        for (;;) {
            try {
                statement();
                return;
            } catch (const VbError& e) {
                const int answer = MsgBox(e.description() + QStringLiteral("    Error No. ") +
                                              QString::number(e.number()) + QStringLiteral(" \r\n"),
                                          vbAbortRetryIgnore + vbCritical, QStringLiteral("Code Gen Error"));
                if (answer == vbAbort)
                    throw Abandoned{};
                if (answer == vbIgnore)
                    return;
            }
        }
    };
    try {
        // The last step puts the file in place; retrying it builds the file afresh.
        step([&] {
            writeThenRename(dataFile(), [&](const QString& building) {
                std::shared_ptr<Database> db;
                step([&] {
                    db = Database::create(building);
                    db->exec(QStringLiteral("BEGIN"));
                    db->setSchemaVersion(SchemaVersion);
                });
                QStringList statements;
                for (const TableDef& table : schemaTables())
                    statements += createStatements(table);
                for (const QString& sql : statements + eInvoiceTableStatements())
                    step([&] {
                        if (!db)
                            throw VbError(err::CannotOpenFile);
                        db->exec(sql);
                    });
                if (db)
                    step([&] { db->exec(QStringLiteral("COMMIT")); });
                // The books are the user's alone.
                QFile::setPermissions(building, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
            });
        });
    } catch (const Abandoned&) {
    }
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
        loadSettings(rs);
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
    // "Show Debtors at Startup": once, the first time the main window comes up.
    if (FrontCount == 0 && settings.Debtorstart == 1) {
        frmDebtor window(this);
        showModal(window);
    }
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
        case 7: {
            Busy_off();
            frmReports window(this);
            showModal(window);
            break;
        }
        case 9: {
            Busy_off();
            frmDebtor window(this);
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
            Show_help(this, QStringLiteral("help.htm"));
            break;
        case 15:
            Busy_off();
            close();
            break;
        default:
            // Separators do nothing.
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
