#include "options/frmInvoiceSet.h"

#include "options/InvoiceOptions.h"
#include "options/SetupControls.h"
#include "store/Connection.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/Recordset.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace platform;

frmInvoiceSet::frmInvoiceSet(QWidget* parent)
    : QDialog(parent), io_(new InvoiceOptions(this, false)), rs_(std::make_unique<Recordset>())
{
    setObjectName(QStringLiteral("frmInvoiceSet"));
    setWindowTitle(QStringLiteral("Customize Options"));
    auto* layout = new QVBoxLayout(this);
    auto* views = new QGridLayout;
    layout->addLayout(views, 1);

    firstView_ = new QWidget(this);
    auto* first = new QGridLayout(firstView_);
    first->setContentsMargins(0, 0, 0, 0);
    auto* screen = named(new QGroupBox(QStringLiteral("Customize Invoice Screen"), firstView_), "Frame1");
    auto* screenGrid = new QGridLayout(screen);
    screenGrid->addWidget(
        named(new QLabel(QStringLiteral("Tick any check box to include on Invoice Screen"), screen), "Label1"), 0, 0, 1,
        2);
    screenGrid->addWidget(
        named(new QLabel(QStringLiteral("Please type below if you wish to change any of the headings"), screen),
              "Label2"),
        1, 0, 1, 2);
    io_->buildScreenFields(screen, screenGrid, 2);
    first->addWidget(screen, 0, 0, 1, 2);
    auto* types = named(new QGroupBox(QStringLiteral("Invoice Type"), firstView_), "Frame4");
    io_->buildInvoiceTypes(types, "Option");
    first->addWidget(types, 1, 0);
    auto* logo = named(new QGroupBox(QStringLiteral("Logo:"), firstView_), "Frame2");
    io_->buildLogo(logo, new QGridLayout(logo), "Label3");
    first->addWidget(logo, 1, 1);
    views->addWidget(firstView_, 0, 0);

    InvoiceFrame = named(new QGroupBox(QStringLiteral("Invoice Layout"), this), "InvoiceFrame");
    io_->buildLayout(InvoiceFrame, 0, 0); // no limits to the two texts here
    InvoiceFrame->hide();
    views->addWidget(InvoiceFrame, 0, 0);

    auto* buttons = new QHBoxLayout;
    customize_cmd = button("customize_cmd", "Customize Invoice", this);
    Back_cmd = button("Back_cmd", "&Back", this);
    Back_cmd->hide();
    ok_cmd = button("ok_cmd", "&Ok", this);
    cancel_cmd = button("cancel_cmd", "&Cancel", this);
    buttons->addWidget(customize_cmd);
    buttons->addWidget(Back_cmd);
    buttons->addStretch();
    buttons->addWidget(ok_cmd);
    buttons->addWidget(cancel_cmd);
    layout->addLayout(buttons);
    connect(customize_cmd, &QPushButton::clicked, this, &frmInvoiceSet::customize_cmd_Click);
    connect(Back_cmd, &QPushButton::clicked, this, &frmInvoiceSet::Back_cmd_Click);
    connect(ok_cmd, &QPushButton::clicked, this, [this] {
        Update();
        accept();
    });
    connect(cancel_cmd, &QPushButton::clicked, this, &QDialog::reject);

    if (QFileInfo(settings.Logopath).isFile())
        io_->Load_picture(settings.Logopath);
    // Coming up: the settings row stays open for writing while the window is up.
    Trap(objectName(), "Form_Activate",
         [this] { rs_->open(QStringLiteral("system"), ConnectionString, Recordset::adLockPessimistic); });
    Load_system();
}

frmInvoiceSet::~frmInvoiceSet() = default;

void frmInvoiceSet::done(int result)
{
    rs_->close();
    QDialog::done(result);
}

void frmInvoiceSet::Load_system()
{
    Trap(objectName(), "Load_system", [this] {
        if (rs_->recordCount() <= 0)
            return;
        rs_->moveFirst();
        io_->loadScreenFields(*rs_);
        io_->loadLayout(*rs_);
        io_->Show_Sample();
    });
}

void frmInvoiceSet::customize_cmd_Click()
{
    firstView_->hide();
    InvoiceFrame->show();
    customize_cmd->hide();
    Back_cmd->show();
}

void frmInvoiceSet::Back_cmd_Click()
{
    InvoiceFrame->hide();
    firstView_->show();
    customize_cmd->show();
    ok_cmd->show();
    cancel_cmd->show();
    Back_cmd->hide();
}

void frmInvoiceSet::Update()
{
    Trap(objectName(), "Update", [this] {
        if (rs_->recordCount() <= 0)
            rs_->addNew();
        else
            rs_->moveFirst();
        writeSettings(*rs_, io_->values());
        rs_->update();
        Settings();
    });
}

void frmInvoiceSet::Settings()
{
    Trap(objectName(), "Settings", [this] { copySettings(io_->values()); });
}
