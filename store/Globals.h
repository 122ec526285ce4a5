#pragma once
// The program-wide data: the settings record copied from the one System row, the state
// of the run, and the values a window hands to the window it opens.

#include <QString>

// Text of a settled width: cut and blank-padded on assignment; users trim it.
template <int N> class FixedText
{
public:
    FixedText() : s_(N, QLatin1Char(' ')) {}
    FixedText(const QString& s) { *this = s; }
    FixedText& operator=(const QString& s)
    {
        s_ = s.left(N).leftJustified(N, QLatin1Char(' '));
        return *this;
    }
    const QString& text() const { return s_; }
    operator const QString&() const { return s_; }
    QString trimmed() const { return s_.trimmed(); }
    bool operator==(const QString& other) const { return s_ == other; }

private:
    QString s_;
};

struct SettingsRecord {
    FixedText<30> BusinessName;
    QString Address;
    FixedText<30> Phone;
    FixedText<30> Mobile;
    FixedText<30> Email;
    FixedText<30> Web;
    QString InvPrefix;
    QString CrdPrefix;
    QString CustPrefix;
    QString PartPrefix;
    QString CustStart;
    QString Invstart;
    QString CrdStart;
    QString PartStart;
    FixedText<1> Currency;
    FixedText<30> TaxName;
    FixedText<30> TaxNo;
    double TaxAmount = 0;
    qint16 TaxEnabled = 0;
    QString DefaultStart;
    QString DefaultEnd;
    qint16 Debtorstart = 0;
    QString Reminder1;
    QString Reminder2;
    QString Reminder3;
    qint16 FreeformInv = 0;
    qint16 freeformCus = 0;
    qint16 freeformPart = 0;
    qint16 FreeformCrd = 0;
    qint16 IncludeShipping = 0;
    qint16 IncludeTerms = 0;
    qint16 IncludeStatement = 0;
    QString Statement;
    QString terms1;
    qint16 ConfirmExit = 0;
    qint16 ConfirmBackup = 0;
    qint16 ConfirmAll = 0;
    qint16 FaxVisible = 0;
    qint16 phoneVisible = 0;
    qint16 emailVisible = 0;
    qint16 webVisible = 0;
    qint16 shippingVisible = 0;
    qint16 mobileVisible = 0;
    qint16 text1Visible = 0;
    qint16 text2Visible = 0;
    qint16 text3Visible = 0;
    qint16 text4Visible = 0;
    FixedText<30> text1Name;
    FixedText<30> text2Name;
    FixedText<30> text3Name;
    FixedText<30> text4Name;
    qint16 Present = 0;
    QString InvoiceType;
    QString Logopath;
};

extern SettingsRecord settings;

// State of the run.
extern qint16 SetupDone;  // 1: the data file holds a settings row
extern qint32 FrontCount; // times the main window came to the front
extern qint16 BackupDone; // set by a backup, and by No to the backup question at exit

// Hand-over values, set by an opener before it shows a window modally.
extern qint16 NewCustomerMode;
extern qint16 CustomerChanged;
extern qint16 CustomerDeleted;
extern QString SelectedCustID;
extern FixedText<30> LastCustID;
extern QString PickedCustID;
extern FixedText<30> PickedFirstName;
extern FixedText<30> PickedLastName;
extern FixedText<30> PickedPhone;
extern qint16 EditInvoiceMode;
extern qint16 InvoiceSaved;
extern QString OpenInvoiceNo;
extern FixedText<30> LastInvoiceNo;
extern qint16 NewItemMode;
extern qint16 ItemSaved;
extern FixedText<30> SelectedItemID;
extern FixedText<30> LastItemID;
extern FixedText<30> HelpTopic;

// The product's web site, shown in the status bar and opened by Tools > Web.
extern const QString ProductWebSite;

// Back to the state of a fresh start (used between runs in one process, such as tests).
void resetGlobals();
