#include "FrontEnd.h"

#include "PosixMachine.h"
#include "duplicates/Form7.h"
#include "platform/qt/QtLook.h"
#include "platform/qt/QtWindows.h"
#include "posix_support.h"

#include <QAbstractButton>
#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>
#include <QTimer>

#include <stdexcept>

namespace tarnwick::bench {

namespace {

class HeadlessFrontEnd : public FrontEnd {
public:
    std::string Name() const override { return "headless"; }
    MemorySettings& Settings() override { return machine_.Settings; }
    void Press(Window& window, Control& button) override { test::Press(window, button); }
    void PressHeader(Window& window, GridControl& grid, int column) override { window.Raise(grid.HeaderClick, column); }
    void ScrollTo(Window&, GridControl&, double) override {}
    void Pass() override { machine_.Windows.WaitForEvents(); }
    void Draw(Window&) override {}
    void Watch(std::function<void()> look) override { machine_.Events.EachPass = std::move(look); }

private:
    test::PosixMachine machine_;
};

class QtFrontEnd : public FrontEnd {
public:
    QtFrontEnd() {
        QApplication::setQuitOnLastWindowClosed(false);
        UseClassicLook(application_);
    }

    std::string Name() const override { return "Qt"; }
    MemorySettings& Settings() override { return settings_; }
    void Press(Window& window, Control& button) override { Part<QAbstractButton>(window, button).click(); }
    void PressHeader(Window& window, GridControl& grid, int column) override {
        emit Part<QTableView>(window, grid).horizontalHeader()->sectionClicked(column - 1);
    }
    void ScrollTo(Window& window, GridControl& grid, double part) override {
        auto& view = Part<QTableView>(window, grid);
        view.verticalScrollBar()->setValue(static_cast<int>(part * view.verticalScrollBar()->maximum()));
        view.viewport()->repaint();
    }
    void Pass() override { windows_.WaitForEvents(); }
    void Draw(Window& window) override {
        windows_.Show(window);
        WidgetOf(window).repaint();
        QApplication::processEvents();
    }
    void Watch(std::function<void()> look) override {
        timer_.disconnect();
        timer_.stop();
        if (!look)
            return;
        QObject::connect(&timer_, &QTimer::timeout, std::move(look));
        timer_.start(1);
    }

private:
    static QWidget& WidgetOf(const Window& window) {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->objectName() == QString::fromStdString(window.Name) && widget->isVisible())
                return *widget;
        throw std::logic_error("no window " + window.Name);
    }

    template <class Widget> static Widget& Part(const Window& window, const Control& control) {
        auto* part = WidgetOf(window).findChild<Widget*>(QString::fromStdString(control.Name));
        if (part == nullptr || !part->isEnabled())
            throw std::logic_error("no control " + control.Name);
        return *part;
    }

    int count_ = 1;
    char name_[9] = "tarnwick";
    char* arguments_[2] = {name_, nullptr};
    QApplication application_{count_, arguments_};
    PosixClock clock_;
    MessageLoop loop_{clock_};
    PosixFiles files_;
    PosixShortcuts shortcuts_;
    MemorySettings settings_;
    PosixSockets sockets_{loop_};
    QtWindows windows_{loop_, sockets_};
    RecordingShell shell_;
    PosixText text_;
    ServicesInUse inUse_{{files_, shortcuts_, settings_, sockets_, windows_, clock_, shell_, text_}};
    QTimer timer_;
};

} // namespace

std::unique_ptr<FrontEnd> Headless() { return std::make_unique<HeadlessFrontEnd>(); }
std::unique_ptr<FrontEnd> OnQt() { return std::make_unique<QtFrontEnd>(); }

void CheckAvailability(FrontEnd& program) {
    constexpr int rootNode = 2;
    if (!Form3.IsLoaded())
        Form3.Show();
    program.Press(*Form3, Form3->Command1);
    program.Press(*Form4, Form4->Command1);
    if (Form4->Tree1.NodeCheck(rootNode) == 0) {
        Form4->Tree1.SetNodeCheck(rootNode, 1);
        Form4->Raise(Form4->Tree1.Check, rootNode, 1);
    }
    program.Press(*Form4, Form4->Command1);
}

void Finish(FrontEnd& program) {
    if (Form4->Command1.Caption != "&Finish")
        throw std::logic_error("a check ended with findings");
    program.Press(*Form4, Form4->Command1);
}

void CheckDuplicates(FrontEnd& program) {
    if (!Form3.IsLoaded())
        Form3.Show();
    Form3->Option1.Value = false;
    Form3->Option2.Value = true;
    program.Press(*Form3, Form3->Command1);
    program.Press(*Form7, Form7->Command1);
    while (Form7->Command1.Caption != "&Finish")
        program.Pass();
}

struct FavoritesFolder::Home {
    test::TemporaryHome Folder;
};

FavoritesFolder::FavoritesFolder() : home_(std::make_unique<Home>()) { std::filesystem::create_directory(Root()); }
FavoritesFolder::~FavoritesFolder() = default;
std::string FavoritesFolder::Root() const { return home_->Folder / "Favorites"; }

void FavoritesFolder::Fill(int count, bool folders, const std::function<std::string(int number)>& url) const {
    constexpr int aFolder = 100;
    for (int number = 0; number < count; ++number) {
        const std::string folder = folders ? "/Folder " + std::to_string(number / aFolder) : "";
        test::WriteFile(Root() + folder + "/Favorite " + std::to_string(number) + ".url",
                        "[InternetShortcut]\r\nURL=" + url(number) + "\r\n");
    }
}

} // namespace tarnwick::bench
