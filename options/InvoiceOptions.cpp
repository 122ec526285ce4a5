#include "options/InvoiceOptions.h"

#include "options/SetupControls.h"
#include "platform/Keys.h"
#include "platform/MemoBox.h"
#include "platform/Platform.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/Recordset.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialog>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <climits>

using namespace platform;

bool isOn(const Value& value)
{
    return !value.isNull() && value.toDouble() == 1;
}

qint16 flagOf(const QCheckBox* box)
{
    return box->isChecked() ? 1 : 0;
}

InvoiceOptions::InvoiceOptions(QDialog* window, bool trimPath) : QObject(window), trimPath_(trimPath) {}

void InvoiceOptions::buildScreenFields(QGroupBox* frame, QGridLayout* grid, int top)
{
    const char* captions[] = {"Include Sales Person", "Include Sales Order", "Include Shipped By",
                              "IncludeTracking No"};
    for (int i = 0; i < 4; ++i) {
        chk[i] = new QCheckBox(QLatin1String(captions[i]), frame);
        chk[i]->setObjectName(QStringLiteral("chk%1").arg(i + 1));
        Text[i] = new QLineEdit(frame);
        Text[i]->setObjectName(QStringLiteral("Text%1").arg(i + 1));
        Text[i]->setMaxLength(20);
        grid->addWidget(chk[i], top + i, 0);
        grid->addWidget(Text[i], top + i, 1);
        platform::onKeyUp(Text[i], [this](int, int) { Tick_Captions(); });
    }
}

void InvoiceOptions::buildInvoiceTypes(QGroupBox* frame, const char* stem)
{
    auto* layout = new QVBoxLayout(frame);
    invoiceTypes_ = new QButtonGroup(this);
    for (int i = 0; i < 6; ++i) {
        Opt[i] = new QRadioButton(QStringLiteral("Invoice Type %1").arg(i + 1), frame);
        Opt[i]->setObjectName(QLatin1String(stem) + QString::number(i + 1));
        invoiceTypes_->addButton(Opt[i], i + 1);
        layout->addWidget(Opt[i]);
    }
}

void InvoiceOptions::buildLogo(QWidget* frame, QGridLayout* grid, const char* labelName)
{
    grid->addWidget(named(new QLabel(QStringLiteral("Invoice Logo:"), frame), labelName), 0, 1);
    path_lbl = named(new QLabel(frame), "path_lbl");
    path_lbl->setWordWrap(true);
    grid->addWidget(path_lbl, 0, 2, 1, 2);
    logopic = named(new QLabel(frame), "logopic");
    logopic->setFixedSize(160, 120);
    logopic->setScaledContents(true);
    grid->addWidget(logopic, 1, 1, 1, 3);
    auto* select = button("Select_cmd", "Select Logo", frame);
    auto* erase = button("Erase_cmd", "Erase Logo", frame);
    grid->addWidget(select, 2, 1);
    grid->addWidget(erase, 2, 2);
    connect(select, &QPushButton::clicked, this, &InvoiceOptions::Select_cmd_Click);
    connect(erase, &QPushButton::clicked, this, &InvoiceOptions::Erase_cmd_Click);
}

void InvoiceOptions::buildLayout(QGroupBox* frame, int statementLimit, int termsLimit)
{
    auto* grid = new QGridLayout(frame);
    Shipping_chk = tick("Shipping_chk", "Include Delivery Address", frame);
    Statement_chk = tick("Statement_chk", "Include Statement", frame);
    Terms_Chk = tick("Terms_Chk", "Include Terms and Conditions", frame);
    statement_txt = memoBox(QStringLiteral("statement_txt"), statementLimit ? statementLimit : INT_MAX, frame);
    terms_txt = memoBox(QStringLiteral("terms_txt"), termsLimit ? termsLimit : INT_MAX, frame);
    grid->addWidget(Shipping_chk, 0, 0);
    grid->addWidget(Statement_chk, 1, 0);
    grid->addWidget(Terms_Chk, 2, 0);
    grid->addWidget(new QLabel(QStringLiteral("Statement at the bottom:"), frame), 3, 0);
    grid->addWidget(statement_txt, 4, 0);
    grid->addWidget(new QLabel(QStringLiteral("Terms and Conditions:"), frame), 5, 0);
    grid->addWidget(terms_txt, 6, 0);
    for (QCheckBox* b : {Shipping_chk, Statement_chk, Terms_Chk})
        connect(b, &QCheckBox::clicked, this, &InvoiceOptions::Show_Sample);

    // A small invoice drawn with boxes: each part a shape and its caption.
    auto* sample = new QGridLayout;
    auto part = [&](const char* shape, const char* caption, const char* text, int row, int column) {
        auto* box = named(new QFrame(frame), shape);
        box->setFrameShape(QFrame::Box);
        box->setMinimumSize(90, 28);
        auto* words = named(new QLabel(QLatin1String(text), frame), caption);
        words->setAlignment(Qt::AlignCenter);
        sample->addWidget(box, row, column);
        sample->addWidget(words, row, column);
        return std::pair<QWidget*, QWidget*>(box, words);
    };
    part("company1", "company2", "Company Address", 0, 0);
    sample->addWidget(named(new QLabel(QStringLiteral("INVOICE"), frame), "Label12"), 0, 1);
    sample->addWidget(named(new QLabel(QStringLiteral("100001"), frame), "No"), 1, 1);
    part("billing1", "billing2", "Billing Address", 2, 0);
    std::tie(shipping1, shipping2) = part("shipping1", "shipping2", "Delivery Address", 2, 1);
    std::tie(statement1, statement2) = part("statement1", "statement2", "Statement", 3, 0);
    std::tie(terms1, terms2) = part("terms1", "terms2", "Terms and Conditions", 4, 0);
    grid->addLayout(sample, 0, 1, 7, 1);
}

