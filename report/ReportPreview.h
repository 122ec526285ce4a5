#pragma once
// The modal preview of a report: every page, with zoom, printing and saving as PDF.

#include "report/ReportRenderer.h"

#include <QDialog>

class QComboBox;
class QVBoxLayout;

namespace report
{

class ReportPreview : public QDialog
{
    Q_OBJECT
public:
    ReportPreview(const Layout& layout, QWidget* parent = nullptr);

    void showPages();
    void printReport();
    void savePdf();

private:
    const Layout& layout_;
    QComboBox* zoom_;
    QVBoxLayout* pages_;
};

} // namespace report
