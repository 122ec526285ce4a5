#pragma once
// The rows of a list window as Qt's views read them. A list over a table keeps only the
// ids of its rows and reads their texts a page at a time as they come into view, so a
// list of 300,000 invoices opens at once and holds little. A row the window writes
// itself (a row added or corrected after a save) keeps the texts it was given.

#include "store/Record.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>
#include <QStringList>
#include <exception>
#include <functional>
#include <vector>

// Lists compare by text without regard to case, then with it, so the order is total.
int compareListText(const QString& a, const QString& b);

class ListModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    // Where a list's rows come from: a table, the columns its row texts read, the ones of
    // those read as they stand (a Null there fails the row), and the texts of a record.
    struct Source {
        QString table;
        QStringList columns;
        QStringList strict;
        std::function<QStringList(const Record&)> row;
    };
    static constexpr int MarkRole = Qt::UserRole + 7;

    explicit ListModel(const QStringList& headings, QObject* parent = nullptr);

    void setSource(Source source) { source_ = std::move(source); }
    const Source& source() const { return source_; }
    // The failures of rows read while the list is painted go to the failure box, under
    // this module's name.
    void setModule(const QString& module) { module_ = module; }

    // Every row of the source's table, in table order, in place of the rows there were.
    // A row that cannot be shown ends the list: the rows before it stay, and its failure
    // goes on to the caller.
    void loadTable(const QString& connectionString);
    // Rows of the source's table chosen by the window, by id, in this order. A failing
    // row, if given, is read after them, for its failure to go on to the caller.
    void setRows(const QString& connectionString, const std::vector<qint64>& ids, qint64 failing = 0);
    void clear();

    int count() const { return int(entries_.size()); }
    QString text(int row, int column) const;
    // A row's texts; good until the next row is read.
    const QStringList& cells(int row) const;
    // Rows the window writes: they keep these texts from now on.
    void insertTexts(int at, const QStringList& cells);
    void appendTexts(std::vector<QStringList> rows);
    void setTexts(int row, const QStringList& cells);
    void setText(int row, int column, const QString& text);
    void removeAt(int row);

    // Every row's texts, each row once, in no particular order: the window's own rows as
    // they are, the rows of the table from one walk through it. A sort or a search costs
    // one reading of the table, however the list is ordered.
    void visitAll(const std::function<void(int row, const QStringList& cells)>& visit) const;
    // Orders the rows by the texts of a column; rows of equal texts keep their order.
    void sortByText(int column, Qt::SortOrder order);
    // Where a row with this text goes in rows so ordered: after the rows equal to it.
    int sortedPlace(int column, Qt::SortOrder order, const QString& text) const;

    // A tick box before the first column of each row.
    void setCheckable(bool on) { checkable_ = on; }
    Qt::CheckState checkState(int row) const { return entries_[size_t(row)].check; }
    void setCheckState(int row, Qt::CheckState state);

    void setHeadingAlignment(int column, Qt::Alignment alignment);
    // Shows a mark beside one heading and takes it from the others.
    void setHeadingMark(int column, const QString& mark, const QIcon& icon);
    QString headingMark(int column) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    struct Entry {
        qint64 id = 0; // the row in the source table; 0 for a row of the window's own texts
        int own = -1;  // its texts in owned_, or -1 when they are read from the table
        Qt::CheckState check = Qt::Unchecked;
    };
    void readPage(int row) const;
    void reportLater(std::exception_ptr failure) const;

    QStringList headings_;
    std::vector<Qt::Alignment> alignments_;
    std::vector<QString> marks_;
    std::vector<QIcon> icons_;
    Source source_;
    QString connection_;
    QString module_;
    bool checkable_ = false;
    std::vector<Entry> entries_;
    std::vector<QStringList> owned_;
    mutable QHash<qint64, QStringList> read_; // texts of table rows read lately
    mutable bool failing_ = false;
};
