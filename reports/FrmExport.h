#pragma once
// The export: one of six lists written to a comma-separated file for a spreadsheet.

#include <QDialog>

class QComboBox;
class QDateEdit;
class QFileSystemModel;
class QGroupBox;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTreeView;

class FrmExport : public QDialog
{
    Q_OBJECT
public:
    explicit FrmExport(QWidget* parent = nullptr);

    void List1_Click();
    void Export_cmd_Click();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Drive1_Change();
    void Dir1_Change();
    void Command1_Click();
    void Export_list(int index, const QString& target);
    void Debtors(const QString& target);

    QListWidget* list1;
    QLineEdit *Filename_txt, *Path_txt;
    QDateEdit *DTPicker1, *DTPicker2;
    QPushButton *Export_cmd, *Exit_cmd, *Command2;
    QGroupBox* Frame1;
    QComboBox* Drive1;
    QTreeView* Dir1;
    QFileSystemModel* folders_;
    QLineEdit* path1_txt;
    QPushButton *Command1, *Command3;

    // The export line: the line being built. It lives as long as the window and is not
    // cleared between exports, which "Debtors" shows in its header.
    QString line_;
};
