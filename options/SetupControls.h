#pragma once
// What the setup wizard and the Options window have in common: the company page, the
// currency and tax page and the four numbering rows, with their limits, key rules,
// examples and free-form ticks, and how those controls reach the settings row and record.

#include "options/Numbering.h"

#include <QObject>
#include <QPlainTextEdit>
#include <functional>

class QCheckBox;
class QDialog;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class Recordset;

// A box of several lines that takes no more than its limit of characters.
class LimitedTextEdit : public QPlainTextEdit
{
    Q_OBJECT
public:
    LimitedTextEdit(const QString& name, int maxLength, QWidget* parent);
    QString text() const { return toPlainText(); }
    void setText(const QString& text) { setPlainText(text); }

private:
    int maxLength_;
};

// A control named as the windows know it, a tick and a button that is never the default.
template <class T> T* named(T* widget, const char* name)
{
    widget->setObjectName(QLatin1String(name));
    return widget;
}
QCheckBox* tick(const char* name, const char* caption, QWidget* parent);
QPushButton* button(const char* name, const char* caption, QWidget* parent);

// The three default reminder letters, the first with its missing blank after "oversight.".
QString Default_reminder(int n);

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
    void ShowExamples();
    void Show_Number_Boxes();
    // The numbers of invoices, items and customers, in that order, must be four or more
    // long unless free form: 1 after telling the user and putting the focus in the box.
    int CheckNumberLength(const std::function<void()>& showPrefixes);

    // The controls into the settings row (the row current or new) and into the record.
    void writeRow(Recordset& rs, bool withCreditPrefix) const;
    void toSettings() const;

    QLineEdit *Name_txt = nullptr, *Phone_txt = nullptr, *Mobile_txt = nullptr, *email_txt = nullptr,
              *WebAddress_txt = nullptr;
    LimitedTextEdit* Address_txt = nullptr;
    QRadioButton* Option[3] = {};
    QLineEdit *currency_txt = nullptr, *TaxName_txt = nullptr, *TaxAmount_txt = nullptr, *TaxNumber_txt = nullptr;
    QCheckBox* TaxEnabled_chk = nullptr;
    NumberRow inv{}, crd{}, cus{}, prt{};

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString text(const QLineEdit* box) const;
    const NumberRow& row(Series series) const;

    QDialog* window_;
    bool trimTexts_;
    QList<QWidget*> taxFields_;
};
