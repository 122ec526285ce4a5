#pragma once
// "Customize Customer Screen": the five optional fields of the customer window,
// changed from where their effect is seen.

#include <QDialog>

class QCheckBox;
class Recordset;

class frmCustomerSet : public QDialog
{
    Q_OBJECT
public:
    explicit frmCustomerSet(QWidget* parent = nullptr);
    ~frmCustomerSet() override;

    void Load_system();
    void Update();
    void Settings();

private:
    QCheckBox *fax_chk, *phone_chk, *email_chk, *Shipping1_chk, *mobile_chk;
    std::unique_ptr<Recordset> rs_;
};
