// No text of any window is cut off, in any of its states. It is run at several scales of the display.

#include "availability/Form4.h"
#include "duplicates/Form7.h"
#include "favorites/Favorites.h"
#include "qt_person.h"
#include "report/Form5.h"
#include "report/Form6.h"
#include "shell/Form1.h"
#include "shell/Form3.h"
#include "shell/Form9.h"

namespace tarnwick::test {
namespace {

// What edges, corners and marks take from the room for a text.
std::map<ControlKind, QMargins> EdgesOf = {{ControlKind::CommandButton, {2, 2, 2, 2}},
                                           {ControlKind::CheckBox, {19, 0, 0, 0}},
                                           {ControlKind::OptionButton, {18, 0, 0, 0}},
                                           {ControlKind::Frame, {10, 0, 10, 0}},
                                           {ControlKind::TextBox, {4, 0, 4, 0}}};

QSizeF NeededBy(const QWidget& widget) {
    const QString title = widget.property("title").toString();
    const QString text = title.isEmpty() ? widget.property("text").toString() : title;
    const QFontMetricsF metrics(widget.font(), &widget);
    if (widget.property("wordWrap").toBool() && qobject_cast<const QLabel*>(&widget) != nullptr)
        return metrics.boundingRect(QRectF(0, 0, widget.width(), 10000), Qt::TextWordWrap, text).size();
    // Letters reach no higher and lower than this.
    return {metrics.size(Qt::TextShowMnemonic, text).width(),
            text.isEmpty() ? 0 : metrics.capHeight() + metrics.descent()};
}

void Look(WindowSlot& slot) {
    slot.Show();
    const Window& window = slot.Load();
    for (const Control* control : window.Controls) {
        const auto& widget = *RealOf(window)->findChild<QWidget*>(QString::fromStdString(control->Name));
        const QSizeF needed = NeededBy(widget);
        const QSizeF room = widget.rect().marginsRemoved(EdgesOf[control->Kind]).size();
        EXPECT_EQ(needed.boundedTo(room), needed) << window.Name << " " << control->Name;
    }
    const Qt::WindowFlags flags = RealOf(window)->windowFlags();
    const bool isTool = window.Border == FrameStyle::FixedTool, hasFrame = window.Border != FrameStyle::None;
    EXPECT_EQ(flags.testFlag(Qt::WindowCloseButtonHint) && flags.testFlag(Qt::WindowTitleHint), hasFrame);
    EXPECT_EQ(flags.testFlag(Qt::WindowMinimizeButtonHint), hasFrame && !isTool);
    EXPECT_EQ(flags.testFlag(Qt::WindowStaysOnTopHint), window.TopMost);
    EXPECT_EQ((flags & Qt::WindowType_Mask) == Qt::Window, window.InTaskBar);
    for (const QHeaderView* header : RealOf(window)->findChildren<QHeaderView*>())
        for (int section = 0; header->isVisible() && section < header->count(); ++section)
            EXPECT_LE(header->sectionSizeHint(section), header->sectionSize(section)) << window.Name << section;
}

TEST(QtLook, NoTextIsCutOff) {
    Favorites::SplashDone = true; // no splash: its tick would go on to start the program
    const QtMachine machine;
    for (WindowSlot* slot : std::initializer_list<WindowSlot*>{&Form9, &Form3, &Form1, &Form5, &Form6, &Form4, &Form7})
        Look(*slot);
    Form4->Label11.Caption = "The scan process was interrupted by the user.\r\n\r\n12345 bad Favorite(s) found before "
                             "the interruption.\r\n\r\n\r\nClick Report button to see and correct these problems.";
    Form4->Label10.Caption = "10:00:00";
    Form4->Label8.Caption = "Unauthorized (401)"; // the widest of its texts
    Form7->Label2.Caption = "Operation canceled by user";
    for (const char* caption : {"&Start", "&Stop", "&Report", "&Finish", "&Cancel"}) {
        Form4->Command1.Caption = Form7->Command1.Caption = caption;
        Look(Form4);
        Look(Form7);
    }
    EXPECT_EQ(PictureOf("side.jpg").size(), QSize(108, 189));
    EXPECT_EQ(QApplication::font(), FontOf({}));
}

} // namespace
} // namespace tarnwick::test
