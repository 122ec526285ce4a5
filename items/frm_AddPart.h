#pragma once
// The item record: one row of the items table, created or changed; the window closes
// itself after a complete save.

#include <QDialog>

class MemoBox;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

class frm_AddPart : public QDialog
{
    Q_OBJECT
public:
    explicit frm_AddPart(QWidget* parent = nullptr);

    void Newdetails();
    void LoadPart();
    int CheckItemNo();
    int CheckItemEntries();
    void Update_cmd_Click();
    void Exit_cmd_Click();
    void reject() override;

protected:
    void Form_Activate();
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void countLeft();

    QLineEdit* Part_lbl;
    QLineEdit* Short_txt;
    MemoBox* long_txt;
    QLineEdit* Price_txt;
    QCheckBox* tax_chk;
    QLabel* count_lbl;
    QPushButton* Update_cmd;
    QPushButton* Exit_cmd;
};
