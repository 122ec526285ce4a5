#pragma once
// How a customer shows as a row of the customer list.

#include "store/ListModel.h"

#include <QStringList>

// "Cust ID", "Customer Name", "Phone", "Address". The first name and the five address
// parts are read as they stand: a Null among them is a failure.
QStringList customerRow(const Record& rs);
// The customer list's rows: the customers in table order, each as customerRow shows it.
ListModel::Source customerRows();
// The address parts joined on one line: ",  " after each of the first four that is not
// blank, the parts themselves untrimmed, the postcode last.
QString joinedAddress(const QStringList& parts);
