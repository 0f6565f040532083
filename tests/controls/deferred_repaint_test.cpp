#include "controls/deferred_repaint.h"

#include <QPaintEvent>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

class Surface : public QWidget {
  public:
    Surface() { resize(20, 20); }
    DeferredRepaint repaint{*this, 5};
    int drawings = 0;
    bool armedWhileDrawing = false;

    QTimer* Timer1() const { return findChild<QTimer*>(QStringLiteral("Timer1")); }

  protected:
    void paintEvent(QPaintEvent*) override {
        const DeferredRepaint::Drawing drawing(repaint);
        ++drawings;
        repaint.Request();
        armedWhileDrawing = armedWhileDrawing || Timer1()->isActive();
    }
};

} // namespace

TEST(DeferredRepaint, IsOffAtRestAndDrawsWhenTheTimerFires) {
    Surface surface;
    surface.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&surface));
    ASSERT_TRUE(QTest::qWaitFor([&] { return surface.drawings > 0; }));
    ASSERT_NE(surface.Timer1(), nullptr);
    EXPECT_EQ(surface.Timer1()->interval(), 5);
    EXPECT_FALSE(surface.Timer1()->isActive());

    const int before = surface.drawings;
    surface.repaint.Request();
    surface.repaint.Request();
    EXPECT_TRUE(surface.Timer1()->isActive());
    EXPECT_EQ(surface.drawings, before);
    EXPECT_TRUE(QTest::qWaitFor([&] { return surface.drawings == before + 1; }));
    EXPECT_FALSE(surface.Timer1()->isActive());
}

TEST(DeferredRepaint, IgnoresRequestsFromWithinTheDrawing) {
    Surface surface;
    surface.grab();
    EXPECT_GT(surface.drawings, 0);
    EXPECT_FALSE(surface.armedWhileDrawing);
    EXPECT_FALSE(surface.repaint.InPaint());
}

TEST(DeferredRepaint, ASteadyFlowOfRequestsDoesNotPutTheDrawingOff) {
    Surface surface;
    surface.Timer1()->setInterval(60000);
    surface.repaint.Request();
    ASSERT_GT(surface.Timer1()->remainingTime(), 59900);
    ASSERT_TRUE(QTest::qWaitFor([&] { return surface.Timer1()->remainingTime() <= 59900; }));
    surface.repaint.Request();
    EXPECT_LE(surface.Timer1()->remainingTime(), 59900);
}
