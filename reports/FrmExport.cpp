#include "reports/FrmExport.h"

#include "platform/CodePage.h"
#include "platform/Controls.h"
#include "platform/Keys.h"
#include "platform/Platform.h"
#include "reports/ReportList.h"
#include "store/Ageing.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Errors.h"
#include "store/Functions.h"
#include "store/Recordset.h"
#include "store/SelectWalk.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QGridLayout>
#include <QGroupBox>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTreeView>

using namespace platform;

namespace
{

// How a field is written: as text (a Null empty), plain (a Null fails), money (as few
// decimals as needed) or as an amount of 7 and 2 with its leading blanks.
enum class Way { Text, Plain, Money, Amount };

struct Column {
    const char* header;
    const char* field;
    Way way;
};

const std::vector<Column> CustomerColumns{
    {"Date", "Date", Way::Text},         {"CustID", "CustID", Way::Text},    {"FirstName", "FirstName", Way::Text},
    {"LastName", "LastName", Way::Text}, {"Address1", "Address", Way::Text}, {"Address2", "Address2", Way::Text},
    {"City", "City", Way::Text},         {"County", "address4", Way::Text},  {"Zip/Post Code", "Postcode", Way::Text},
};
const std::vector<Column> DetailColumns{
    {"Phone", "Phone", Way::Text},
    {"Mobile", "Mobile", Way::Text},
    {"Fax", "Fax", Way::Text},
    {"Email", "Email", Way::Text},
    {"DelAddress1", "DelAddress1", Way::Text},
    {"DelAddress2", "DelAddress2", Way::Text},
    {"DelAddress3", "DelAddress3", Way::Text},
    {"DelAddress4", "DelAddress4", Way::Text},
    {"DelAddress5", "DelAddress5", Way::Text},
};
// "Field1" to "Field4" keep their names whatever the customised headings say.
const std::vector<Column> InvoiceColumns{
    {"Date", "Date", Way::Plain},
    {"Invno", "invno", Way::Text},
    {"Custno", "Custno", Way::Text},
    {"CustomerName", "CustomerName", Way::Text},
    {"Subtotal", "Subtotal", Way::Money},
    {"Tax", "Vat", Way::Money},
    {"Total", "Total", Way::Money},
    {"Discount", "Discount", Way::Money},
    {"Paid", "Paid", Way::Money},
    {"WrittenOff", "WrittenOff", Way::Money},
    {"Balance", "balance", Way::Money},
    {"Notes", "Notes", Way::Plain},
    {"DiscountPercentage", "DiscountPercentage", Way::Plain},
    {"Field1", "SalesPerson", Way::Text},
    {"Field2", "SalesNo", Way::Text},
    {"Field3", "ShippedNo", Way::Text},
    {"Field4", "TrackingNo", Way::Text},
};
const std::vector<Column> LineColumns{
    {"", "Qty", Way::Plain},     {"", "PartID", Way::Text},  {"", "Description", Way::Text},
    {"", "Amount", Way::Amount}, {"", "Total", Way::Amount},
};
const std::vector<Column> ItemColumns{
    {"ID", "ID", Way::Text},
    {"ShortDesc", "ShortDesc", Way::Text},
    {"Desc", "Desc", Way::Text},
    {"Price", "Price", Way::Money},
};
// "Notes" is text here, where the invoice exports write it plain.
const std::vector<Column> DebtorColumns{
    {"Date", "Date", Way::Plain},           {"invno", "invno", Way::Text},
    {"Custno", "Custno", Way::Text},        {"CustomerName", "CustomerName", Way::Text},
    {"Subtotal", "Subtotal", Way::Money},   {"Vat", "Vat", Way::Money},
    {"Total", "Total", Way::Money},         {"Discount", "Discount", Way::Money},
    {"Paid", "Paid", Way::Money},           {"WrittenOff", "WrittenOff", Way::Money},
    {"balance", "balance", Way::Money},     {"0-30 Days", "balance1", Way::Money},
    {"31-60 Days", "balance2", Way::Money}, {"61+ Days", "balance3", Way::Money},
    {"Notes", "Notes", Way::Text},
};

QString written(const Value& value, Way way)
{
    switch (way) {
    case Way::Text:
        return Null_to_text(value);
    case Way::Plain:
        return value.toText();
    case Way::Money:
        return Null_to_zero(value).toString();
    case Way::Amount:
        return Format_amount(Null_to_zero(value), 7, 2);
    }
    return {};
}

// The columns of a source, found once by name rather than once a row.
template <class Rows> std::vector<std::pair<int, Way>> resolve(const Rows& rs, const std::vector<Column>& columns)
{
    std::vector<std::pair<int, Way>> out;
    for (const Column& c : columns) {
        const int i = rs.fieldIndex(QLatin1String(c.field));
        if (i < 0)
            throw VbError(err::ItemNotFound, QStringLiteral("No field ") + QLatin1String(c.field));
        out.emplace_back(i, c.way);
    }
    return out;
}

template <class Rows>
void appendFields(QString& line, const Rows& rs, const std::vector<std::pair<int, Way>>& fields, bool comma)
{
    for (size_t k = 0; k < fields.size(); ++k) {
        if (k > 0 && !comma)
            line += QLatin1Char(',');
        line += written(rs.field(fields[k].first), fields[k].second);
        if (comma)
            line += QLatin1Char(',');
    }
}

QString header(const std::vector<Column>& columns, bool comma)
{
    QString line;
    for (size_t k = 0; k < columns.size(); ++k)
        line += (k > 0 && !comma ? QStringLiteral(",") : QString()) + QLatin1String(columns[k].header) +
                (comma ? QStringLiteral(",") : QString());
    return line;
}

// The file being written, a line at a time, each line ended by CR LF.
class ExportFile
{
public:
    explicit ExportFile(const QString& path) : file_(path)
    {
        if (!file_.open(QIODevice::WriteOnly | QIODevice::Truncate))
            throw VbError(err::PathFileAccess, file_.errorString());
    }
    void Print(const QString& line)
    {
        bytes_.clear();
        appendWindows1252(bytes_, line);
        bytes_ += "\r\n";
        if (file_.write(bytes_) < 0)
            throw VbError(err::DiskFull, file_.errorString());
    }
    void flush()
    {
        if (!file_.flush())
            throw VbError(err::DiskFull, file_.errorString());
    }

private:
    QFile file_;
    QByteArray bytes_; // one line's bytes, its space kept from line to line
};

// The invoice lines by their key, read once, in key order: the at-or-after seek for an
// invoice lands on the first line whose key equals it without regard to case.
class InvoiceLines
{
public:
    InvoiceLines()
    {
        rows_ = ShapeRecordset::open(
            QStringLiteral("SELECT InvNo, Qty, PartID, Description, Amount, Total FROM invoiceD ORDER BY InvNo"),
            Database::open(dataSourceOf(ConnectionString)));
        key_ = rows_->fieldIndex(QStringLiteral("invno"));
        fields_ = resolve(*rows_, LineColumns);
        for (int i = rows_->recordCount() - 1; i >= 0; --i) {
            rows_->moveTo(i);
            first_.insert(fold(rows_->field(key_).toText()), i);
        }
    }
    // Appends the lines whose key is the invoice's own, as typed, five fields each.
    void append(QString& line, const QString& invoice)
    {
        for (int i = first_.value(fold(invoice), -1); i >= 0 && i < rows_->recordCount(); ++i) {
            rows_->moveTo(i);
            if (rows_->field(key_).toText() != invoice)
                break;
            appendFields(line, *rows_, fields_, true);
        }
    }

private:
    // The store folds the letters A to Z alone when it compares keys.
    static QString fold(QString key)
    {
        for (QChar& c : key)
            if (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
                c = QChar(c.unicode() + 32);
        return key;
    }

    std::shared_ptr<ShapeRecordset> rows_;
    int key_ = -1;
    std::vector<std::pair<int, Way>> fields_;
    QHash<QString, int> first_;
};

// The fields an export writes, for its source to read those alone.
QStringList fieldList(const std::vector<Column>& columns, const char* also = nullptr)
{
    QStringList fields;
    for (const Column& c : columns)
        fields << QLatin1String(c.field);
    if (also)
        fields << QLatin1String(also);
    return fields;
}

// The rows of an export's source, walked once and written as they come.
std::unique_ptr<SelectWalk> openSource(const QString& source, const QStringList& fields)
{
    if (!ShapeConnection.isOpen())
        throw VbError(err::DatabaseFailure, QStringLiteral("The export's source could not be opened."));
    return std::make_unique<SelectWalk>(source, ShapeConnection.database(), fields);
}

void noRecords()
{
    MsgBox(QStringLiteral("No records to Export"), vbExclamation, QStringLiteral("No Records"));
}

} // namespace

FrmExport::FrmExport(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("FrmExport"));
    setWindowTitle(QStringLiteral("Export to Excel"));
    auto* grid = new QGridLayout(this);
    auto* label1 = named(new QLabel(QStringLiteral("Path"), this), "Label1");
    Path_txt = named(new QLineEdit(this), "Path_txt");
    auto* label2 = named(new QLabel(QStringLiteral("Filename:"), this), "Label2");
    Filename_txt = named(new QLineEdit(this), "Filename_txt");
    Command2 = named(new QPushButton(QStringLiteral("Change Path"), this), "Command2");
    Export_cmd = named(new QPushButton(QStringLiteral("&Export"), this), "Export_cmd");
    Exit_cmd = named(new QPushButton(QStringLiteral("E&xit"), this), "Exit_cmd");
    grid->addWidget(label1, 3, 0);
    grid->addWidget(Path_txt, 3, 1, 1, 2);
    grid->addWidget(Command2, 3, 3);
    grid->addWidget(label2, 4, 0);
    grid->addWidget(Filename_txt, 4, 1, 1, 2);
    grid->addWidget(Export_cmd, 5, 2);
    grid->addWidget(Exit_cmd, 5, 3);

