#pragma once
// "E-invoicing": what an EN 16931 invoice needs that the settings and customer records do
// not hold. Under Tools for the seller; from a customer's record for that customer.

#include <QDialog>
#include <map>
#include <memory>

class QCheckBox;
class QComboBox;
class QLineEdit;
class Database;

namespace einvoice
{

class frmEInvoicing : public QDialog
{
    Q_OBJECT
public:
    // The seller's values, or, given a customer's number, that customer's.
    explicit frmEInvoicing(const QString& custId = QString(), QWidget* parent = nullptr);

    void OK_cmd_Click();

private:
    QString value(const QString& name) const;
    void store(const QString& name, const QString& value);

    QString custId_;
    std::shared_ptr<Database> db_;        // the data file the values are kept in
    std::map<QString, QLineEdit*> boxes_; // by the value's name
    QComboBox* Untaxed_cbo = nullptr;
    QLineEdit* ExemptionReason_txt = nullptr;
    QCheckBox* QrCode_chk = nullptr;
};

} // namespace einvoice
