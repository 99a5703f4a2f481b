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

#include <QCheckBox>
#include <QProcess>
#include <QRadioButton>
#include <QStyleOption>

namespace tarnwick::test {
namespace {

QSizeF RoomIn(const QAbstractButton& button) {
    QStyleOptionButton option;
    option.initFrom(&button);
    const auto contents = qobject_cast<const QCheckBox*>(&button)      ? QStyle::SE_CheckBoxContents
                          : qobject_cast<const QRadioButton*>(&button) ? QStyle::SE_RadioButtonContents
                                                                       : QStyle::SE_PushButtonContents;
    return button.style()->subElementRect(contents, &option, &button).size();
}

QSizeF RoomIn(const QWidget& widget, ControlKind kind) {
    constexpr QSize frameCorners(20, 0), fieldEdge(8, 0);
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    return button != nullptr              ? RoomIn(*button)
           : kind == ControlKind::Frame   ? widget.size() - frameCorners
           : kind == ControlKind::TextBox ? widget.size() - fieldEdge
                                          : widget.size();
}

QSizeF NeededBy(const QWidget& widget, const Control& control) {
    const QString text = QString::fromStdString(
        control.Kind == ControlKind::TextBox ? static_cast<const TextBox&>(control).Text : control.Caption);
    const QFontMetricsF metrics(widget.font(), &widget);
    if (qobject_cast<const QAbstractButton*>(&widget) != nullptr)
        return metrics.size(Qt::TextShowMnemonic, text);
    if (const auto* label = qobject_cast<const QLabel*>(&widget); label != nullptr && label->wordWrap())
        return metrics.boundingRect(QRectF(0, 0, label->width(), 10000), Qt::TextWordWrap, label->text()).size();
    // Letters reach no higher and lower than this.
    return {metrics.horizontalAdvance(text), text.isEmpty() ? 0 : metrics.capHeight() + metrics.descent()};
}

void ExpectHeadersFit(const QHeaderView& header) {
    const int margins = 2 * header.style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, &header);
    for (int section = 0; section < header.count(); ++section) {
        const QString text = header.model()->headerData(section, Qt::Horizontal).toString();
        EXPECT_LE(header.fontMetrics().horizontalAdvance(text) + margins, header.sectionSize(section));
    }
}

void Look(WindowSlot& slot) {
    slot.Show();
    const Window& window = slot.Load();
    for (const Control* control : window.Controls) {
        SCOPED_TRACE(window.Name + " " + control->Name + " " + control->Caption);
        const auto& widget = QtPerson::Real<QWidget>(window, *control);
        if (control->Kind == ControlKind::Grid)
            ExpectHeadersFit(*static_cast<const QTableView&>(widget).horizontalHeader());
        const QSizeF needed = NeededBy(widget, *control);
        EXPECT_EQ(needed.boundedTo(RoomIn(widget, control->Kind)), needed);
    }
}

TEST(QtLook, NoTextIsCutOff) {
    Favorites::SplashDone = true; // no splash: its tick would go on to start the program
    const QtMachine machine;
    Form1->Text1.Text = "99";
    for (WindowSlot* slot : std::initializer_list<WindowSlot*>{&Form9, &Form3, &Form1, &Form5, &Form6, &Form4, &Form7})
        Look(*slot);
    Form4->Frame1.Visible = true;
    Form4->Label10.Caption = "10:00:00";
    Form4->Label11.Caption = "The scan process was interrupted by the user.\r\n\r\n12345 bad Favorite(s) found before "
                             "the interruption.\r\n\r\n\r\nClick Report button to see and correct these problems.";
    for (const auto& [caption, status] : {std::pair{"&Start", "Waiting..."},
                                          {"&Stop", "Unauthorized (401)"},
                                          {"&Report", "Connection error"},
                                          {"&Finish", "Unable to connect"}}) {
        Form4->Command1.Caption = caption;
        for (Label* value : {&Form4->Label5, &Form4->Label6, &Form4->Label7, &Form4->Label8})
            value->Caption = status;
        Look(Form4);
    }
    Form7->Label1.Visible = Form7->Label2.Visible = true;
    Form7->Label2.Caption = "Operation canceled by user";
    for (const char* caption : {"&Cancel", "&Finish"}) {
        Form7->Command1.Caption = caption;
        Look(Form7);
    }
}

// The scale of the display is the process's, so each one gets a process of its own.
TEST(QtLook, NoTextIsCutOffAtAnyScale) {
    for (const char* scale : {"1.5", "2"}) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_SCALE_FACTOR", scale);
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), {"--gtest_filter=QtLook.NoTextIsCutOff"});
        EXPECT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), 0) << scale << "\n" << process.readAllStandardOutput().toStdString();
    }
}

TEST(QtLook, CarriesItsPicture) { EXPECT_EQ(PictureOf("side.jpg").size(), QSize(108, 189)); }

} // namespace
} // namespace tarnwick::test
