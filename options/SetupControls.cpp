#include "options/SetupControls.h"

#include "platform/Keys.h"
#include "store/Functions.h"
#include "store/Globals.h"
#include "store/Numbers.h"
#include "store/Recordset.h"

#include <QCheckBox>
#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

using namespace platform;

MemoBox* memoBox(const QString& name, int maxLength, QWidget* parent)
{
    auto* box = new MemoBox(maxLength, parent);
    box->setObjectName(name);
    return box;
}

void keepRoomWhenHidden(QWidget* control)
{
    QSizePolicy policy = control->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    control->setSizePolicy(policy);
}

std::vector<CustomerScreenTick> customerScreenTicks(QWidget* frame, QBoxLayout* column)
{
    std::vector<CustomerScreenTick> ticks{
        {"FaxVisible", &SettingsRecord::FaxVisible, tick("fax_chk", "Include Fax", frame)},
        {"phoneVisible", &SettingsRecord::phoneVisible, tick("phone_chk", "Include Phone", frame)},
        {"emailVisible", &SettingsRecord::emailVisible, tick("email_chk", "Include Email", frame)},
        {"shippingVisible", &SettingsRecord::shippingVisible, tick("Shipping1_chk", "Include Delivery Address", frame)},
        {"mobileVisible", &SettingsRecord::mobileVisible, tick("mobile_chk", "Include Mobile", frame)}};
    for (const CustomerScreenTick& t : ticks)
        column->addWidget(t.box);
    return ticks;
}

QString Default_reminder(int n)
{
    switch (n) {
    case 1:
        return QStringLiteral("We have not been able to register payment for the invoice listed above and assume there "
                              "has been an oversight.We would appreciate payment in the coming days.");
    case 2:
        return QStringLiteral(
            "The invoice listed above has not been paid in spite of a reminder. Please let us know if "
            "there is any question regarding it. Please note that we reserve the right to charge "
            "interest on overdue sums as well as invoice charge.");
    default:
        return QStringLiteral("This is the last (third) and final reminder on the invoice listed above. We reserve the "
                              "right to take whatever legal action deemed necessary if the debt is not settled in the "
                              "nearest future.");
    }
}

namespace
{

QLabel* label(const QString& caption, QWidget* parent, const QString& name = QString())
{
    auto* l = new QLabel(caption, parent);
    l->setObjectName(name);
    return l;
}

QLineEdit* lineBox(const char* name, int maxLength, QWidget* parent, const QString& text = QString())
{
    auto* box = new QLineEdit(text, parent);
    box->setObjectName(QLatin1String(name));
    box->setMaxLength(maxLength);
    return box;
}

} // namespace

SetupControls::SetupControls(QDialog* window, bool trimTexts) : QObject(window), window_(window), trimTexts_(trimTexts)
{
}

void SetupControls::selectOnFocus(QWidget* box)
{
    box->setProperty("selectOnFocus", true);
    box->installEventFilter(this);
}

void SetupControls::buildCompanyPage(QGroupBox* frame)
{
    auto* grid = new QGridLayout(frame);
    Name_txt = lineBox("Name_txt", 30, frame);
    Address_txt = memoBox(QStringLiteral("Address_txt"), 150, frame);
    Phone_txt = lineBox("Phone_txt", 30, frame);
    Mobile_txt = lineBox("Mobile_txt", 30, frame);
    email_txt = lineBox("email_txt", 30, frame);
    WebAddress_txt = lineBox("WebAddress_txt", 30, frame);
    const std::pair<const char*, QWidget*> rows[] = {{"Name of Business:", Name_txt}, {"Address:", Address_txt},
                                                     {"Phone:", Phone_txt},           {"Mobile", Mobile_txt},
                                                     {"Email:", email_txt},           {"Web Address:", WebAddress_txt}};
    int r = 0;
    for (const auto& [caption, box] : rows) {
        grid->addWidget(label(QLatin1String(caption), frame), r, 0);
        grid->addWidget(box, r++, 1);
        selectOnFocus(box);
    }
    bind("BusinessName", Name_txt, Binding::Trim, Binding::Direct);
    bind("Address", Address_txt, Binding::Text, Binding::Direct);
    bind("Phone", Phone_txt, Binding::Text, Binding::Direct);
    bind("Mobile", Mobile_txt, Binding::Text, Binding::Direct);
    bind("Email", email_txt, Binding::Text, Binding::Direct);
    bind("Web", WebAddress_txt, Binding::Text, Binding::Direct);
    auto* note = label(QStringLiteral("You can only enter a maximum of 5 lines for the address. Anything more will not "
                                      "appear on the invoice."),
                       frame, QStringLiteral("Label8"));
    note->setWordWrap(true);
    grid->addWidget(note, r, 0, 1, 2);
}

