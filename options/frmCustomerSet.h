#pragma once
// "Customize Customer Screen": the five optional fields of the customer window,
// changed from where their effect is seen.

#include "options/SetupControls.h"

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
    std::vector<CustomerScreenTick> ticks_;
    std::unique_ptr<Recordset> rs_;
};
