#pragma once
// "Company Setup": the first-run wizard that writes the one settings row.

#include "store/SettingsTable.h"

#include <QDialog>
#include <memory>

class QGroupBox;
class QLabel;
class QPushButton;
class Recordset;
class SetupControls;

class frm_setup : public QDialog
{
    Q_OBJECT
public:
    explicit frm_setup(QWidget* parent = nullptr);
    ~frm_setup() override;

    void Next_cmd_Click();
    void Back_cmd_Click();
    void Finish_cmd_Click();
    void Cancel_cmd_Click();

protected:
    // The wizard is left by Finish or Cancel alone.
    void reject() override {}
    void closeEvent(QCloseEvent* event) override;

private:
    void Form_Activate();
    void Show_page();
    SettingsValues Setup_values() const;
    void Save_setup();
    void Settings();

    qint16 Page = 0;
    SetupControls* controls_;
    QGroupBox* Frame1[3];
    QLabel* Heading[3];
    QPushButton *Back_cmd, *Next_cmd, *Finish_cmd, *Cancel_cmd;
    std::unique_ptr<Recordset> rs_;
};
