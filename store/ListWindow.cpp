#include "store/ListWindow.h"

#include "platform/Icons.h"
#include "store/ListView.h"

#include <QAction>
#include <QDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolBar>
#include <QVBoxLayout>

namespace
{

// Enter in the list opens the row, as a double click does.
class EnterOpens : public QObject
{
public:
    EnterOpens(QObject* parent, std::function<void()> open) : QObject(parent), open_(std::move(open)) {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter) {
                open_();
                return true;
            }
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> open_;
};

} // namespace

std::vector<ListButton> recordButtons(const char* openCaption)
{
    return {{"Add", QStyle::SP_FileIcon},
            {"Delete", QStyle::SP_TrashIcon},
            {openCaption, QStyle::SP_FileDialogContentsView},
            {"Help", QStyle::SP_DialogHelpButton}};
}

ListWindow buildListWindow(QDialog* window, const ListWindowPlan& plan)
{
    ListWindow w;
    auto* layout = new QVBoxLayout(window);

    w.toolbar = new QToolBar(window);
    w.toolbar->setObjectName(QStringLiteral("Toolbar1"));
    w.toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    int place = 1;
    for (const ListButton& b : plan.buttons) {
        w.toolbar->addSeparator()->setObjectName(QStringLiteral("Toolbar1(%1)").arg(place++));
        QAction* a = w.toolbar->addAction(platform::standardIcon(b.icon), QLatin1String(b.caption));
        a->setObjectName(QStringLiteral("Toolbar1(%1)").arg(place));
        QObject::connect(a, &QAction::triggered, window, [on = plan.onButton, place] { on(place); });
        ++place;
    }
    layout->addWidget(w.toolbar);

    auto* search = new QHBoxLayout;
    search->addWidget(new QLabel(QStringLiteral("Search:"), window));
    w.search = new QLineEdit(window);
    w.search->setObjectName(QLatin1String(plan.searchName));
    if (plan.searchMaxLength > 0)
        w.search->setMaxLength(plan.searchMaxLength);
    search->addWidget(w.search, 1);
    w.searchButton = new QPushButton(platform::themeIcon("edit-find"), QString(), window);
    w.searchButton->setObjectName(QStringLiteral("search_cmd"));
    w.searchButton->setAutoDefault(false);
    search->addWidget(w.searchButton);
    w.found = new QLabel(window);
    w.found->setObjectName(QStringLiteral("Found_lbl"));
    w.found->setMinimumWidth(80);
    search->addWidget(w.found);
    layout->addLayout(search);

    w.list = new ListView(plan.headings, window);
    w.list->setObjectName(QLatin1String(plan.listName));
    w.list->installEventFilter(new EnterOpens(w.list, plan.onOpen));
    QObject::connect(w.list, &ListView::doubleClicked, window, [open = plan.onOpen] { open(); });
    layout->addWidget(w.list, 1);

    w.exit = new QPushButton(QStringLiteral("&Exit"), window);
    w.exit->setObjectName(QStringLiteral("Exit_cmd"));
    w.exit->setAutoDefault(false);
    QObject::connect(w.exit, &QPushButton::clicked, window, &QDialog::accept);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(w.exit);
    layout->addLayout(bottom);
    return w;
}