    // The folder chooser, hidden until wanted. This machine has one root: the drive
    // list holds it alone.
    Frame1 = named(new QGroupBox(QStringLiteral("Choose Path"), this), "Frame1");
    auto* frame = new QGridLayout(Frame1);
    Drive1 = named(new QComboBox(Frame1), "Drive1");
    Drive1->addItem(QDir::rootPath());
    folders_ = new QFileSystemModel(this);
    folders_->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
    folders_->setRootPath(QDir::rootPath());
    Dir1 = named(new QTreeView(Frame1), "Dir1");
    Dir1->setModel(folders_);
    for (int c = 1; c < folders_->columnCount(); ++c)
        Dir1->hideColumn(c);
    Dir1->setHeaderHidden(true);
    path1_txt = named(new QLineEdit(Frame1), "path1_txt");
    Command1 = named(new QPushButton(QStringLiteral("&OK"), Frame1), "Command1");
    Command3 = named(new QPushButton(QStringLiteral("&Cancel"), Frame1), "Command3");
    frame->addWidget(Drive1, 0, 0, 1, 2);
    frame->addWidget(Dir1, 1, 0, 1, 2);
    frame->addWidget(path1_txt, 2, 0, 1, 2);
    frame->addWidget(Command1, 3, 0);
    frame->addWidget(Command3, 3, 1);
    grid->addWidget(Frame1, 0, 4, 6, 1);
    Frame1->hide();

