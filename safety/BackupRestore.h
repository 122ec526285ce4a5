#pragma once
// Backup and restore of the one data file, from the main window's File menu.

#include <QString>

namespace safety
{

// File > Save: copies the data file to a place the user picks.
void MnuSave();
// File > Restore: puts a copy called Data.mdb back in place of the data file.
void mnurestore();

// True when both paths name one file on disk, whatever their spelling.
bool sameFile(const QString& a, const QString& b);

} // namespace safety
