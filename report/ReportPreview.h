#pragma once
// The modal preview of a report: every page, with zoom, printing and saving as PDF. A
// page is drawn when it comes into view.

#include "report/ReportRenderer.h"

#include <QDialog>

class QComboBox;
class QScrollArea;
class QPaintEvent;

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
    QSize pageSize() const; // in pixels, as shown
    void showPages();
    void printReport();
    void savePdf();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void paintPages(QPaintEvent* event);

private:
    const Layout& layout_;
    QComboBox* zoom_;
    QScrollArea* scroll_;
    QWidget* strip_;
    double shownScale_ = 0;
};

} // namespace report