    const RangeControls range = buildRangeControls(this, grid);
    list1 = range.list1;
    DTPicker1 = range.DTPicker1;
    DTPicker2 = range.DTPicker2;
    List1_Click();
    Path_txt->setText(programDir());
    Dir1->setCurrentIndex(folders_->index(programDir()));
    Dir1_Change();

    list1->installEventFilter(this);
    Dir1->installEventFilter(this);
    connect(list1, &QListWidget::currentRowChanged, this, &FrmExport::List1_Click);
    connect(list1, &QListWidget::itemClicked, this, &FrmExport::List1_Click);
    connect(list1, &QListWidget::itemDoubleClicked, this, &FrmExport::List1_Click);
    onKeyUp(list1, [this](int, int) { List1_Click(); });
    // No extension and no folder can be typed into the name.
    onKeyPress(Filename_txt, [](int key) { return key == '.' || key == '/' || key == '\\' || key == '&' ? 0 : key; });
    connect(Command2, &QPushButton::clicked, Frame1, &QWidget::show);
    connect(Drive1, &QComboBox::currentTextChanged, this, &FrmExport::Drive1_Change);
    connect(Dir1->selectionModel(), &QItemSelectionModel::currentChanged, this, &FrmExport::Dir1_Change);
    connect(Dir1, &QTreeView::clicked, this, &FrmExport::Dir1_Change);
    connect(Command1, &QPushButton::clicked, this, &FrmExport::Command1_Click);
    connect(Command3, &QPushButton::clicked, Frame1, &QWidget::hide);
    connect(Export_cmd, &QPushButton::clicked, this, &FrmExport::Export_cmd_Click);
    connect(Exit_cmd, &QPushButton::clicked, this, &QDialog::reject);
}

