#include "invoices/InvoiceLayouts.h"

std::unique_ptr<report::Report> Invoice_layout(int type)
{
    return report::Report::load(QStringLiteral(":/designs/Invoice%1_rpt.rpt.json").arg(type));
}

void Adjust_for_A4(report::Report& layout)
{
    layout.topMargin = 1000;
    layout.bottomMargin = 1300;
    layout.section(QStringLiteral("Section4")).height = 4500;
}
