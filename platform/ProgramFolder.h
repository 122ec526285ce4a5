#pragma once
// Where the program keeps its files on this machine. The one place that knows how an
// installed copy differs from a build tree or an unpacked portable copy.

#include <QString>

namespace platform
{

// The folder for the data file, Logs and the exchange files: the executable's folder
// when the program may write there and is not an installed copy, otherwise the user's
// data folder ($XDG_DATA_HOME/velk-invoice or ~/.local/share/velk-invoice), made when
// missing. Without a trailing slash.
QString programDirFor(const QString& executableDir);

// A read-only file that ships with the program (a help page): beside the executable or
// in the installed share folder, whichever has it. When neither has it, the path where
// it was expected, so that a viewer can say what is missing.
QString shippedFileFor(const QString& executableDir, const QString& name);

} // namespace platform
