#pragma once
// The invoice list: every invoice, found by number, date, customer or amount, and the
// way to add, change and delete one. Rows are read when the window opens and then
// corrected one by one.

#include <QDialog>

class ListRules;
class ListView;

// "Add to New Customer": a new invoice for a new customer, through the customer record,
// or for one picked from the customer list. False when the user cancels the question.
bool Add_invoice(QWidget* parent);

class frmInvoice : public QDialog
{
    Q_OBJECT
public:
    explicit frmInvoice(QWidget* parent = nullptr);

    void Load_list();
    void NewInvoice();
    void Changed_Inv();
    void Delete_item();
    void Toolbar1_ButtonClick(int place);
    void OpenInvoice();
    void SaveEInvoice();
    void DeleteInvoice();

    ListRules* rules() const { return rules_; }

protected:
    void Form_Activate();

private:
    bool handOverSelected();
    ListView* Inv_lst;
    ListRules* rules_;
    QString DeleteNo;
};
