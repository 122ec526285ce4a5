#include "TestUi.h"

#include "shell/Globals.h"
#include "store/Connection.h"
#include "store/Database.h"
#include "store/Functions.h"

#include <QDialog>

using namespace platform;

TestUi::TestUi()
{
    resetGlobals();
    PlainConnection.close();
    ShapeConnection.close();
    ConnectionString.clear();
    Database::closeAll();
    Hooks& h = hooks();
    h.programDir = [this] { return dir_.path(); };
    h.now = [this] { return clock; };
    h.msgBox = [this](const QString& text, int style, const QString& title) {
        shownBoxes << title + QStringLiteral(": ") + text;
        if (boxes_.empty()) {
            problems_ << QStringLiteral("unexpected box \"%1\": \"%2\"").arg(title, text);
            return int(vbCancel);
        }
        const Box b = boxes_.front();
        boxes_.pop_front();
        if (b.title != title || b.text != text || (b.style >= 0 && b.style != style))
            problems_ << QStringLiteral("box \"%1\": \"%2\" (style %3), expected \"%4\": \"%5\" (style %6)")
                             .arg(title, text).arg(style).arg(b.title, b.text).arg(b.style);
        return b.answer;
    };
    auto dialog = [this](std::deque<std::optional<QString>>& queue, const char* kind) {
        return [this, &queue, kind](const FileDialogRequest& r) -> std::optional<QString> {
            dialogs << r;
            if (queue.empty()) {
                problems_ << QStringLiteral("unexpected %1 dialog").arg(QLatin1String(kind));
                return std::nullopt;
            }
            auto answer = queue.front();
            queue.pop_front();
            return answer;
        };
    };
    h.openFile = dialog(opens_, "open");
    h.saveFile = dialog(saves_, "save");
    h.beep = [this] { ++beeps; };
    h.setPointer = [](int) {};
    h.paperSize = [this] { return paper; };
    h.showModal = [this](QDialog& d) {
        if (modals_.empty() || modals_.front().first != d.objectName()) {
            problems_ << QStringLiteral("unexpected window %1").arg(d.objectName());
            return 0;
        }
        auto handler = modals_.front().second;
        modals_.pop_front();
        return handler(d);
    };
    h.endProgram = [](int code) { throw ProgramEnded{code}; };
}

TestUi::~TestUi()
{
    PlainConnection.close();
    ShapeConnection.close();
    Database::closeAll();
    while (busyCount() > 0)
        Busy_off();
}

void TestUi::expectBox(const QString& title, const QString& text, int answer, int style)
{
    boxes_.push_back({title, text, answer, style});
}

void TestUi::expectSave(std::optional<QString> path) { saves_.push_back(std::move(path)); }
void TestUi::expectOpen(std::optional<QString> path) { opens_.push_back(std::move(path)); }

void TestUi::onModal(const QString& objectName, std::function<int(QDialog&)> handler)
{
    modals_.emplace_back(objectName, std::move(handler));
}

QString TestUi::problems() const
{
    QStringList all = problems_;
    for (const Box& b : boxes_)
        all << QStringLiteral("box never shown \"%1\": \"%2\"").arg(b.title, b.text);
    if (!saves_.empty() || !opens_.empty())
        all << QStringLiteral("file dialog never shown");
    for (const auto& m : modals_)
        all << QStringLiteral("window never opened %1").arg(m.first);
    return all.join('\n');
}

void TestUi::clearProblems() { problems_.clear(); }

bool endsProgram(const std::function<void()>& code)
{
    try {
        code();
    } catch (const ProgramEnded&) {
        return true;
    }
    return false;
}
