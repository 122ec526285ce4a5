#pragma once
// The invoice window: one invoice's header, eight lines and totals, new or old as the
// hand-over values say (EditInvoiceMode, OpenInvoiceNo, the picked customer). The
// window's fields are the invoice: figures live in them as text until a save.

#include <QDialog>
#include <array>
#include <memory>
#include <optional>

class ListRules;
class MemoBox;
class QCheckBox;
class QDateEdit;
class QFrame;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolBar;
class ListView;
class QVBoxLayout;
namespace report
{
class Report;
}
namespace einvoice
{
struct Document;
}

class frmAddInv : public QDialog
{
    Q_OBJECT
public:
    static constexpr int Lines = 8;

    explicit frmAddInv(QWidget* parent = nullptr);

    void NewInvoice();
    void OldInvoice();
    void Fill_Parts_List();
    void Calc_Totals();
    void Show_Balance();
    void PaidFull_chk_Click();
    void Check1_Click(int index);
    void Pick_Item();
    void Close_Picker();
    void Clear_Line();
    void Clear_All();
    void Toolbar1_ButtonClick(int place);
    void Print_Invoice(); // in frmAddInv_Print.cpp
    // The saved invoice as an e-invoice file; the page given is the one previewed, else
    // the invoice as it prints (frmAddInv_EInvoice.cpp).
    void Save_einvoice(const report::Report* shown = nullptr);
    // The page of its e-invoice: the one previewed, or the invoice as it prints, with the
    // norm's figures where the figures conflict (issued corrected); none when it cannot print.
    std::unique_ptr<report::Report> EInvoice_page(const einvoice::Document& d, const report::Report* shown = nullptr);
    void Update_cmd_Click();
    int CheckInvNo();
    void Exit_cmd_Click();

    qint16 currentLine() const { return CurrentLine; }
    ListRules* pickerRules() const { return pickerRules_; }

protected:
    void Form_Activate();
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void done(int result) override;

private:
    void buildToolbar(QVBoxLayout* layout);
    void buildHeader(QVBoxLayout* layout);
    void buildLines(QVBoxLayout* layout);
    void buildTotals(QVBoxLayout* layout);
    void buildCommands(QVBoxLayout* layout);
    void buildPicker();
    void connectEvents();
    void openInvoice();

    enum class Field { None, PartID, Qty, Desc, Amount, Check, Tax };
    struct Place {
        Field field;
        int row;
    };
    Place placeOf(QObject* control) const;
    std::array<QWidget*, 7> rowFields(int row) const; // what the row highlight colours
    void lineFocus(Place place, QWidget* control);
    void lineLeft(Place place);
    void clearRow(int row);
    void hideTaxColumns();
    void Save_invoice();
    void noNumberBox();
    void Calc();

    // The steps of printing, in frmAddInv_Print.cpp.
    std::unique_ptr<report::Report> Invoice_report();
    void fillHeading(report::Report& r, int type, const QString& billing, const QString& shipping,
                     const QString& contact, QString taxLine);
    void fillLines(report::Report& r);
    void fillTotals(report::Report& r);
    void fillDataBlock(report::Report& r, int type);
    void fillTermsAndLogo(report::Report& r);
    void fillPaymentCode(report::Report& r, std::optional<qint64> dueCents = std::nullopt);

    qint16 CurrentLine = 0;
    bool unloaded_ = false;

    QToolBar* Toolbar1;
    QLineEdit *Inv_lbl, *Customername_lbl;
    QLabel *Cust_lbl, *Label16, *Paid_lbl, *StillOwes_lbl;
    QDateEdit* Date_txt;
    QLineEdit *SalesPerson_txt, *SalesOrder_txt, *Shipped_txt, *TrackingNo_txt;
    QLabel *SalesPerson_lbl, *SalesOrder_lbl, *Shipped_lbl, *TrackingNo_lbl;
    MemoBox* notes_txt;
    QCheckBox* Notes_chk;

    QLabel *Desc_lbl, *toptax;
    QLineEdit* PartID_txt[Lines];
    QCheckBox* Check1[Lines];
    QLineEdit* Qty_txt[Lines];
    QLineEdit* Desc_txt[Lines];
    QLineEdit* Amount_txt[Lines];
    QLineEdit* tota1l_txt[Lines];
    QCheckBox* tax[Lines];
    QLineEdit* Blank[Lines];
    QLineEdit* tax1[Lines];

    QLabel *subtotal_txt, *vat_txt, *Discount_txt, *total_txt, *vat_lbl, *taxamount;
    QLineEdit *Discount2_txt, *total_txt2, *Paid_txt, *Writtenoff_txt, *Balance_txt;
    QCheckBox* PaidFull_chk;

    QFrame* part_frame;
    ListView* parts_lst;
    QLineEdit* Search_txt;
    QPushButton *Search_cmd, *select_cmd;
    ListRules* pickerRules_;

    QPushButton *update_cmd, *Exit_cmd;
};
