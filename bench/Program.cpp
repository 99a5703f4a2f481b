#include "Program.h"

#include "platform/qt/QtLook.h"
#include "platform/qt/QtWindows.h"

#include <QAbstractButton>
#include <QApplication>

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <stdexcept>

namespace tarnwick::bench {

namespace {

class QtProgram : public Program {
public:
    QtProgram() {
        Name = "Qt";
        QApplication::setQuitOnLastWindowClosed(false);
        UseClassicLook(application_);
    }

    void Press(Window& window, Control& button) override {
        for (QWidget* shown : QApplication::topLevelWidgets())
            if (const auto* real = qobject_cast<QtWindow*>(shown); real != nullptr && real->Shows(window))
                return shown->findChild<QAbstractButton*>(QString::fromStdString(button.Name))->click();
        throw std::logic_error("no window " + window.Name);
    }
    void Wait() override { QApplication::processEvents(QEventLoop::WaitForMoreEvents); }
    void Draw(Window& window) override {
        windows_.Show(window);
        QApplication::processEvents();
    }
    std::function<void()>& EachPass() override { return windows_.EachPass; }

private:
    int count_ = 1;
    char name_[9] = "tarnwick";
    char* arguments_[2] = {name_, nullptr};
    QApplication application_{count_, arguments_};
    Watched<QtWindows> windows_{Machine.Loop, Machine.Clock, Machine.Sockets};
    ServicesInUse inUse_{
        {Machine.Files, Machine.Settings, Machine.Sockets, windows_, Machine.Clock, Machine.Shell, Machine.Text}};
};

} // namespace

std::unique_ptr<Program> OnQt() { return std::make_unique<QtProgram>(); }

FavoritesFolder::FavoritesFolder(int count, bool folders, const std::function<std::string(int number)>& url) {
    constexpr int aFolder = 100;
    std::filesystem::create_directory(Root);
    for (int number = 0; number < count; ++number) {
        const std::string folder = folders ? "/Folder " + std::to_string(number / aFolder) : "";
        files_.push_back(Root + folder + "/Favorite " + std::to_string(number) + ".url");
        test::WriteFile(files_.back(), "[InternetShortcut]\r\nURL=" + url(number) + "\r\n");
    }
    std::ranges::sort(files_);
}

void FavoritesFolder::ReadAll() const {
    std::array<char, 16384> bytes; // NOLINT: filled by read()
    for (const std::string& file : files_) {
        const int descriptor = open(file.c_str(), O_RDONLY | O_CLOEXEC);
        if (read(descriptor, bytes.data(), bytes.size()) <= 0)
            throw std::runtime_error("can't read " + file);
        close(descriptor);
    }
}

} // namespace tarnwick::bench