void InvoiceOptions::Tick_Captions()
{
    for (int i = 0; i < 4; ++i)
        chk[i]->setText(QStringLiteral("Include ") + Text[i]->text());
}

void InvoiceOptions::Show_Sample()
{
    terms1->setVisible(Terms_Chk->isChecked());
    terms2->setVisible(Terms_Chk->isChecked());
    shipping1->setVisible(Shipping_chk->isChecked());
    shipping2->setVisible(Shipping_chk->isChecked());
    statement1->setVisible(Statement_chk->isChecked());
    statement2->setVisible(Statement_chk->isChecked());
}

void InvoiceOptions::Default_Includes()
{
    Terms_Chk->setChecked(true);
    Shipping_chk->setChecked(true);
    Statement_chk->setChecked(true);
}

void InvoiceOptions::Load_picture(const QString& path)
{
    logopic->setPixmap(QPixmap(path));
}

void InvoiceOptions::Select_cmd_Click()
{
    FileDialogRequest request;
    request.filter = QStringLiteral("Picture File (*.jpg,*.bmp)|*.bmp;*.jpg");
    request.filterIndex = 1;
    request.fileName = dialogFileName_;
    // A cancelled dialog leaves its file name as it was, and that name is taken.
    if (const auto chosen = ShowOpen(request))
        dialogFileName_ = *chosen;
    if (dialogFileName_.size() > 200) {
        MsgBox(QStringLiteral("Path too long. Move the picture to another location and try again."), vbExclamation,
               QStringLiteral("Path too Long"));
        return;
    }
    path_lbl->setText(dialogFileName_);
    Load_picture(dialogFileName_);
}

void InvoiceOptions::Erase_cmd_Click()
{
    path_lbl->clear();
    logopic->clear();
}

QString InvoiceOptions::selectedInvoiceType() const
{
    const int id = invoiceTypes_->checkedId();
    return id > 0 ? QString::number(id) : QString();
}

void InvoiceOptions::loadScreenFields(const Recordset& rs)
{
    for (int i = 0; i < 4; ++i) {
        chk[i]->setChecked(isOn(rs.field(QStringLiteral("text%1Visible").arg(i + 1))));
        Text[i]->setText(Null_to_text(rs.field(QStringLiteral("text%1Name").arg(i + 1))));
    }
    Tick_Captions();
}

void InvoiceOptions::loadLayout(const Recordset& rs)
{
    // Empty selects the first type; a value other than "1" to "6" selects none.
    const QString type = Null_to_text(rs.field(QStringLiteral("InvoiceType")));
    const int chosen = type.isEmpty() ? 1 : QStringList{"1", "2", "3", "4", "5", "6"}.indexOf(type) + 1;
    invoiceTypes_->setExclusive(false);
    for (int i = 0; i < 6; ++i)
        Opt[i]->setChecked(i + 1 == chosen);
    invoiceTypes_->setExclusive(true);
    Shipping_chk->setChecked(isOn(rs.field(QStringLiteral("IncludeShipping"))));
    Terms_Chk->setChecked(isOn(rs.field(QStringLiteral("IncludeTerms"))));
    Statement_chk->setChecked(isOn(rs.field(QStringLiteral("IncludeStatement"))));
    statement_txt->setText(Null_to_text(rs.field(QStringLiteral("Statement"))));
    terms_txt->setText(Null_to_text(rs.field(QStringLiteral("terms1"))));
    path_lbl->setText(Null_to_text(rs.field(QStringLiteral("logopath"))));
}

SettingsValues InvoiceOptions::values() const
{
    SettingsValues v;
    for (int i = 0; i < 4; ++i)
        v.append({QStringLiteral("text%1Visible").arg(i + 1), flagOf(chk[i])});
    for (int i = 0; i < 4; ++i)
        v.append({QStringLiteral("text%1Name").arg(i + 1), Text[i]->text().trimmed()});
    if (!selectedInvoiceType().isEmpty())
        v.append({QStringLiteral("InvoiceType"), selectedInvoiceType()});
    v += SettingsValues{{"includeStatement", flagOf(Statement_chk)},
                        {"includeterms", flagOf(Terms_Chk)},
                        {"includeshipping", flagOf(Shipping_chk)},
                        {"Statement", statement_txt->text().trimmed()},
                        {"terms1", terms_txt->text().trimmed()},
                        {"logopath", trimPath_ ? path_lbl->text().trimmed() : path_lbl->text()}};
    return v;
}
