#pragma once
// The customer picker: which existing customer a new invoice is for. Picking one opens
// the invoice window at once; the picker closes when that window has closed.

#include <QDialog>

class ListRules;
class QLineEdit;
class ListView;

class frmsearchCust : public QDialog
{
    Q_OBJECT
public:
    explicit frmsearchCust(QWidget* parent = nullptr);

    void Load_list();
    void select_cmd_Click();

    ListRules* rules() const { return rules_; }

protected:
    void Form_Activate();

private:
    ListView* cust_lst;
    QLineEdit* search_txt;
    ListRules* rules_;
};
