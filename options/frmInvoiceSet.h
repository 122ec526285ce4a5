#pragma once
// "Customize Options": the invoice settings changed from the invoice window, where their
// effect is seen: the four optional fields, the layout, the logo and what it prints.

#include <QDialog>
#include <memory>

class InvoiceOptions;
class QGroupBox;
class QPushButton;
class QWidget;
class Recordset;

class frmInvoiceSet : public QDialog
{
    Q_OBJECT
public:
    explicit frmInvoiceSet(QWidget* parent = nullptr);
    ~frmInvoiceSet() override;

    void Load_system();
    void Update();
    void Settings();

    void customize_cmd_Click();
    void Back_cmd_Click();

protected:
    void done(int result) override; // the unload: the settings row is let go

private:
    InvoiceOptions* io_;
    QWidget* firstView_;
    QGroupBox* InvoiceFrame;
    QPushButton *ok_cmd, *cancel_cmd, *customize_cmd, *Back_cmd;
    std::unique_ptr<Recordset> rs_;
};
