#pragma once
// The modal preview of a report: every page, with zoom, printing and saving as PDF.

#include "report/ReportRenderer.h"

#include <QDialog>

class QComboBox;
class QScrollArea;
class QVBoxLayout;

namespace report
{

class ReportPreview : public QDialog
{
    Q_OBJECT
public:
    ReportPreview(const Layout& layout, QWidget* parent = nullptr);

    // Zoom choices below the percentages: the whole page, or its width, in the window.
    enum Fit { FitPage = -1, FitWidth = -2 };
    // Pixels per twip at the chosen zoom, for the page area as it stands.
    double scale() const;
    void showPages();
    void printReport();
    void savePdf();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    const Layout& layout_;
    QComboBox* zoom_;
    QScrollArea* scroll_;
    QVBoxLayout* pages_;
    double shownScale_ = 0;
};

} // namespace report
