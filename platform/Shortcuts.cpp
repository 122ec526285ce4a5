#include "platform/Shortcuts.h"

#include <QAbstractButton>
#include <QAction>
#include <QDialog>
#include <QKeySequence>
#include <QShortcut>

namespace platform
{

namespace
{

// Captions without their "&", and the key each takes, spelt out: not every desktop theme
// gives Quit a key of its own. Saving keys belong to the record windows (dialogs): the
// main window's "Save" is the backup.
struct Standard {
    const char* caption;
    QKeyCombination key;
    bool dialogsOnly;
};
constexpr QKeyCombination Quit = Qt::CTRL | Qt::Key_Q;
constexpr Standard standards[] = {
    {"Save", Qt::CTRL | Qt::Key_S, true},
    {"Update", Qt::CTRL | Qt::Key_S, true},
    {"Print", Qt::CTRL | Qt::Key_P, false},
    {"Print...", Qt::CTRL | Qt::Key_P, false},
    {"Add", Qt::CTRL | Qt::Key_N, false},
    {"Add Invoice", Qt::CTRL | Qt::Key_N, false},
    {"Help", QKeyCombination(Qt::Key_F1), false},
    {"Cancel", QKeyCombination(Qt::Key_Escape), true},
    {"Exit", Quit, false},
};

bool wanted(const Standard& s, const QString& caption, bool dialog)
{
    if (s.dialogsOnly && !dialog)
        return false;
    // Quitting is the main window's; in a dialog Exit only closes that window.
    if (s.key == Quit && dialog)
        return false;
    return QString(caption).remove(QLatin1Char('&')) == QLatin1String(s.caption);
}

} // namespace

void addStandardShortcuts(QWidget* window)
{
    if (window->property("velkShortcuts").toBool())
        return;
    window->setProperty("velkShortcuts", true);
    const bool dialog = qobject_cast<QDialog*>(window) != nullptr;
    // The first command of each key wins: two on one key would make it do nothing.
    QList<QKeyCombination> taken;
    const auto add = [&](QKeyCombination key, std::function<bool()> usable, std::function<void()> press) {
        if (taken.contains(key))
            return;
        taken << key;
        auto* shortcut = new QShortcut(QKeySequence(key), window);
        QObject::connect(shortcut, &QShortcut::activated, window, [usable, press] {
            if (usable())
                press();
        });
    };
    for (const Standard& s : standards) {
        for (QAction* a : window->findChildren<QAction*>())
            if (!a->isSeparator() && wanted(s, a->text(), dialog))
                add(
                    s.key, [a] { return a->isEnabled() && a->isVisible(); }, [a] { a->trigger(); });
        for (QAbstractButton* b : window->findChildren<QAbstractButton*>())
            if (wanted(s, b->text(), dialog))
                add(
                    s.key, [b, window] { return b->isEnabled() && b->isVisibleTo(window); }, [b] { b->click(); });
    }
}

} // namespace platform
