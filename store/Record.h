#pragma once
// A record's fields by name, whichever way it was read: a recordset's current row, or a
// row read for a list with only the columns that list shows.

#include "store/Value.h"

class Record
{
public:
    virtual ~Record() = default;
    virtual Value field(const QString& name) const = 0;
};
