#pragma once
// The item list: every item, found by its texts, and the way to add, change and
// delete one.

#include <QDialog>

class ListRules;
class ListView;

class frm_Parts : public QDialog
{
    Q_OBJECT
public:
    explicit frm_Parts(QWidget* parent = nullptr);

    void Load_list();
    void ChangedItem();
    void NewItem();
    void Delete_item();
    void OpenItem();
    void Toolbar1_ButtonClick(int place);

private:
    ListView* Parts_lst;
    ListRules* rules_;
};
