#include "reports/frmReports.h"

#include "platform/Platform.h"
#include "report/Report.h"
#include "reports/ReportList.h"
#include "store/Ageing.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Numbers.h"

#include <QDateEdit>
#include <QEvent>
#include <QGridLayout>
#include <QListWidget>
#include <QPushButton>

using namespace platform;

namespace
{

// The layout of each entry, in list order.
const char* const Designs[] = {"Customer1_rpt", "Customer_rpt", "Invoice_rpt1",
                               "InvoiceD_rpt",  "Parts_rpt",    "Debtor_rpt"};

} // namespace

frmReports::frmReports(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmReports"));
    setWindowTitle(QStringLiteral("Reports"));
    auto* grid = new QGridLayout(this);
    select_cmd = new QPushButton(QStringLiteral("&Select"), this);
    select_cmd->setObjectName(QStringLiteral("select_cmd"));
    Exit_cmd = new QPushButton(QStringLiteral("&Exit"), this);
    Exit_cmd->setObjectName(QStringLiteral("Exit_cmd"));
    grid->addWidget(select_cmd, 3, 1);
    grid->addWidget(Exit_cmd, 3, 2);
    const RangeControls range = buildRangeControls(this, grid);
    list1 = range.list1;
    DTPicker1 = range.DTPicker1;
    DTPicker2 = range.DTPicker2;
    list1->installEventFilter(this);
    connect(list1, &QListWidget::itemDoubleClicked, this, &frmReports::select_cmd_Click);
    connect(select_cmd, &QPushButton::clicked, this, &frmReports::select_cmd_Click);
    connect(Exit_cmd, &QPushButton::clicked, this, &QDialog::reject);
}

// The list makes "Select" the button that Enter presses.
bool frmReports::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == list1 && event->type() == QEvent::FocusIn)
        select_cmd->setDefault(true);
    return QDialog::eventFilter(watched, event);
}

void frmReports::select_cmd_Click()
{
    // Even a look on screen needs paper the layouts were made for.
    const int paper = paperSize();
    if (paper != vbPRPSLetter && paper != vbPRPSA4) {
        MsgBox(QStringLiteral("Please change the paper size on your printer to 'Letter' or 'A4'"), vbExclamation,
               QStringLiteral("Change Paper Size"));
        return;
    }
    const int index = list1->currentRow();
    if (index >= 0)
        Show_report(index);
}

void frmReports::Show_report(int index)
{
    Trap(objectName(), listEntries()[size_t(index)].routine, [&] {
        const QDate start = DTPicker1->date();
        const QDate end = DTPicker2->date();
        const QString sources[] = {Customers_source(start, end),
                                   Customers_source(start, end),
                                   Invoices_source(start, end),
                                   Invoice_lines_source(start, end),
                                   Items_source(),
                                   Debtors_source()};
        if (index == 5)
            Age_invoices(reportAgeing);
        auto layout = report::Report::load(QStringLiteral(":/designs/%1.rpt.json").arg(QLatin1String(Designs[index])));
        std::shared_ptr<ShapeRecordset> rows;
        Open_shape(sources[index], rows, layout->boundFields());
        if (!rows)
            throw VbError(err::DatabaseFailure, QStringLiteral("The report's source could not be opened."));
        // Only the customer lists say that there is nothing; the others show empty.
        if (index <= 1 && rows->recordCount() == 0) {
            MsgBox(QStringLiteral("No records to print!"), vbExclamation, QStringLiteral("Nothing to Print"));
            return;
        }
        layout->setDataSource(rows);
        layout->control(QStringLiteral("Section4"), QStringLiteral("Date_lbl"))
            .setCaption(QStringLiteral("From ") + dateText(start) + QStringLiteral(" To ") + dateText(end));
        report::Show(*layout);
    });
}