void SetupControls::buildCurrencyPage(QGroupBox* frame, const QString& currency)
{
    auto* grid = new QGridLayout(frame);
    auto* country = new QGroupBox(QStringLiteral("Country"), frame);
    country->setObjectName(QStringLiteral("Frame2"));
    auto* countryLayout = new QVBoxLayout(country);
    const char* captions[] = {"USA", "UK", "Other"};
    for (int i = 0; i < 3; ++i) {
        Option[i] = new QRadioButton(QLatin1String(captions[i]), country);
        Option[i]->setObjectName(QStringLiteral("Option%1").arg(i + 1));
        countryLayout->addWidget(Option[i]);
        // A click only: selecting an option from code fills nothing by itself.
        connect(Option[i], &QRadioButton::clicked, this, [this, i] { Option_Click(i); });
    }
    grid->addWidget(country, 0, 0, 1, 3);

    currency_txt = lineBox("currency_txt", 1, frame, currency);
    TaxEnabled_chk = new QCheckBox(QStringLiteral("Tax Enabled:"), frame);
    TaxEnabled_chk->setObjectName(QStringLiteral("TaxEnabled_chk"));
    TaxName_txt = lineBox("TaxName_txt", 10, frame, QStringLiteral("Tax"));
    TaxAmount_txt = lineBox("TaxAmount_txt", 5, frame);
    TaxNumber_txt = lineBox("TaxNumber_txt", 20, frame);
    for (QLineEdit* box : {currency_txt, TaxName_txt, TaxAmount_txt, TaxNumber_txt}) {
        selectOnFocus(box);
        box->setMinimumWidth(box == currency_txt ? 40 : 160);
    }
    // A paste is not filtered: the key rule sees typed characters only.
    platform::onKeyPress(TaxAmount_txt,
                         [this](int keyAscii) { return platform::numberKey(keyAscii, TaxAmount_txt->text(), true); });

    auto* tax1 = label(QStringLiteral("Tax Name:"), frame, QStringLiteral("Tax1_lbl"));
    auto* tax2 = label(QStringLiteral("Enter Tax Name (i.e VAT for UK)"), frame, QStringLiteral("Tax2_lbl"));
    auto* tax3 = label(QStringLiteral("This percentage will be added to the subtotal amount"), frame,
                       QStringLiteral("Tax3_lbl"));
    auto* tax4 = label(QStringLiteral("Tax Percent:"), frame, QStringLiteral("Tax4_lbl"));
    auto* tax5 = label(QStringLiteral("Tax Number:"), frame, QStringLiteral("Tax5_lbl"));
    auto* tax6 = label(QStringLiteral("Tax number will be displayed below your business address"), frame,
                       QStringLiteral("Tax6_lbl"));
    auto* tax7 = label(QStringLiteral("%"), frame, QStringLiteral("tax7_lbl"));
    taxFields_ = {tax1, tax2, tax3, tax4, tax5, tax6, tax7, TaxName_txt, TaxAmount_txt, TaxNumber_txt};

    grid->addWidget(label(QStringLiteral("Currency:"), frame), 1, 0);
    grid->addWidget(currency_txt, 1, 1);
    grid->addWidget(TaxEnabled_chk, 2, 0);
    grid->addWidget(
        label(QStringLiteral("Tick this option if your company charges tax."), frame, QStringLiteral("Label14")), 2, 1,
        1, 2);
    grid->addWidget(tax1, 3, 0);
    grid->addWidget(TaxName_txt, 3, 1);
    grid->addWidget(tax2, 3, 2);
    grid->addWidget(tax4, 4, 0);
    grid->addWidget(TaxAmount_txt, 4, 1);
    auto* percent = new QHBoxLayout;
    percent->addWidget(tax7);
    percent->addWidget(tax3);
    grid->addLayout(percent, 4, 2);
    grid->addWidget(tax5, 5, 0);
    grid->addWidget(TaxNumber_txt, 5, 1);
    grid->addWidget(tax6, 5, 2);
    grid->setRowStretch(6, 1);
    bind("Currency", currency_txt, Binding::Raw, Binding::Direct);
    bind("TaxEnabled", TaxEnabled_chk, Binding::Tick, Binding::Direct);
    bind("TaxName", TaxName_txt, Binding::Text, Binding::Direct);
    bind("TaxAmount", TaxAmount_txt, Binding::Number, Binding::Direct);
    bind("TaxNo", TaxNumber_txt, Binding::Text, Binding::Direct);
    connect(TaxEnabled_chk, &QCheckBox::clicked, this, [this](bool ticked) {
        if (ticked)
            Show_Tax_Fields();
        else
            Hide_Tax_Fields();
    });
}

