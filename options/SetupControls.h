#pragma once
// What the setup wizard and the Options window have in common: the company page, the
// currency and tax page and the four numbering rows, with their limits, key rules,
// examples and free-form ticks, and how those controls reach the settings row and record.

#include "platform/Controls.h"
#include "platform/MemoBox.h"
#include "store/Globals.h"
#include "store/Numbering.h"
#include "store/SettingsTable.h"

#include <QObject>
#include <functional>
#include <vector>

class QBoxLayout;
class QCheckBox;
class QDialog;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class Recordset;

// A box of several lines that takes no more than its limit of characters.
MemoBox* memoBox(const QString& name, int maxLength, QWidget* parent);

// A control that keeps its room in the layout while hidden.
void keepRoomWhenHidden(QWidget* control);

// The customer window's five optional fields as ticks in a column, each with its
// settings column: shared by Options and "Customize Customer Screen".
struct CustomerScreenTick {
    const char* column;
    qint16 SettingsRecord::*field;
    QCheckBox* box;
};
std::vector<CustomerScreenTick> customerScreenTicks(QWidget* frame, QBoxLayout* column);

// The three default reminder letters, the first with its missing blank after "oversight.".
QString Default_reminder(int n);

// A control bound to a column of the settings row: how the window saves it and loads it.
struct Binding {
    enum Save {
        Trim,   // its text, trimmed
        Text,   // its text, trimmed where the window trims its texts
        Raw,    // its text as it stands
        Tick,   // 1 ticked, 0 not; loaded ticked at 1 only, a Null unticked
        Number, // the leading number of its text
    };
    enum Load {
        Direct, // read as it stands: a Null fails
        Empty,  // read through Null_to_text
        Never,  // keeps its designed value
    };
    const char* column;
    QWidget* control;
    Save save;
    Load load;
};

class SetupControls : public QObject
{
    Q_OBJECT
public:
    struct NumberRow {
        QLineEdit* prefix;
        QLineEdit* start;
        QCheckBox* freeForm;
        QLabel* example;
    };
    struct PrefixPage {
        QString startHeading; // "Start Number" or "Next Number"
        QString itemLabel;    // how the item row is labelled
        QString itemPrefix;   // the item series' designed prefix
        bool itemBeforeCustomer;
    };

    // trimTexts: whether the texts of the company and tax boxes are saved trimmed.
    SetupControls(QDialog* window, bool trimTexts);

    void buildCompanyPage(QGroupBox* frame);
    void buildCurrencyPage(QGroupBox* frame, const QString& currency);
    void buildPrefixPage(QGroupBox* frame, const PrefixPage& page);

    // A box that selects its whole text when it takes the focus.
    void selectOnFocus(QWidget* box);

    void Option_Click(int index); // the country options fill currency and tax
    void Show_Tax_Fields();
    void Hide_Tax_Fields();
    // The tax rows keep their room while hidden, so the page does not grow with them.
    void keepTaxRoom();
    void ShowExamples();
    void Show_Number_Boxes();
    // The numbers of invoices, items and customers, in that order, must be four or more
    // long unless free form: 1 after telling the user and putting the focus in the box.
    int CheckNumberLength(const std::function<void()>& showPrefixes);

    // Binds a control of the window to its column; the pages bind their own.
    void bind(const char* column, QWidget* control, Binding::Save save, Binding::Load load);
    // The bound controls from the current row.
    void loadRow(const Recordset& rs) const;
    // The bound controls' values by column, for the row and the record alike.
    SettingsValues values() const;

    QLineEdit *Name_txt = nullptr, *Phone_txt = nullptr, *Mobile_txt = nullptr, *email_txt = nullptr,
              *WebAddress_txt = nullptr;
    MemoBox* Address_txt = nullptr;
    QRadioButton* Option[3] = {};
    QLineEdit *currency_txt = nullptr, *TaxName_txt = nullptr, *TaxAmount_txt = nullptr, *TaxNumber_txt = nullptr;
    QCheckBox* TaxEnabled_chk = nullptr;
    NumberRow inv{}, crd{}, cus{}, prt{};

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const NumberRow& row(Series series) const;

    QDialog* window_;
    bool trimTexts_;
    QList<QWidget*> taxFields_;
    QList<Binding> bound_;
};
