#pragma once
// The settings row and the settings record mapped as data: each System column with its
// record field, the field's width and how a Null in the column reads. Every load, write
// and copy of the settings goes through this one table.

#include "store/Globals.h"
#include "store/Value.h"

#include <QList>
#include <QPair>
#include <variant>
#include <vector>

class Recordset;

// What a Null in the column becomes when the record is loaded.
enum class NullRule {
    Empty, // read through Null_to_text
    Zero,  // read through Null_to_zero, so a number passes through four decimals
    Fails, // converted directly: a Null is an invalid use of Null
};

struct SettingsColumn {
    const char* column; // as System writes it; matched without regard to case
    std::variant<QString SettingsRecord::*, FixedText<30> SettingsRecord::*, FixedText<1> SettingsRecord::*,
                 qint16 SettingsRecord::*, double SettingsRecord::*>
        field;
    int width; // of fixed text; 0 for text of any length and for numbers
    NullRule null;
    bool trimmed; // trimmed before it is stored
};

// In the order the loader reads them.
const std::vector<SettingsColumn>& settingsColumns();

// Load_settings: the current row of System into the record.
void loadSettings(const Recordset& rs);

// Values for the row and the record, by column, in the order a writer assigns them.
using SettingsValues = QList<QPair<QString, Value>>;
// Into the current row of System (not updated here).
void writeSettings(Recordset& rs, const SettingsValues& values);
// Into the record: fixed texts are cut to their widths, numbers converted to the field.
void copySettings(const SettingsValues& values);
