#pragma once
// A window that opens a window of another folder does it through Open_window, which the
// main window's folder fills at start: no window folder includes another's windows. The
// opener sets the hand-over values (Globals.h) first; the window is shown modally.

#include <functional>

class QWidget;

enum class WindowName {
    frmAddInv,      // the invoice window: a new invoice, or OpenInvoiceNo when EditInvoiceMode is 1
    frmAddCust,     // the customer record
    frmsearchCust,  // the customer picker, which opens the invoice window for the one chosen
    frm_Parts,      // the item list
    frmInvoiceSet,  // the invoice customisation
    frmCustomerSet, // the customer screen customisation
};

using WindowOpener = std::function<void(WindowName, QWidget* parent)>;

void Set_window_opener(WindowOpener opener);
void Open_window(WindowName window, QWidget* parent);
