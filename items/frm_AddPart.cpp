#include "items/frm_AddPart.h"

#include "platform/Activation.h"
#include "platform/Keys.h"
#include "platform/MemoBox.h"
#include "platform/Platform.h"
#include "platform/Window.h"
#include "store/Connection.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/Numbering.h"
#include "store/Numbers.h"
#include "store/Recordset.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

using namespace platform;

namespace
{
constexpr int LongMax = 120;
}

frm_AddPart::frm_AddPart(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frm_AddPart"));
    onActivate(this, [this] { Form_Activate(); });
    setWindowTitle(QStringLiteral("Add Item"));
    auto* layout = new QVBoxLayout(this);
    auto* grid = new QGridLayout;
    auto box = [this](const char* name, int maxLength) {
        auto* e = new QLineEdit(this);
        e->setObjectName(QLatin1String(name));
        e->setMaxLength(maxLength);
        e->installEventFilter(this);
        return e;
    };
    Part_lbl = box("Part_lbl", 12);
    Part_lbl->setEnabled(false);
    Short_txt = box("Short_txt", 20);
    long_txt = new MemoBox(LongMax, this);
    long_txt->setObjectName(QStringLiteral("long_txt"));
    long_txt->installEventFilter(this);
    long_txt->setFixedHeight(70);
    Price_txt = box("Price_txt", 10);
    Price_txt->setAlignment(Qt::AlignRight);
    onKeyPress(Price_txt, [this](int keyAscii) { return numberKey(keyAscii, Price_txt->text(), true); });
    onKeyUp(long_txt, [this](int, int) { countLeft(); });
    grid->addWidget(new QLabel(QStringLiteral("Item ID:"), this), 0, 0);
    grid->addWidget(Part_lbl, 0, 1);
    grid->addWidget(new QLabel(QStringLiteral("Short Description:"), this), 1, 0);
    grid->addWidget(Short_txt, 1, 1);
    grid->addWidget(new QLabel(QStringLiteral("Long Description:"), this), 2, 0);
    grid->addWidget(long_txt, 2, 1);
    auto* count = new QHBoxLayout;
    count->addWidget(new QLabel(QStringLiteral("Characters left"), this));
    count_lbl = new QLabel(QStringLiteral("120"), this);
    count_lbl->setObjectName(QStringLiteral("count_lbl"));
    count->addWidget(count_lbl);
    count->addStretch();
    grid->addLayout(count, 3, 1);
    grid->addWidget(new QLabel(QStringLiteral("Price:"), this), 4, 0);
    grid->addWidget(Price_txt, 4, 1);
    auto* Frame1 = new QGroupBox(this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    auto* frameLayout = new QHBoxLayout(Frame1);
    tax_chk = new QCheckBox(QStringLiteral("Taxable"), Frame1);
    tax_chk->setObjectName(QStringLiteral("tax_chk"));
    frameLayout->addWidget(tax_chk);
    grid->addWidget(Frame1, 5, 1);
    layout->addLayout(grid);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    Update_cmd = new QPushButton(QStringLiteral("&Update"), this);
    Update_cmd->setObjectName(QStringLiteral("Update_cmd"));
    Update_cmd->setDefault(true);
    Exit_cmd = new QPushButton(QStringLiteral("&Exit"), this);
    Exit_cmd->setObjectName(QStringLiteral("Exit_cmd"));
    Exit_cmd->setAutoDefault(false);
    buttons->addWidget(Update_cmd);
    buttons->addWidget(Exit_cmd);
    layout->addLayout(buttons);
    connect(Update_cmd, &QPushButton::clicked, this, &frm_AddPart::Update_cmd_Click);
    connect(Exit_cmd, &QPushButton::clicked, this, &frm_AddPart::Exit_cmd_Click);

    if (NewItemMode == 1)
        Newdetails();
    else
        LoadPart();
    centreWindow(this);
}

// Each time the window comes to the front.
void frm_AddPart::Form_Activate()
{
    if (NewItemMode != 1)
        return;
    Short_txt->setFocus();
    if (settings.freeformPart == 1)
        Part_lbl->setFocus();
}

void frm_AddPart::countLeft()
{
    count_lbl->setText(QString::number(LongMax - long_txt->text().size()));
}

bool frm_AddPart::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusOut) {
        if (watched == Price_txt)
            Price_txt->setText(Format_amount(Price_txt->text(), 7, 2));
        if (watched == long_txt)
            countLeft();
    }
    if (event->type() == QEvent::FocusIn) {
        if (auto* e = qobject_cast<QLineEdit*>(watched))
            QTimer::singleShot(0, e, &QLineEdit::selectAll);
        else if (watched == long_txt)
            QTimer::singleShot(0, long_txt, &QPlainTextEdit::selectAll);
    }
    return QDialog::eventFilter(watched, event);
}

