// Every window fits the screen it opens on, a laptop's or a large one magnified twice:
// no larger than the free area, and every control inside the window or in its scrolling
// body, so none is cut off.

#include "TestUi.h"

#include "customers/frmAddCust.h"
#include "customers/frmCustomer.h"
#include "customers/frmsearchCust.h"
#include "debtors/frmDebtor.h"
#include "help/Help_frm.h"
#include "help/frmBrowser.h"
#include "invoices/frmAddInv.h"
#include "invoices/frmInvoice.h"
#include "items/frm_AddPart.h"
#include "items/frm_Parts.h"
#include "options/frmCustomerSet.h"
#include "options/frmInvoiceSet.h"
#include "options/frmOptions.h"
#include "options/frm_setup.h"
#include "platform/Window.h"
#include "report/ReportPreview.h"
#include "reports/FrmExport.h"
#include "reports/frmReports.h"
#include "shell/frmMain.h"

#include <QAbstractButton>
#include <QScrollArea>
#include <QtTest>

namespace
{

// What does not fit: the window against the screen's free area less its frame, each
// named control against the window, or against the scrolling body that holds it.
QStringList fitProblems(QWidget& window)
{
    window.show();
    QTest::qWait(1);
    QStringList problems;
    const auto* body = window.findChild<QScrollArea*>(QStringLiteral("WindowBody"), Qt::FindDirectChildrenOnly);
    const QSize room = window.screen()->availableGeometry().size() - QSize(8, 40);
    const auto fits = [](QSize inner, QSize outer) {
        return inner.width() <= outer.width() && inner.height() <= outer.height();
    };
    // Within the room, and using it: a window whose body scrolls is no smaller than the
    // room or the body, whichever is less.
    const QSize used = body ? body->widget()->minimumSizeHint().boundedTo(room) : QSize();
    if (!fits(window.size(), room) || !fits(window.minimumSize(), room) || !fits(used, window.size()))
        problems << QStringLiteral("window %1x%2 (at least %3x%4) on %5x%6")
                        .arg(window.width())
                        .arg(window.height())
                        .arg(window.minimumWidth())
                        .arg(window.minimumHeight())
                        .arg(room.width())
                        .arg(room.height());
    for (QWidget* c : window.findChildren<QWidget*>()) {
        if (c->objectName().isEmpty() || !c->isVisibleTo(&window) || !c->parentWidget()->isVisibleTo(&window))
            continue;
        QWidget* frame = body && body->widget()->isAncestorOf(c) ? body->widget() : &window;
        const QRect at(c->mapTo(frame, QPoint(0, 0)), c->size());
        if (!frame->rect().contains(at))
            problems << QStringLiteral("%1 at %2,%3 %4x%5 outside %6x%7")
                            .arg(c->objectName())
                            .arg(at.x())
                            .arg(at.y())
                            .arg(at.width())
                            .arg(at.height())
                            .arg(frame->width())
                            .arg(frame->height());
    }
    window.hide();
    return problems;
}

} // namespace

class ScreensTest : public QObject
{
    Q_OBJECT
private slots:
    void eachWindowFits_data()
    {
        QTest::addColumn<WindowMaker>("window");
        QTest::newRow("frmCustomer") << makeWindow<frmCustomer>();
        QTest::newRow("frmAddCust") << makeWindow<frmAddCust>();
        QTest::newRow("frmsearchCust") << makeWindow<frmsearchCust>();
        QTest::newRow("frm_Parts") << makeWindow<frm_Parts>();
        QTest::newRow("frm_AddPart") << makeWindow<frm_AddPart>();
        QTest::newRow("frmInvoice") << makeWindow<frmInvoice>();
        QTest::newRow("frmAddInv") << makeWindow<frmAddInv>();
        QTest::newRow("frmDebtor") << makeWindow<frmDebtor>();
        QTest::newRow("frmReports") << makeWindow<frmReports>();
        QTest::newRow("FrmExport") << makeWindow<FrmExport>();
        QTest::newRow("frmOptions") << makeWindow<frmOptions>();
        QTest::newRow("frm_setup") << makeWindow<frm_setup>();
        QTest::newRow("frmCustomerSet") << makeWindow<frmCustomerSet>();
        QTest::newRow("frmInvoiceSet") << makeWindow<frmInvoiceSet>();
        QTest::newRow("Help_frm") << makeWindow<Help_frm>();
        QTest::newRow("frmBrowser") << makeWindow<frmBrowser>();
    }
    void eachWindowFits()
    {
        QFETCH(WindowMaker, window);
        TestUi ui;
        // A full settings row: the options windows read most columns without a Null check.
        QMap<QString, Value> row{{"TaxAmount", 17.5}, {"TaxEnabled", 1}, {"DefaultEnd", "31/12/2026"}};
        for (const char* column :
             {"BusinessName", "Address",    "Phone",      "Mobile",    "Email",     "Web",       "Currency",
              "TaxName",      "TaxNo",      "Reminder1",  "Reminder2", "Reminder3", "Statement", "terms1",
              "InvPrefix",    "CustPrefix", "PartPrefix", "CustStart", "Invstart",  "PartStart"})
            row.insert(column, QStringLiteral("Velk %1").arg(column));
        auto main = startProgram(ui, row);
        std::unique_ptr<QDialog> w(window(main.get()));
        QStringList problems;
        ui.onModal(w->objectName(), [&](QDialog& d) {
            problems = fitProblems(d);
            return 0;
        });
        platform::showModal(*w);
        QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QStringLiteral("; "))));
        VERIFY_UI(ui);
    }

    // Alt with a caption's "&" letter presses that control: no two shown in one window
    // share a letter, or Alt would only move between them.
    void mnemonicsAreUnique_data() { eachWindowFits_data(); }
    void mnemonicsAreUnique()
    {
        QFETCH(WindowMaker, window);
        TestUi ui;
        auto main = startProgram(ui, {});
        std::unique_ptr<QDialog> w(window(main.get()));
        QMap<QChar, QStringList> byLetter;
        for (QAbstractButton* b : w->findChildren<QAbstractButton*>()) {
            const qsizetype at = QString(b->text()).replace(QLatin1String("&&"), QLatin1String("  ")).indexOf('&');
            if (at >= 0 && at + 1 < b->text().size() && b->isVisibleTo(w.get()) &&
                b->parentWidget()->isVisibleTo(w.get()))
                byLetter[b->text().at(at + 1).toLower()] << b->objectName();
        }
        for (auto it = byLetter.cbegin(); it != byLetter.cend(); ++it)
            QVERIFY2(it.value().size() == 1,
                     qPrintable(QStringLiteral("Alt+%1: %2").arg(it.key()).arg(it.value().join(", "))));
        VERIFY_UI(ui);
    }

    void mainWindowAndPreviewFit()
    {
        TestUi ui;
        auto main = startProgram(ui, {});
        platform::fitToScreen(main.get());
        QStringList problems = fitProblems(*main);
        QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QStringLiteral("; "))));
        report::Report r;
        r.width = 13500;
        const report::Layout layout(r, platform::vbPRPSA4);
        report::ReportPreview preview(layout, main.get());
        platform::fitToScreen(&preview);
        problems = fitProblems(preview);
        QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QStringLiteral("; "))));
        VERIFY_UI(ui);
    }
};

VELK_TEST(ScreensTest)
#include "tst_screens.moc"
