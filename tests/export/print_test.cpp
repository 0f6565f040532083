#include "export/print.h"

#include "controls/button_control.h"
#include "controls/form.h"
#include "display/large_time_design.h"
#include "display/plot_canvas.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QMimeData>
#include <QTest>
#include <gtest/gtest.h>

namespace {

QImage OnClipboard() {
    return QGuiApplication::clipboard()->image().convertToFormat(QImage::Format_RGB32);
}

class Print : public testing::Test {
  protected:
    Print() {
        form.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&form));
        QGuiApplication::clipboard()->setText(QStringLiteral("mine"));
    }
    QLabel* Stamp() { return form.control<QLabel>("OtherInfoLabel"); }
    /// Makes the trace of a plot that can be found again.
    void Draw() {
        auto* canvas = form.control<PlotCanvas>("Canvas");
        canvas->Surface().SetPixelScale();
        canvas->Surface().Clear();
        canvas->Surface().SetForeColor(0x00FFFF);
        canvas->Surface().FillBox(100, 100, 300, 200);
    }

    Form form{LargeTimeDesign(), nullptr, kPlotCanvas};
};

TEST_F(Print, TakesTheWholeWindowInThePixelsOfItsScreen) {
    Draw();
    const QImage picture = WindowPicture(form);
    EXPECT_EQ(picture.size(), form.size() * form.devicePixelRatioF());
    EXPECT_EQ(picture.devicePixelRatio(), 1);
    EXPECT_EQ(picture.pixelColor(150, 150), QColor(255, 255, 0));
    const QImage shown = form.grab().toImage().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(picture.pixelColor(picture.width() - 1, picture.height() - 1),
              shown.pixelColor(shown.width() - 1, shown.height() - 1));
}

TEST_F(Print, PutsItOnTheClipboard) {
    Draw();
    CaptureWindowToClipboard(form);
    ASSERT_TRUE(QGuiApplication::clipboard()->mimeData()->hasImage());
    EXPECT_EQ(OnClipboard(), WindowPicture(form));
    EXPECT_TRUE(QGuiApplication::clipboard()->text().isEmpty());
}

TEST_F(Print, AWindowWithoutSizeLeavesTheClipboardAlone) {
    QWidget nothing;
    nothing.resize(0, 0);
    CaptureWindowToClipboard(nothing);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("mine"));
}

TEST_F(Print, TheButtonStampsTheWindowAndThenTakesIt) {
    std::vector<std::string> order;
    ClipboardShot shot(form, {.SetDefaultLayering = [&] { order.push_back("SetDefaultLayering"); },
                              .RefreshAppInfo =
                                  [&] {
                                      order.push_back("RefreshAppInfo");
                                      Stamp()->setText(QStringLiteral("fresh stamp"));
                                  },
                              .doEvents =
                                  [&] {
                                      order.push_back("doEvents");
                                      EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("mine"));
                                  }});
    Stamp()->setText(QStringLiteral("old"));
    const QImage before = WindowPicture(form);
    emit form.control<ButtonControl1>("ClipboardButton")->Click();
    EXPECT_EQ(order, (std::vector<std::string>{"SetDefaultLayering", "RefreshAppInfo", "doEvents"}));
    EXPECT_NE(OnClipboard(), before);
    EXPECT_EQ(OnClipboard(), WindowPicture(form));
}

TEST_F(Print, ALaterPressAmongTheEventsCounts) {
    int presses = 0;
    ClipboardShot* button = nullptr;
    ClipboardShot shot(form, {.SetDefaultLayering = {},
                              .RefreshAppInfo =
                                  [&] {
                                      ++presses;
                                      Stamp()->setText(QStringLiteral("press %1").arg(presses));
                                  },
                              .doEvents =
                                  [&] {
                                      if (presses == 1) {
                                          button->ClipboardButton_Click();
                                          Stamp()->setText(QStringLiteral("the first goes on"));
                                      }
                                  }});
    button = &shot;
    shot.ClipboardButton_Click();
    Stamp()->setText(QStringLiteral("press 2"));
    EXPECT_EQ(OnClipboard(), WindowPicture(form));
}

TEST_F(Print, AWindowThatWentAmongTheEventsIsNotTaken) {
    ClipboardShot shot(form,
                       {.SetDefaultLayering = {}, .RefreshAppInfo = [] {}, .doEvents = [&] { form.hide(); }});
    shot.ClipboardButton_Click();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("mine"));
}

} // namespace
