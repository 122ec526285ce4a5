#pragma once
// A printed report: a design of named sections and controls, in twips (1440 to the
// inch), loaded from a data file, changed by code at run time and bound to the rows of
// a report source.

#include <QFont>
#include <QImage>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

class ShapeRecordset;

namespace report
{

enum class SectionKind { ReportHeader, PageHeader, GroupHeader, Detail, GroupFooter, PageFooter, ReportFooter };
enum class ControlKind { Label, Field, Picture, Shape, Line, Function };

struct Control {
    QString name;
    ControlKind kind = ControlKind::Label;
    int left = 0, top = 0, width = 0, height = 0;
    QString caption;  // labels
    QString field;    // bound fields and functions: the column
    QString format;   // "0.00", "0.00;(0.00)", "dd/MM/yyyy", "MM/dd/yyyy" or none
    QString function; // "Sum" or "Count"
    // Functions: the level of a grouped source whose rows they take, by its "as" name;
    // empty for the detail rows.
    QString member;
    Qt::Alignment alignment = Qt::AlignLeft;
    bool wordWrap = true;
    int fontSize = 9; // points
    bool bold = false;
    bool visible = true;
    bool shrink = false; // a text too big for its box is printed smaller until it fits
    QImage picture;

    void setCaption(const QString& text) { caption = text; }
    void setVisible(bool on) { visible = on; }
};

struct Section {
    QString name;
    SectionKind kind = SectionKind::Detail;
    int height = 0;
    bool newPageAfter = false; // each record on a page of its own
    std::vector<Control> controls;

    Control& control(const QString& name); // without regard to case; error 3265 when absent
};

class Report
{
public:
    // Reads a design; error 53 when there is none, 13 when it is not a design.
    static std::unique_ptr<Report> load(const QString& path);

    QString name;
    QString title;
    // What a saved copy is called, such as an invoice's number; empty: the title and the date.
    QString documentName;
    int width = 0;
    int leftMargin = 0, rightMargin = 0, topMargin = 0, bottomMargin = 0;
    std::vector<Section> sections;

    Section& section(const QString& name);                         // without regard to case
    Control& control(const QString& section, const QString& name); // the same
    const Section* sectionOf(SectionKind kind) const;
    // The fields its controls show or sum, for its source to read those alone.
    QStringList boundFields() const;

    // Further ways out the preview offers beside printing and saving a PDF, such as an
    // invoice's e-invoice: a button each, given the report shown.
    struct Command {
        QString caption;
        QString name; // the button's object name
        std::function<void(const Report&)> run;
    };
    std::vector<Command> commands;

    void setDataSource(std::shared_ptr<ShapeRecordset> source) { source_ = std::move(source); }
    const std::shared_ptr<ShapeRecordset>& dataSource() const { return source_; }

private:
    std::shared_ptr<ShapeRecordset> source_;
};

// The paper a report prints on: the printer's, or A4 or Letter by the user's country
// when the printer reports another form.
struct Paper {
    int code;  // 1 Letter, 9 A4
    int width; // twips, portrait
    int height;
};
Paper paperFor(int code);

// Shows the report as a modal preview: the desktop's, or what the hook puts in its place
// (tests and the benchmark take the report instead).
void Show(Report& report);
std::function<void(Report&)>& previewHook();

// The file a saved PDF of the report is first offered as: its document name (or its title
// and today's date) in the user's documents folder, with no character a file name cannot hold.
QString proposedPdfPath(const Report& report);

// The picture at a path for a picture control: a missing file fails with 53, a file that
// holds no picture Qt can read with 481.
QImage loadPicture(const QString& path);

} // namespace report
