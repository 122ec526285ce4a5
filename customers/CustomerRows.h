#pragma once
// How a customer shows as a row of the customer list, read from the current record.

#include <QStringList>

class Recordset;

// "Cust ID", "Customer Name", "Phone", "Address". The first name and the five address
// parts are read as they stand: a Null among them is a failure.
QStringList customerRow(const Recordset& rs);
// The address parts joined on one line: ",  " after each of the first four that is not
// blank, the parts themselves untrimmed, the postcode last.
QString joinedAddress(const QStringList& parts);
