#include "options/frmCustomerSet.h"

#include "platform/Controls.h"
#include "store/Connection.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/Recordset.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace platform;

frmCustomerSet::frmCustomerSet(QWidget* parent) : QDialog(parent), rs_(std::make_unique<Recordset>())
{
    setObjectName(QStringLiteral("frmCustomerSet"));
    setWindowTitle(QStringLiteral("Customize Customer Screen"));
    auto* layout = new QVBoxLayout(this);
    auto* frame = new QGroupBox(QStringLiteral("Customer Screen"), this);
    auto* ticks = new QVBoxLayout(frame);
    ticks_ = customerScreenTicks(frame, ticks);
    auto* note = new QLabel(QStringLiteral("Untick any check box to make text boxes invisble"), frame);
    note->setObjectName(QStringLiteral("Label1"));
    ticks->addWidget(note);
    layout->addWidget(frame);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    auto* ok = new QPushButton(QStringLiteral("&Ok"), this);
    ok->setObjectName(QStringLiteral("ok_cmd"));
    auto* cancel = new QPushButton(QStringLiteral("&Cancel"), this);
    cancel->setObjectName(QStringLiteral("cancel_cmd"));
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    layout->addLayout(buttons);
    connect(ok, &QPushButton::clicked, this, [this] {
        Update();
        accept();
    });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    // The window keeps the settings row open for writing while it is up.
    Trap(objectName(), "Form_Activate", [this] {
        rs_->open(QStringLiteral("system"), ConnectionString, Recordset::adLockPessimistic);
        Load_system();
        Settings();
    });
}

frmCustomerSet::~frmCustomerSet() = default;

void frmCustomerSet::Load_system()
{
    Trap(objectName(), "Load_system", [this] {
        if (rs_->recordCount() <= 0)
            return;
        rs_->moveFirst();
        for (const CustomerScreenTick& t : ticks_)
            t.box->setChecked(Null_to_zero(rs_->field(QLatin1String(t.column))) ==
                              Currency::fromTicks(Currency::Scale));
    });
}

void frmCustomerSet::Update()
{
    Trap(objectName(), "Update", [this] {
        if (rs_->recordCount() <= 0) {
            rs_->addNew();
            // A row needs its required columns to be stored at all.
            rs_->setField(QStringLiteral("TaxAmount"), 0.0);
            rs_->setField(QStringLiteral("Text3Name"), QString());
            rs_->setField(QStringLiteral("Text4Name"), QString());
        } else {
            rs_->moveFirst();
        }
        for (const CustomerScreenTick& t : ticks_)
            rs_->setField(QLatin1String(t.column), t.box->isChecked() ? 1 : 0);
        rs_->update();
        Settings();
    });
}

void frmCustomerSet::Settings()
{
    for (const CustomerScreenTick& t : ticks_)
        settings.*t.field = t.box->isChecked() ? 1 : 0;
}
