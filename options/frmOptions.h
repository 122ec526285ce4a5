#pragma once
// "Options": every setting of the one settings row, on eight pages under a tab strip.

#include "shell/SettingsTable.h"

#include <QDialog>
#include <memory>

class MemoBox;
class QButtonGroup;
class QCheckBox;
class QDateEdit;
class QGroupBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QTabBar;
class Recordset;
class SetupControls;
enum class Series;

class frmOptions : public QDialog
{
    Q_OBJECT
public:
    explicit frmOptions(QWidget* parent = nullptr);
    ~frmOptions() override;

    void Load_system();
    void Update();
    void Settings();
    void Restore_Reminders();
    void Default_Includes();
    void Show_Sample();
    void Tick_Captions();
    int CheckNumberLength();
    int CheckInvNo();
    int CheckCustNo();
    int CheckItemNo();

    void cmdApply_Click();
    void cmdOK_Click();
    void cmdCancel_Click();
    void CheckRanges_cmd_Click();
    void Select_cmd_Click();
    void Erase_cmd_Click();
    void RestoreReminders_cmd_Click();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void reject() override { cmdCancel_Click(); }

private:
    void Form_Activate();
    void bindOwnControls();
    SettingsValues Option_values() const;
    void buildDefaultsPage(QGroupBox* frame);
    void buildInvoicePage(QGroupBox* frame);
    void buildLayoutPage(QGroupBox* frame);
    void buildRemindersPage(QGroupBox* frame);
    void buildCustomizePage(QGroupBox* frame);
    void showFrame(int index);
    int CheckNo(Series series);
    // The length and in-use checks that Apply, OK and "Check Prefix Numbers" begin with.
    int Check_numbers();
    void Load_picture(const QString& path);
    QString selectedInvoiceType() const;

    SetupControls* c_;
    QTabBar* tbsOptions;
    QGroupBox* Frame1[8];
    QDateEdit *DTPicker1, *DTPicker2;
    QCheckBox *Present_chk, *DebtorStart, *confirmBackup_chk, *ConfirmAll_chk;
    QCheckBox *Shipping_chk, *Statement_chk, *Terms_Chk;
    MemoBox *statement_txt, *terms_txt;
    QWidget *terms1, *terms2, *shipping1, *shipping2, *statement1, *statement2;
    QRadioButton* Opt[6];
    QButtonGroup* invoiceTypes_;
    QLabel *path_lbl, *logopic;
    QString dialogFileName_; // the file dialog keeps its last choice while the window is up
    MemoBox* Reminder[3];
    QCheckBox* chk[4];
    QLineEdit* Text[4];
    QCheckBox *fax_chk, *phone_chk, *email_chk, *Shipping1_chk, *mobile_chk;
    std::unique_ptr<Recordset> rs_;
};