void SetupControls::buildPrefixPage(QGroupBox* frame, const PrefixPage& page)
{
    auto* grid = new QGridLayout(frame);
    grid->addWidget(label(QStringLiteral("Prefix"), frame), 0, 1);
    grid->addWidget(label(page.startHeading, frame), 0, 2);
    grid->addWidget(label(QStringLiteral("Example"), frame), 0, 4);
    struct RowDesign {
        NumberRow* row;
        const char *caption, *prefixName, *prefix, *startName, *start, *tickName, *tick, *exampleName;
    };
    const RowDesign invoice{&inv,
                            "Invoice:",
                            "InvPrefix_txt",
                            "INV",
                            "InvStart_txt",
                            "100001",
                            "Inv_chk",
                            "Use Free Form Invoice Creation",
                            "InvExample_lbl"};
    const RowDesign credit{&crd,
                           "Credit:",
                           "CrdPrefix_txt",
                           "CRD",
                           "CrdStart_txt",
                           "200001",
                           "Crd_chk",
                           "Use Free Form Credit Note Creation",
                           "CrdExample_lbl"};
    const RowDesign customer{&cus,
                             "Customer:",
                             "CusPrefix_txt",
                             "CUS",
                             "CusStart_txt",
                             "100001",
                             "Cus_chk",
                             "Use Free Form Customer No .Creation",
                             "CusExample_lbl"};
    const RowDesign item{&prt,
                         nullptr,
                         "PrtPrefix_txt",
                         nullptr,
                         "PrtStart_txt",
                         "100001",
                         "Part_chk",
                         "Use Free Form Item\\Part No Creation",
                         "PrtExample_lbl"};
    const RowDesign order[] = {invoice, credit, page.itemBeforeCustomer ? item : customer,
                               page.itemBeforeCustomer ? customer : item};
    int r = 1;
    for (const RowDesign& s : order) {
        NumberRow& row = *s.row;
        const bool isItem = s.row == &prt;
        grid->addWidget(label(isItem ? page.itemLabel : QLatin1String(s.caption), frame), r, 0);
        row.prefix = lineBox(s.prefixName, 4, frame, isItem ? page.itemPrefix : QLatin1String(s.prefix));
        row.start = lineBox(s.startName, 8, frame, QLatin1String(s.start));
        row.freeForm = new QCheckBox(QLatin1String(s.tick), frame);
        row.freeForm->setObjectName(QLatin1String(s.tickName));
        row.example = label(QString(), frame, QLatin1String(s.exampleName));
        grid->addWidget(row.prefix, r, 1);
        grid->addWidget(row.start, r, 2);
        grid->addWidget(row.freeForm, r, 3);
        grid->addWidget(row.example, r, 4);
        ++r;
        selectOnFocus(row.prefix);
        if (s.row != &crd)
            selectOnFocus(row.start);
        QLineEdit* prefix = row.prefix;
        QLineEdit* start = row.start;
        platform::onKeyPress(start,
                             [start](int keyAscii) { return platform::numberKey(keyAscii, start->text(), false); });
        for (QLineEdit* box : {prefix, start})
            platform::onKeyUp(box, [this](int, int) { ShowExamples(); });
        connect(row.freeForm, &QCheckBox::clicked, this, [prefix, start](bool ticked) {
            prefix->setEnabled(!ticked);
            start->setEnabled(!ticked);
        });
    }
    grid->setRowStretch(r, 1);
    // The credit series keeps its designed prefix and number: it numbers nothing.
    const std::tuple<const char*, QLineEdit*, Binding::Load> numbers[] = {
        {"InvPrefix", inv.prefix, Binding::Direct},  {"CrdPrefix", crd.prefix, Binding::Never},
        {"CustPrefix", cus.prefix, Binding::Direct}, {"PartPrefix", prt.prefix, Binding::Direct},
        {"CustStart", cus.start, Binding::Direct},   {"Invstart", inv.start, Binding::Direct},
        {"CrdStart", crd.start, Binding::Never},     {"PartStart", prt.start, Binding::Direct}};
    for (const auto& [column, box, load] : numbers)
        bind(column, box, Binding::Raw, load);
    bind("FreeformInv", inv.freeForm, Binding::Tick, Binding::Direct);
    bind("freeformCus", cus.freeForm, Binding::Tick, Binding::Direct);
    bind("freeformPart", prt.freeForm, Binding::Tick, Binding::Direct);
    bind("FreeformCrd", crd.freeForm, Binding::Tick, Binding::Direct);
    ShowExamples();
}

