#pragma once
// The e-invoicing values the tables every file has do not hold: what each is called, what
// it defaults to, and what a valid one looks like. The seller's are kept by name in the
// settings side table, a customer's in the customers' one.

#include <QString>
#include <vector>

namespace einvoice
{

struct Field {
    const char* name;    // the key in the side table
    const char* caption; // as the dialog shows it
    int maxLength;
};

// In the order the dialogs show them.
const std::vector<Field>& sellerFields();
const std::vector<Field>& customerFields();

// What a value of a field must look like, told as the box says it; empty when it is fine
// (an empty value is fine: the rules then tell what is missing).
QString fieldProblem(const QString& name, const QString& value);

// From the currency sign the setup wizard's country set: "$" the USA, the pound the UK,
// anything else a euro country (the locale's).
QString defaultCurrencyCode(const QString& sign);
QString defaultCountryCode(const QString& sign);

// Why a written-off amount stays out: told where the format is chosen and where the data
// is kept.
QString writtenOffNote();

// Untaxed lines: zero-rated, exempt (with a reason) or reverse charge, by their codes.
const std::vector<std::pair<QString, QString>>& untaxedCategories();

} // namespace einvoice
