#pragma once
// The aged debtor list: every unpaid invoice in the period of its age, with the totals
// owed for each period, and reminder letters for the invoices ticked.

#include <QDialog>

class ListRules;
class MemoBox;
class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QToolBar;
class ListView;
class QVBoxLayout;

class frmDebtor : public QDialog
{
    Q_OBJECT
public:
    explicit frmDebtor(QWidget* parent = nullptr);

    void Load_list();
    void Toolbar1_ButtonClick(int place);
    void OpenRow();
    // The selection buttons: every row, or the rows with an amount in one period.
    void SelectPeriod(int column);
    void Unselect_all_Click();

    // The letters, from the panel's OK: the scratch table, the preview, the count.
    void OK_cmd_Click();
    void Cancel_cmd_Click();
    void Build_table();
    void Print_cmd();
    void Update_reminders();

    ListRules* rules() const { return rules_; }

public slots:
    void done(int result) override;

private:
    void buildToolbar(QVBoxLayout* layout);
    void buildList(QVBoxLayout* layout);
    void buildTotals(QVBoxLayout* layout);
    void buildCommands(QVBoxLayout* layout);
    void buildLetterPanel();

    void Form_Activate();
    void Form_Unload();
    void Prepare_letters();
    void DisableList() { EnableControls(false); }
    void EnableList() { EnableControls(true); }
    void EnableControls(bool on);
    QList<int> tickedRows() const;
    void placeTotals();

    QToolBar* Toolbar1;
    ListView* debtor_lst;
    ListRules* rules_;
    QWidget* totalsStrip;
    QLabel* total30;
    QLabel* total60;
    QLabel* Total61;
    QLabel* TotalG;
    QPushButton* All_cmd;
    QPushButton* Select7_cmd;
    QPushButton* Select14;
    QPushButton* Select30;
    QPushButton* Unselect_all;
    QCheckBox* debtor_chk;
    QPushButton* Command1;

    QGroupBox* Letter_frame;
    QRadioButton* Option[3];
    MemoBox* Reminder[3];
    QLineEdit* Signed1_txt;
    QLineEdit* Signed_txt;

    qint16 letterCount = 0; // letters written by the last Build_table
    bool LettersShown = false;
    bool unloaded_ = false;
};
