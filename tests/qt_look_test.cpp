// No text of any window is cut off, in any of its states and at any scale of the display.

#include "availability/Form4.h"
#include "duplicates/Form7.h"
#include "favorites/Favorites.h"
#include "platform/qt/QtLook.h"
#include "qt_support.h"
#include "report/Form5.h"
#include "report/Form6.h"
#include "shell/Form1.h"
#include "shell/Form3.h"
#include "shell/Form9.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOption>
#include <QTableView>

namespace tarnwick {

namespace {

using Fit = std::pair<QSizeF, QSizeF>; // what a text needs, and the room that its widget has for it

Fit FitOfLabel(const QLabel& label) {
    const QFontMetricsF metrics(label.font(), &label);
    if (!label.wordWrap()) // letters reach no higher and lower than this
        return {{metrics.horizontalAdvance(label.text()), metrics.capHeight() + metrics.descent()}, label.size()};
    const QRectF room(0, 0, label.width(), 10000);
    return {metrics.boundingRect(room, Qt::TextWordWrap, label.text()).size(), label.size()};
}

Fit FitOfButton(const QAbstractButton& button) {
    QStyleOptionButton option;
    option.initFrom(&button);
    const auto contents = qobject_cast<const QCheckBox*>(&button)      ? QStyle::SE_CheckBoxContents
                          : qobject_cast<const QRadioButton*>(&button) ? QStyle::SE_RadioButtonContents
                                                                       : QStyle::SE_PushButtonContents;
    return {button.fontMetrics().size(Qt::TextShowMnemonic, button.text()),
            button.style()->subElementRect(contents, &option, &button).size()};
}

// The text and what stands beside it: a frame's corners, a field's edge and the room between it and the text.
Fit FitOfText(const QWidget& widget, const QString& text, int beside, int height) {
    return {QSizeF(widget.fontMetrics().horizontalAdvance(text) + beside, height), widget.size()};
}

void ExpectFit(const QWidget& widget, const Fit& fit) {
    EXPECT_EQ(fit.first.boundedTo(fit.second), fit.first) << widget.objectName().toStdString();
}

void ExpectHeadersFit(const QTableView& grid) {
    const QHeaderView& header = *grid.horizontalHeader();
    for (int column = 0; column < header.count(); ++column) {
        const QString text = grid.model()->headerData(column, Qt::Horizontal).toString();
        const int margins = 2 * header.style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, &header);
        EXPECT_TRUE(header.isSectionHidden(column) ||
                    header.fontMetrics().horizontalAdvance(text) + margins <= header.sectionSize(column))
            << text.toStdString();
    }
}

void ExpectNothingCut(const std::string& name) {
    SCOPED_TRACE(name);
    QWidget* real = RealWindow(name);
    ASSERT_NE(real, nullptr);
    int looked = 0;
    for (QWidget* widget : real->findChildren<QWidget*>()) {
        if (const auto* label = qobject_cast<QLabel*>(widget); label != nullptr && !label->text().isEmpty())
            ExpectFit(*label, FitOfLabel(*label));
        else if (const auto* button = qobject_cast<QAbstractButton*>(widget);
                 button != nullptr && !button->text().isEmpty())
            ExpectFit(*button, FitOfButton(*button));
        else if (const auto* frame = qobject_cast<QGroupBox*>(widget))
            ExpectFit(*frame, FitOfText(*frame, frame->title(), 20, 1));
        else if (const auto* field = qobject_cast<QLineEdit*>(widget))
            ExpectFit(*field, FitOfText(*field, field->text(), 2 * 4, field->fontMetrics().height()));
        else if (const auto* grid = qobject_cast<QTableView*>(widget))
            ExpectHeadersFit(*grid);
        else
            continue;
        ++looked;
    }
    EXPECT_GT(looked, 0);
}

void Look(WindowSlot& slot) {
    slot.Show();
    ExpectNothingCut(slot.Load().Name);
}

// The texts that Form4's status field takes, and captions that its button takes.
void LookAtForm4() {
    Look(Form4);
    Form4->Frame1.Visible = true;
    Form4->Label10.Caption = "10:00:00";
    for (const auto& [caption, status] : {std::pair{"&Start", "Waiting..."},
                                          {"&Stop", "Unauthorized (401)"},
                                          {"&Report", "Connection error"},
                                          {"&Finish", "Unable to connect"}}) {
        Form4->Command1.Caption = caption;
        for (Label* value : {&Form4->Label5, &Form4->Label6, &Form4->Label7, &Form4->Label8})
            value->Caption = status;
        Look(Form4);
    }
    Form4->Label11.Caption = "The scan process was interrupted by the user.\r\n\r\n12345 bad Favorite(s) found before "
                             "the interruption.\r\n\r\n\r\nClick Report button to see and correct these problems.";
    Look(Form4);
}

void LookAtForm7() {
    Look(Form7);
    Form7->Label1.Visible = Form7->Label2.Visible = true;
    Form7->Label2.Caption = "Operation canceled by user";
    for (const char* caption : {"&Cancel", "&Finish"}) {
        Form7->Command1.Caption = caption;
        Look(Form7);
    }
}

} // namespace

TEST(QtLook, NoTextIsCutOff) {
    Favorites::SplashDone = true; // no splash: its tick would go on to start the program
    const QtMachine machine;
    Form1->Text1.Text = "99";
    for (WindowSlot* slot : std::initializer_list<WindowSlot*>{&Form9, &Form3, &Form1, &Form5, &Form6})
        Look(*slot);
    LookAtForm4();
    LookAtForm7();
    WindowSlot::DropAll();
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

TEST(QtLook, CarriesItsPicturesAndIcons) {
    EXPECT_EQ(PictureOf("side.jpg").size(), QSize(108, 189));
    EXPECT_TRUE(IconOf("tarnwick.png").availableSizes().contains(QSize(32, 32)));
    EXPECT_TRUE(PictureOf("missing.jpg").isNull());
}

} // namespace tarnwick
