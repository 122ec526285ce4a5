#pragma once
// Shared pieces of the numbering, setup and options tests.

#include "../support/TestUi.h"
#include "store/Value.h"

#include <QMap>
#include <QWidget>

class QDialog;
class QLineEdit;

QObject* newNumberingTest();
QObject* newSetupTest();
QObject* newOptionsTest();

// Makes the data file as a first start does and connects to it; with a row given, the
// System table gets it (the required columns filled unless given).
void makeDataFile(const QMap<QString, Value>& systemRow = {});
// A column of the first row of a table, or of the table's row count when it is empty.
Value firstRowValue(const QString& table, const QString& column);
int rowCount(const QString& table);
// "Column=value" texts as a row, and compared with the System row's texts.
QMap<QString, Value> rowOf(const QStringList& pairs);
void compareSystemRow(const QStringList& pairs);
// A button of the window pressed, and a box of it by name.
void click(QDialog& d, const char* name);
QLineEdit* box(QDialog& d, const char* name);
