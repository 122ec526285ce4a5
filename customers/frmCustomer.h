#pragma once
// The customer list: every customer, found by any visible text, and the way to add,
// open and delete one.

#include <QDialog>

class ListRules;
class ListView;

class frmCustomer : public QDialog
{
    Q_OBJECT
public:
    explicit frmCustomer(QWidget* parent = nullptr);

    void Load_list();
    void ChangedCust();
    void NewCustomer();
    void Delete_item();
    void Toolbar1_ButtonClick(int place);
    void OpenRow();

    ListRules* rules() const { return rules_; }

private:
    ListView* Cust_lst;
    ListRules* rules_;
};
