#pragma once
// What an EN 16931 e-invoice needs beyond the tables every file has: seller and buyer
// identifiers, bank account, currency. Kept in side tables, name and value, keyed to the
// business (the one settings row) or to a customer, so the existing tables keep their
// columns and a file without e-invoicing data reads as before.

#include <QStringList>

class Database;

// The side tables, made with the file or on opening a file of an older version.
QStringList eInvoiceTableStatements();

// Adds what this version's files have beyond an older one's, in one transaction, and
// records the version.
void upgradeToCurrent(Database& db);

// The seller's values by name; an absent name reads as empty text.
QString eInvoiceSetting(Database& db, const QString& name);
void setEInvoiceSetting(Database& db, const QString& name, const QString& value);

// A customer's values by name; they go with the customer's number.
QString eInvoiceCustomerValue(Database& db, const QString& custId, const QString& name);
void setEInvoiceCustomerValue(Database& db, const QString& custId, const QString& name, const QString& value);
