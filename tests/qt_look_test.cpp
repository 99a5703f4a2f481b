// No text of any window is cut off, in any of its states and at any scale of the display.

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

QSizeF RoomIn(const QWidget& widget) {
    constexpr QSize frameCorners(20, 0), fieldEdge(8, 0);
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    if (button == nullptr)
        return widget.size() - (qobject_cast<const QGroupBox*>(&widget) != nullptr   ? frameCorners
                                : qobject_cast<const QLineEdit*>(&widget) != nullptr ? fieldEdge
                                                                                     : QSize(0, 0));
    QStyleOptionButton option;
    option.initFrom(&widget);
    const auto contents = qobject_cast<const QPushButton*>(button) != nullptr ? QStyle::SE_PushButtonContents
                          : qobject_cast<const QCheckBox*>(button) != nullptr ? QStyle::SE_CheckBoxContents
                                                                              : QStyle::SE_RadioButtonContents;
    return widget.style()->subElementRect(contents, &option, &widget).size();
}

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
        const auto& widget = QtPerson::Real<QWidget>(window, *control);
        const QSizeF needed = NeededBy(widget);
        EXPECT_EQ(needed.boundedTo(RoomIn(widget)), needed) << window.Name << " " << control->Name;
    }
    for (const QHeaderView* header : QtPerson::RealOf(window)->findChildren<QHeaderView*>())
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
    for (const char* status : {"Unauthorized (401)", "Connection error", "Unable to connect"})
        for (const char* caption : {"&Start", "&Stop", "&Report", "&Finish"}) {
            Form4->Command1.Caption = caption;
            Form4->Label8.Caption = status;
            Look(Form4);
        }
    Form7->Label2.Caption = "Operation canceled by user";
    for (const char* caption : {"&Cancel", "&Finish"}) {
        Form7->Command1.Caption = caption;
        Look(Form7);
    }
    EXPECT_EQ(PictureOf("side.jpg").size(), QSize(108, 189));
}

// The scale of the display is the process's, so each one gets a process of its own.
TEST(QtLook, NoTextIsCutOffAtAnyScale) {
    for (const char* scale : {"1.5", "2"}) {
        qputenv("QT_SCALE_FACTOR", scale);
        const QStringList arguments{"--gtest_filter=QtLook.NoTextIsCutOff"};
        EXPECT_EQ(QProcess::execute(QCoreApplication::applicationFilePath(), arguments), 0) << scale;
        qunsetenv("QT_SCALE_FACTOR");
    }
}

} // namespace
} // namespace tarnwick::test
