#pragma once
// The customer record: created, changed and looked at here, with the customer's
// invoice history below it.

#include <QDialog>
#include <QMap>

class MemoBox;
class QDateEdit;
class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QVBoxLayout;
class QWidget;

class frmAddCust : public QDialog
{
    Q_OBJECT
public:
    explicit frmAddCust(QWidget* parent = nullptr);

    void Newdetails();
    void Load_customer();
    void Load_invoices();
    void LoadSetup();
    int CheckCustNo();
    int CheckEntries();
    void Save_cmd_Click();
    void Add_cmd_Click();
    void Edit_cmd_Click();
    void Delete_cmd_Click();
    void Delete_item(const QString& invoiceNo);
    void Changed_Inv();
    void NewInvoice();
    void exit_cmd_Click();
    void copy_cmd_Click();
    void Customize_cmd_Click();

    bool changed() const { return Changed; }

protected:
    void Form_Activate();
    void watch(QWidget* control);
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildDetails(QVBoxLayout* layout);
    void buildHelpLine(QVBoxLayout* layout);
    void buildHistory(QVBoxLayout* layout);
    void buildCommands(QVBoxLayout* layout);
    void connectEvents();
    void setPrompts();
    void openCustomer();
    void addEInvoicing();

    QLineEdit* line(const char* name, int maxLength);
    void unload();
    QString boxText(QWidget* box) const;
    void setBoxText(QWidget* box, const QString& text);
    QStringList invoiceRow(const class Recordset& rs) const;
    void Show_history();

    bool Changed = false;
    bool unloaded_ = false;
    QLineEdit* custid_lbl;
    QDateEdit* DTPicker1;
    QLineEdit *FirstName_txt, *Lastname_txt, *Phone_txt, *mobile_txt, *Fax_txt, *email_txt;
    MemoBox* address1;
    QLineEdit *address2, *address3, *address4, *postcode_txt;
    QLineEdit *delAddress1, *delAddress2, *delAddress3, *delAddress4, *delpostcode;
    MemoBox* Notes_txt;
    QPushButton *Save_cmd, *exit_cmd, *Customize_cmd, *copy_cmd;
    QPushButton *Add_cmd, *Edit_cmd, *Delete_cmd;
    QPushButton* EInvoicing_cmd;
    QHBoxLayout* commands_;
    QLabel *help_lbl, *Total_lbl;
    QGroupBox* inv_frame;
    QTreeWidget* Inv_lst;
    // The status prompt of each field and whether it makes Save the default button.
    QMap<QWidget*, QPair<QString, bool>> prompts_;
};
