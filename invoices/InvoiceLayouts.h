#pragma once
// The six printed invoice layouts, "1" to "6" of the settings' invoice type.

#include "report/Report.h"

#include <memory>

// Invoice1_rpt to Invoice6_rpt, as designed (for Letter paper).
std::unique_ptr<report::Report> Invoice_layout(int type);
// A4 is longer and narrower: more room above and below, and a shorter report header.
void Adjust_for_A4(report::Report& layout);
