#pragma once
// A text box of several lines with a character limit, as the record windows use for
// addresses and notes.

#include <QPlainTextEdit>

class MemoBox : public QPlainTextEdit
{
    Q_OBJECT
public:
    explicit MemoBox(int maxLength, QWidget* parent = nullptr);
    QString text() const { return toPlainText(); }
    void setText(const QString& text) { setPlainText(text.left(maxLength_)); }
    int maxLength() const { return maxLength_; }

private:
    int maxLength_;
};
