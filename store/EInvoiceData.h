#pragma once
// What an EN 16931 e-invoice needs beyond the tables every file has: seller and buyer
// identifiers, bank account, currency. Kept in side tables, name and value, keyed to the
// business (the one settings row) or to a customer, so the existing tables keep their
// columns and a file without e-invoicing data reads as before.

#include <QString>

class Database;

// The file's layout version once the side tables exist.
constexpr int eInvoiceSchemaVersion = 1;

// Creates the side tables when absent and raises the layout version to at least ours.
void ensureEInvoiceTables(Database& db);

// The seller's values by name; an absent name reads as empty text.
QString eInvoiceSetting(Database& db, const QString& name);
void setEInvoiceSetting(Database& db, const QString& name, const QString& value);

// A customer's values by name; they go with the customer's number.
QString eInvoiceCustomerValue(Database& db, const QString& custId, const QString& name);
void setEInvoiceCustomerValue(Database& db, const QString& custId, const QString& name, const QString& value);
