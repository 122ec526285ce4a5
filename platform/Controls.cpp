#include "platform/Controls.h"

#include <QCheckBox>
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

} // namespace platform
