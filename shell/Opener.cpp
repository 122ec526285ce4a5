#include "shell/Opener.h"

#include "customers/frmAddCust.h"
#include "customers/frmsearchCust.h"
#include "invoices/frmAddInv.h"
#include "items/frm_Parts.h"
#include "options/frmCustomerSet.h"
#include "options/frmInvoiceSet.h"
#include "platform/Platform.h"
#include "store/Opener.h"

namespace
{
template <class Window> void show(QWidget* parent)
{
    Window window(parent);
    platform::showModal(window);
}
} // namespace

void Install_window_opener()
{
    Set_window_opener([](WindowName window, QWidget* parent) {
        switch (window) {
        case WindowName::frmAddInv:
            return show<frmAddInv>(parent);
        case WindowName::frmAddCust:
            return show<frmAddCust>(parent);
        case WindowName::frmsearchCust:
            return show<frmsearchCust>(parent);
        case WindowName::frm_Parts:
            return show<frm_Parts>(parent);
        case WindowName::frmInvoiceSet:
            return show<frmInvoiceSet>(parent);
        case WindowName::frmCustomerSet:
            return show<frmCustomerSet>(parent);
        }
    });
}
