#pragma once
// What the Options window and "Customize Options" have in common: the four optional
// fields of the invoice window, the invoice type, the logo, and the layout ticks and
// texts with their small sample of an invoice; how those controls load from the
// settings row and reach the row and the settings record.

#include "store/SettingsTable.h"

#include <QObject>

class MemoBox;
class QButtonGroup;
class QCheckBox;
class QDialog;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QWidget;
class Recordset;

class InvoiceOptions : public QObject
{
    Q_OBJECT
public:
    // trimPath: whether the logo's path is saved trimmed.
    InvoiceOptions(QDialog* window, bool trimPath);

    // The ticks chk1 to chk4 beside their headings Text1 to Text4, from grid row `top`.
    void buildScreenFields(QGroupBox* frame, QGridLayout* grid, int top);
    // "Invoice Type 1" to "Invoice Type 6", the options named by the stem and 1 to 6.
    void buildInvoiceTypes(QGroupBox* frame, const char* stem);
    // "Invoice Logo:", the path, the picture and "Select Logo" and "Erase Logo".
    void buildLogo(QWidget* frame, QGridLayout* grid, const char* labelName);
    // The three include ticks, the statement and the terms (limits of 0: none), and the
    // sample beside them.
    void buildLayout(QGroupBox* frame, int statementLimit, int termsLimit);

    void Tick_Captions();
    void Show_Sample();
    void Select_cmd_Click();
    void Erase_cmd_Click();
    void Load_picture(const QString& path);
    void Default_Includes();

    // The type selected, "1" to "6", or empty when none is.
    QString selectedInvoiceType() const;

    // The current settings row into these controls.
    void loadScreenFields(const Recordset& rs);
    void loadLayout(const Recordset& rs);
    // These controls' values by column, in the order of "Customize Options", for the row
    // and the record alike. With no invoice type chosen the type stays as it was.
    SettingsValues values() const;

    QCheckBox* chk[4] = {};
    QLineEdit* Text[4] = {};
    QRadioButton* Opt[6] = {};
    QLabel *path_lbl = nullptr, *logopic = nullptr;
    QCheckBox *Shipping_chk = nullptr, *Statement_chk = nullptr, *Terms_Chk = nullptr;
    MemoBox *statement_txt = nullptr, *terms_txt = nullptr;

private:
    bool trimPath_;
    QButtonGroup* invoiceTypes_ = nullptr;
    QWidget *terms1 = nullptr, *terms2 = nullptr, *shipping1 = nullptr, *shipping2 = nullptr, *statement1 = nullptr,
            *statement2 = nullptr;
    QString dialogFileName_; // the file dialog keeps its last choice while the window is up
};

// A flag column ticks its box at 1 only; a Null is no tick.
bool isOn(const class Value& value);
qint16 flagOf(const QCheckBox* box);
