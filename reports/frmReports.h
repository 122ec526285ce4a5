#pragma once
// The report chooser: one of six list reports over a date range, shown for printing.

#include <QDialog>

class QDateEdit;
class QListWidget;
class QPushButton;

class frmReports : public QDialog
{
    Q_OBJECT
public:
    explicit frmReports(QWidget* parent = nullptr);

    void select_cmd_Click();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Show_report(int index);

    QListWidget* list1;
    QDateEdit *DTPicker1, *DTPicker2;
    QPushButton *select_cmd, *Exit_cmd;
};
