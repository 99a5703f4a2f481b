#include "platform/qt/QtWindows.h"

#include "platform/qt/QtAccess.h"
#include "platform/qt/QtMessageBox.h"
#include "platform/qt/QtText.h"
#include "text/Text.h"
#include "window/Dialogs.h"

#include <QApplication>
#include <QEventLoop>
#include <QFontMetrics>
#include <QMenu>

#include <algorithm>
#include <utility>

namespace tarnwick {

QtWindows::QtWindows(MessageLoop& loop, ClockService& clock, PosixSockets& sockets)
    : loop_(loop), pump_(loop, clock, sockets, sockets.Descriptor(), [this] { SyncWindows(); }) {
    UseReaderInterfaces();
}

QtWindows::~QtWindows() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

void QtWindows::Run() {
    pump_.RunNested([] { QApplication::exec(); });
}

WindowHandle QtWindows::Open(Window& window) { return loop_.Add(window); }

void QtWindows::Show(Window& window) {
    if (HasEnded())
        return;
    QtWindow& real = RealWindow(window);
    real.Sync();
    real.ShowInFront();
}

void QtWindows::ShowModal(Window& window) {
    if (HasEnded())
        return;
    QtWindow& real = RealWindow(window);
    real.setWindowModality(Qt::ApplicationModal);
    Show(window);
    QEventLoop shown;
    QObject::connect(&real, &QtWindow::Detached, &shown, &QEventLoop::quit);
    pump_.RunNested([&shown] { shown.exec(); });
}

void QtWindows::Hide(Window& window) {
    if (QtWindow* real = Find(window); real != nullptr)
        real->hide();
}

void QtWindows::Discard(Window& window) {
    loop_.Remove(window);
    const auto found = std::ranges::find_if(windows_, [&](const auto& real) { return real->Shows(window); });
    if (found == windows_.end())
        return;
    discarded_.push_back(std::move(*found));
    windows_.erase(found);
    discarded_.back()->Detach();
}

MessageAnswer QtWindows::RunMessageBox(const BoxText& text, const std::string& title, MessageIcon icon,
                                       MessageButtons buttons) {
    QtMessageBox box(text, title, icon, buttons, QApplication::activeWindow());
    MessageAnswer answer = MessageAnswer::Ok;
    pump_.RunNested([&] { answer = box.Ask(); });
    return answer;
}

LineSize QtWindows::SizeInBox(const std::string& line) {
    const QFontMetrics metrics(QApplication::font("QMessageBox"));
    return {metrics.horizontalAdvance(SingleLineOf(line)), metrics.lineSpacing()};
}

const MenuEntry* QtWindows::RunMenu(const Menu& menu, Window& window) {
    QtWindow* real = Find(window);
    if (real == nullptr)
        return nullptr;
    QMenu popUp(real);
    popUp.setAccessibleName(SingleLineOf(menu.Caption));
    for (const MenuEntry* entry : menu.Entries) {
        QAction* action = entry->Separator ? popUp.addSeparator() : popUp.addAction(QString());
        if (entry->Separator)
            continue;
        const auto widthOf = [&popUp](const std::string& text) {
            return popUp.fontMetrics().horizontalAdvance(SingleLineOf(text));
        };
        action->setText(LiteralCaption(SingleLineOf(Elided(entry->Caption, WidestMenuCaption, widthOf))));
        action->setEnabled(entry->Enabled);
    }
    QAction* chosen = nullptr;
    pump_.RunNested([&] { chosen = popUp.exec(real->MenuPlace()); });
    return chosen == nullptr ? nullptr : menu.Entries[static_cast<std::size_t>(popUp.actions().indexOf(chosen))];
}

PreviousProcedure QtWindows::InstallProcedure(WindowHandle window, WindowProcedure procedure) {
    return loop_.Install(window, procedure);
}

void QtWindows::RestoreProcedure(WindowHandle window, PreviousProcedure previous) { loop_.Restore(window, previous); }

std::int32_t QtWindows::CallProcedure(PreviousProcedure previous, WindowHandle window, std::uint32_t message,
                                      std::int32_t first, std::int32_t second) {
    return loop_.Call(previous, window, message, first, second);
}

void QtWindows::End() {
    pump_.End();
    for (const auto& real : windows_)
        real->hide();
}

QtWindow* QtWindows::Find(const Window& window) const {
    const auto found = std::ranges::find_if(windows_, [&](const auto& real) { return real->Shows(window); });
    return found != windows_.end() ? found->get() : nullptr;
}

QtWindow& QtWindows::RealWindow(Window& window) {
    if (QtWindow* real = Find(window); real != nullptr)
        return *real;
    return *windows_.emplace_back(std::make_unique<QtWindow>(window, pump_, heldKeys_));
}

void QtWindows::SyncWindows() {
    for (const auto& real : windows_)
        if (real->isVisible())
            real->Sync();
    // Without a handler on the stack nobody is in a discarded window, but Qt may still be: it deletes them itself.
    if (pump_.State().Idle())
        for (auto& real : std::exchange(discarded_, {}))
            real.release()->deleteLater();
}

} // namespace tarnwick
