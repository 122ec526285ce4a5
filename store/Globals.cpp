#include "store/Globals.h"

SettingsRecord settings;
qint16 SetupDone = 0;
qint32 FrontCount = 0;
qint16 BackupDone = 0;

qint16 NewCustomerMode = 0;
qint16 CustomerChanged = 0;
qint16 CustomerDeleted = 0;
QString SelectedCustID;
FixedText<30> LastCustID;
QString PickedCustID;
FixedText<30> PickedFirstName;
FixedText<30> PickedLastName;
FixedText<30> PickedPhone;
qint16 EditInvoiceMode = 0;
qint16 InvoiceSaved = 0;
QString OpenInvoiceNo;
FixedText<30> LastInvoiceNo;
qint16 NewItemMode = 0;
qint16 ItemSaved = 0;
FixedText<30> SelectedItemID;
FixedText<30> LastItemID;
FixedText<30> HelpTopic;

const QString ProductWebSite = QStringLiteral("https://velkinvoice.example/");

void resetGlobals()
{
    settings = SettingsRecord();
    SetupDone = 0;
    FrontCount = 0;
    BackupDone = 0;
    NewCustomerMode = CustomerChanged = CustomerDeleted = 0;
    SelectedCustID.clear();
    LastCustID = QString();
    PickedCustID.clear();
    PickedFirstName = PickedLastName = PickedPhone = QString();
    EditInvoiceMode = InvoiceSaved = 0;
    OpenInvoiceNo.clear();
    LastInvoiceNo = QString();
    NewItemMode = ItemSaved = 0;
    SelectedItemID = LastItemID = HelpTopic = QString();
}
