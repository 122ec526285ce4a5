#include "platform/Icons.h"

#include <QApplication>

namespace platform
{

QIcon themeIcon(const char* name)
{
    const QString theme = QLatin1String(name);
    return QIcon::fromTheme(theme, QIcon(QStringLiteral(":/icons/") + theme + QStringLiteral(".svg")));
}

QIcon standardIcon(QStyle::StandardPixmap pixmap)
{
    static const struct {
        QStyle::StandardPixmap pixmap;
        const char* name;
    } names[] = {
        {QStyle::SP_FileIcon, "document-new"},
        {QStyle::SP_TrashIcon, "edit-delete"},
        {QStyle::SP_FileDialogContentsView, "document-properties"},
        {QStyle::SP_DialogHelpButton, "help-contents"},
    };
    for (const auto& n : names)
        if (n.pixmap == pixmap)
            return themeIcon(n.name);
    return QApplication::style()->standardIcon(pixmap);
}

} // namespace platform