bool FrmExport::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == list1 && event->type() == QEvent::FocusIn)
        Export_cmd->setFocus();
    if (watched == Dir1 && event->type() == QEvent::FocusOut)
        Dir1_Change();
    return QDialog::eventFilter(watched, event);
}

// The chosen list names the file, replacing what was typed.
void FrmExport::List1_Click()
{
    if (list1->currentRow() >= 0)
        Filename_txt->setText(QLatin1String(listEntries()[size_t(list1->currentRow())].fileName));
}

void FrmExport::Drive1_Change()
{
    Dir1->setCurrentIndex(folders_->index(Drive1->currentText().left(2)));
}

void FrmExport::Dir1_Change()
{
    path1_txt->setText(folders_->filePath(Dir1->currentIndex()));
}

void FrmExport::Command1_Click()
{
    Frame1->hide();
    Path_txt->setText(folders_->filePath(Dir1->currentIndex()));
}

void FrmExport::Export_cmd_Click()
{
    if (Filename_txt->text().trimmed().isEmpty()) {
        MsgBox(QStringLiteral("Please enter a filename"), vbExclamation, QStringLiteral("Invalid Filename"));
        Filename_txt->setFocus();
        return;
    }
    const QFileInfo folder(Path_txt->text());
    if (Path_txt->text().isEmpty() || !folder.isDir()) {
        MsgBox(QStringLiteral("Folder does not exist please try again!"), vbExclamation,
               QStringLiteral("Invalid Path"));
        return;
    }
    const QString target = Path_txt->text() + QLatin1Char('/') + Filename_txt->text() + QStringLiteral(".csv");
    if (QFileInfo::exists(target) && MsgBox(QStringLiteral("File already exists! Do wish to overwrite?"),
                                            vbYesNo + vbQuestion, QStringLiteral("Overwrite?")) == vbNo)
        return;
    const int index = list1->currentRow();
    if (index == 5)
        Debtors(target);
    else if (index >= 0)
        Export_list(index, target);
}

// The five exports that open their file before their source: an empty source leaves an
// empty file.
void FrmExport::Export_list(int index, const QString& target)
{
    Trap(objectName(), listEntries()[size_t(index)].routine, [&] {
        const QDate start = DTPicker1->date();
        const QDate end = DTPicker2->date();
        std::vector<Column> columns = index <= 1 ? CustomerColumns : index <= 3 ? InvoiceColumns : ItemColumns;
        if (index == 1)
            columns.insert(columns.end(), DetailColumns.begin(), DetailColumns.end());
        const bool comma = index != 4; // "Items" alone has no closing comma
        std::unique_ptr<InvoiceLines> lines;
        if (index == 3)
            lines = std::make_unique<InvoiceLines>();
        ExportFile file(target);
        const auto rows = openSource(index <= 1   ? Customers_source(start, end)
                                     : index <= 3 ? Invoices_source(start, end)
                                                  : Items_source(),
                                     fieldList(columns, index == 3 ? "InvNo" : nullptr));
        if (!rows->next())
            return noRecords();
        line_ = header(columns, comma);
        file.Print(line_);
        const auto fields = resolve(*rows, columns);
        const int invno = rows->fieldIndex(QStringLiteral("INVNO"));
        do {
            line_.resize(0); // keeps its space for the next row
            appendFields(line_, *rows, fields, comma);
            if (lines)
                lines->append(line_, rows->field(invno).toText());
            file.Print(line_);
        } while (rows->next());
        file.flush();
        MsgBox(QStringLiteral("Export successfully completed."), vbInformation, QStringLiteral("Successful"));
    });
}

void FrmExport::Debtors(const QString& target)
{
    Trap(objectName(), "Debtors", [&] {
        Age_invoices(exportAgeing);
        const auto rows = openSource(Debtors_source(), fieldList(DebtorColumns));
        if (!rows->next())
            return noRecords();
        ExportFile file(target);
        // Built onto what the line holds: after another export, that one's last row.
        line_ += header(DebtorColumns, true);
        file.Print(line_);
        const auto fields = resolve(*rows, DebtorColumns);
        do {
            line_.resize(0); // keeps its space for the next row
            appendFields(line_, *rows, fields, true);
            file.Print(line_);
        } while (rows->next());
        file.flush();
        MsgBox(QStringLiteral("Export successfully completed."), vbInformation, QStringLiteral("Successful"));
    });
}
