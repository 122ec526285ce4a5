#include "store/Opener.h"

#include "store/Errors.h"

namespace
{
WindowOpener opener;
}

void Set_window_opener(WindowOpener o)
{
    opener = std::move(o);
}

void Open_window(WindowName window, QWidget* parent)
{
    if (!opener)
        throw VbError(err::ObjectNotSet);
    opener(window, parent);
}