bool SetupControls::eventFilter(QObject* watched, QEvent* event)
{
    // Queued, so that the click that brought the focus does not undo the selection.
    if (event->type() == QEvent::FocusIn && watched->property("selectOnFocus").toBool())
        QMetaObject::invokeMethod(watched, "selectAll", Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

void SetupControls::Option_Click(int index)
{
    static const char* values[3][3] = {{"$", "Tax", ""}, {"\u00a3", "Vat", "17.5"}, {"", "", ""}};
    currency_txt->setText(QString::fromUtf8(values[index][0]));
    TaxName_txt->setText(QLatin1String(values[index][1]));
    TaxAmount_txt->setText(QLatin1String(values[index][2]));
}

void SetupControls::Show_Tax_Fields()
{
    for (QWidget* w : taxFields_)
        w->setVisible(true);
}

void SetupControls::Hide_Tax_Fields()
{
    for (QWidget* w : taxFields_)
        w->setVisible(false);
}

void SetupControls::keepTaxRoom()
{
    for (QWidget* w : taxFields_)
        keepRoomWhenHidden(w);
}

void SetupControls::ShowExamples()
{
    for (const NumberRow* row : {&inv, &crd, &cus, &prt})
        row->example->setText(row->prefix->text() + row->start->text());
}

void SetupControls::Show_Number_Boxes()
{
    for (const NumberRow* row : {&inv, &crd, &cus, &prt}) {
        row->prefix->setEnabled(!row->freeForm->isChecked());
        row->start->setEnabled(!row->freeForm->isChecked());
    }
}

const SetupControls::NumberRow& SetupControls::row(Series series) const
{
    switch (series) {
    case Series::Invoice:
        return inv;
    case Series::Customer:
        return cus;
    case Series::Item:
        break;
    }
    return prt;
}

int SetupControls::CheckNumberLength(const std::function<void()>& showPrefixes)
{
    for (Series series : {Series::Invoice, Series::Item, Series::Customer}) {
        const NumberRow& r = row(series);
        if (r.freeForm->isChecked() || !Number_too_short(r.start->text()))
            continue;
        Number_too_short_box(series);
        showPrefixes();
        r.start->setFocus();
        return 1;
    }
    return 0;
}

void SetupControls::bind(const char* column, QWidget* control, Binding::Save save, Binding::Load load)
{
    bound_.append({column, control, save, load});
}

namespace
{

QString textOf(const QWidget* control)
{
    if (const auto* memo = qobject_cast<const MemoBox*>(control))
        return memo->text();
    if (const auto* label = qobject_cast<const QLabel*>(control))
        return label->text();
    return static_cast<const QLineEdit*>(control)->text();
}

void setTextOf(QWidget* control, const QString& text)
{
    if (auto* memo = qobject_cast<MemoBox*>(control))
        memo->setText(text);
    else if (auto* label = qobject_cast<QLabel*>(control))
        label->setText(text);
    else
        static_cast<QLineEdit*>(control)->setText(text);
}

} // namespace

void SetupControls::loadRow(const Recordset& rs) const
{
    for (const Binding& b : bound_) {
        if (b.load == Binding::Never)
            continue;
        const Value v = rs.field(QLatin1String(b.column));
        if (b.save == Binding::Tick)
            static_cast<QCheckBox*>(b.control)->setChecked(!v.isNull() && v.toDouble() == 1);
        else if (b.save == Binding::Number)
            setTextOf(b.control, numberText(v.toDouble()));
        else
            setTextOf(b.control, b.load == Binding::Direct ? v.toText() : Null_to_text(v));
    }
}

SettingsValues SetupControls::values() const
{
    SettingsValues out;
    for (const Binding& b : bound_) {
        Value v;
        const bool trim = b.save == Binding::Trim || (b.save == Binding::Text && trimTexts_);
        switch (b.save) {
        case Binding::Tick:
            v = static_cast<const QCheckBox*>(b.control)->isChecked() ? 1 : 0;
            break;
        case Binding::Number:
            v = Val(textOf(b.control));
            break;
        default:
            v = trim ? textOf(b.control).trimmed() : textOf(b.control);
            break;
        }
        out.append({QLatin1String(b.column), v});
    }
    return out;
}
