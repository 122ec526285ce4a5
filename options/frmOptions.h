#pragma once
// "Options": every setting of the one settings row, on eight pages under a tab strip.

#include "options/SetupControls.h"
#include "store/SettingsTable.h"

#include <QDialog>
#include <memory>

class InvoiceOptions;
class MemoBox;
class QCheckBox;
class QDateEdit;
class QGroupBox;
class QLabel;
class QLineEdit;
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
    int CheckNumberLength();
    int CheckInvNo();
    int CheckCustNo();
    int CheckItemNo();

    void cmdApply_Click();
    void cmdOK_Click();
    void cmdCancel_Click();
    void CheckRanges_cmd_Click();
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

    SetupControls* c_;
    InvoiceOptions* io_;
    QTabBar* tbsOptions;
    QGroupBox* Frame1[8];
    QDateEdit *DTPicker1, *DTPicker2;
    QCheckBox *Present_chk, *DebtorStart, *confirmBackup_chk, *ConfirmAll_chk;
    MemoBox* Reminder[3];
    std::vector<CustomerScreenTick> customerTicks_;
    std::unique_ptr<Recordset> rs_;
};
