#pragma once
// The main window: the start of the program, its commands and its end.

#include <QDialog>
#include <QMainWindow>

class frmMain : public QMainWindow
{
    Q_OBJECT
public:
    explicit frmMain(QWidget* parent = nullptr);

    void MDIForm_Load();
    void MDIForm_Activate();
    void Toolbar1_ButtonClick(int index);
    void MnuSave_Click();
    void mnurestore_Click();

    bool unloaded() const { return unloaded_; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void Create_database();
    void Load_settings();
    void MDIForm_Unload();

    bool unloaded_ = false;
};

// The placeholder for the automatic invoice routine announced in the status bar.
class frm_AutoInv : public QDialog
{
    Q_OBJECT
public:
    explicit frm_AutoInv(QWidget* parent = nullptr);
};

// The connection strings the program opens the data file with.
QString plainConnectionString();
QString shapeConnectionString();
