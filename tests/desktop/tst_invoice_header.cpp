// The invoice window's header stands still when the balance banner appears and when its
// figure grows.

#include "TestUi.h"

#include "invoices/frmAddInv.h"
#include "shell/frmMain.h"
#include "store/Globals.h"

#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

class InvoiceHeaderTest : public QObject
{
    Q_OBJECT
private slots:
    void headerStandsStill()
    {
        TestUi ui;
        auto main = startProgram(ui, {{"TaxAmount", 10.0}});
        addRow("Customers", {{"CustID", "CUS1"}, {"LastName", "Brown"}, {"FirstName", "Ann"}});
        PickedCustID = "CUS1";
        frmAddInv w;
        showUp(w);
        const QStringList header{"Inv_lbl", "Date_txt", "Cust_lbl", "Customername_lbl", "Label16", "SalesPerson_txt"};
        const auto places = [&] {
            QList<QRect> out;
            for (const QString& name : header)
                out << child<QWidget>(w, name)->geometry();
            return out;
        };
        const QList<QRect> before = places();
        QVERIFY(child<QLabel>(w, "StillOwes_lbl")->isHidden());
        for (const char* amount : {"5", "1234567.89"}) {
            child<QLineEdit>(w, "Qty_txt(0)")->setText("1");
            child<QLineEdit>(w, "Amount_txt(0)")->setText(amount);
            w.Calc_Totals();
            QVERIFY(!child<QLabel>(w, "StillOwes_lbl")->isHidden());
            QCoreApplication::processEvents();
            QCOMPARE(places(), before);
        }
        VERIFY_UI(ui);
    }
};

VELK_TEST(InvoiceHeaderTest)
#include "tst_invoice_header.moc"
