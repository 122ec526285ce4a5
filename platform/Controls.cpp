#include "platform/Controls.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>

namespace platform
{

QCheckBox* tick(const QString& name, const QString& caption, QWidget* parent)
{
    return named(new QCheckBox(caption, parent), name);
}

QPushButton* button(const QString& name, const QString& caption, QWidget* parent)
{
    auto* b = named(new QPushButton(caption, parent), name);
    b->setAutoDefault(false);
    return b;
}

QDialogButtonBox* okCancel(QDialog* dialog, const std::function<void()>& ok)
{
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("OK_cmd"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("Cancel_cmd"));
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, ok);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    return buttons;
}

} // namespace platform