void frm_AddPart::Newdetails()
{
    Trap(objectName(), "Newdetails", [this] {
        const Proposal proposal = Propose_number(Series::Item);
        Part_lbl->setText(proposal.number);
        Part_lbl->setEnabled(proposal.enabled);
    });
}

void frm_AddPart::LoadPart()
{
    Trap(objectName(), "LoadPart", [this] {
        Recordset rs;
        rs.open(QStringLiteral("parts"), ConnectionString, Recordset::adLockReadOnly);
        const QString id = SelectedItemID.trimmed();
        for (rs.moveFirst(); !rs.eof(); rs.moveNext()) {
            if (rs.field(QStringLiteral("Id")).toText() != id)
                continue;
            Part_lbl->setText(rs.field(QStringLiteral("Id")).toText());
            Short_txt->setText(Null_to_text(rs.field(QStringLiteral("shortdesc"))));
            long_txt->setText(rs.field(QStringLiteral("Desc")).toText());
            Price_txt->setText(Format_amount(Null_to_zero(rs.field(QStringLiteral("Price"))), 7, 2));
            tax_chk->setChecked(Null_to_zero(rs.field(QStringLiteral("Taxable"))) ==
                                Currency::fromTicks(Currency::Scale));
            countLeft();
            break;
        }
        rs.close();
    });
}

int frm_AddPart::CheckItemNo()
{
    int result = 0;
    Trap(objectName(), "CheckItemNo", [&] {
        if (NewItemMode == 1 && Number_in_use(Series::Item, Part_lbl->text().trimmed()))
            result = 1;
    });
    return result;
}

int frm_AddPart::CheckItemEntries()
{
    for (QWidget* box : std::initializer_list<QWidget*>{Part_lbl, Short_txt, long_txt, Price_txt}) {
        const QString text = box == long_txt ? long_txt->text() : static_cast<QLineEdit*>(box)->text();
        if (text.trimmed().isEmpty()) {
            Beep();
            box->setFocus();
            return 1;
        }
    }
    return 0;
}

void frm_AddPart::Update_cmd_Click()
{
    Trap(objectName(), "Update_cmd", [this] {
        if (settings.ConfirmAll == 0 && MsgBox(QStringLiteral("Are you sure you want to update?"), vbYesNo + vbQuestion,
                                               QStringLiteral("Continue?")) == vbNo)
            return;
        if (CheckItemNo() == 1) {
            if (settings.freeformPart == 1)
                Part_lbl->setFocus();
            return;
        }
        if (CheckItemEntries() == 1)
            return;
        Busy_on();
        try {
            ItemSaved = 1;
            Recordset rs;
            rs.open(QStringLiteral("parts"), ConnectionString, Recordset::adLockPessimistic);
            if (NewItemMode == 1) {
                rs.addNew();
            } else {
                // The row the seek finds is the row written.
                rs.setIndex(QStringLiteral("ID"));
                rs.seek(Part_lbl->text().trimmed());
            }
            rs.setField(QStringLiteral("ID"), Part_lbl->text().trimmed());
            rs.setField(QStringLiteral("ShortDesc"), Short_txt->text().left(20));
            rs.setField(QStringLiteral("Desc"), long_txt->text().left(LongMax));
            rs.setField(QStringLiteral("Price"), Currency::fromDouble(Val(Price_txt->text())));
            rs.setField(QStringLiteral("Taxable"), tax_chk->isChecked() ? 1 : 0);
            rs.update();
            rs.close();
            if (settings.freeformPart == 0 && NewItemMode == 1)
                Advance_number(Series::Item, Part_lbl->text());
            LastItemID = Part_lbl->text();
        } catch (...) {
            Busy_off();
            throw;
        }
        Busy_off();
        accept();
    });
}

void frm_AddPart::Exit_cmd_Click()
{
    reject();
}

void frm_AddPart::reject()
{
    // Leaving by Exit, Escape or the close box drops what was typed.
    ItemSaved = 0;
    QDialog::reject();
}
