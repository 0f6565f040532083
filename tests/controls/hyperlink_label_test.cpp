#include "controls/hyperlink_label.h"

#include "controls/control_support.h"
#include "controls/host_hyperlink.h"

#include <QDesktopServices>
#include <QMouseEvent>
#include <QPointer>
#include <QUrl>
#include <gtest/gtest.h>

namespace {

class HyperlinkLabel : public testing::Test {
  protected:
    HyperlinkLabel() {
        link.resize(41, 19);
        link.show();
    }
    UserControl2 link;
    Counter<UserControl2, void (UserControl2::*)()> clicks{link, &UserControl2::Click};
};

QPixmap Plain(const QColor& colour, QSize size = {41, 19}) {
    QPixmap pixmap(size);
    pixmap.fill(colour);
    return pixmap;
}

} // namespace

/// Takes the place of the desktop's browser.
class Browser : public QObject {
    Q_OBJECT
  public:
    QList<QUrl> opened;
  public slots:
    void Open(const QUrl& url) { opened << url; }
};

TEST_F(HyperlinkLabel, AClickOfItsSurfaceRaisesClick) {
    QTest::mouseClick(&link, Qt::LeftButton);
    EXPECT_EQ(clicks.take(), 1);
    QTest::mouseClick(&link, Qt::RightButton);
    EXPECT_EQ(clicks.take(), 0);
    QTest::mousePress(&link, Qt::LeftButton);
    QTest::mouseRelease(&link, Qt::LeftButton, {}, {80, 10});
    EXPECT_EQ(clicks.take(), 0);
}

TEST_F(HyperlinkLabel, ADoubleClickIsOneClick) {
    QTest::mouseClick(&link, Qt::LeftButton);
    QMouseEvent second(QEvent::MouseButtonDblClick, {5, 5}, {5, 5}, Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(&link, &second);
    QTest::mouseRelease(&link, Qt::LeftButton);
    EXPECT_EQ(clicks.take(), 1);
    QTest::mouseClick(&link, Qt::LeftButton);
    EXPECT_EQ(clicks.take(), 1);
}

TEST_F(HyperlinkLabel, AReleaseOfAPressThatWasElsewhereIsNoClick) {
    QTest::mouseRelease(&link, Qt::LeftButton);
    EXPECT_EQ(clicks.take(), 0);
}

TEST_F(HyperlinkLabel, SpaceAndEnterClickIt) {
    for (auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        QTest::keyClick(&link, key);
        EXPECT_EQ(clicks.take(), 1);
    }
    QTest::keyClick(&link, Qt::Key_A);
    EXPECT_EQ(clicks.take(), 0);
}

TEST_F(HyperlinkLabel, PropertiesPassThroughAndEveryPutMarksItsProperty) {
    QStringList marked;
    QObject::connect(&link, &UserControl2::PropertyChanged, [&](const QString& name) { marked << name; });
    for (int round = 0; round < 2; ++round) { // the same value marks it too
        link.setProperty("AutoRedraw", true);
        link.setProperty("MouseIcon", Plain(Qt::red, {16, 16}));
        link.setProperty("MousePointer", 99);
        link.setProperty("Picture", Plain(Qt::blue));
        link.setProperty("BackColor", QColor(1, 2, 3));
    }
    const QStringList once = {QStringLiteral("AutoRedraw"), QStringLiteral("MouseIcon"),
                              QStringLiteral("MousePointer"), QStringLiteral("Picture"),
                              QStringLiteral("BackColor")};
    EXPECT_EQ(marked, once + once);
    EXPECT_TRUE(link.AutoRedraw());
    EXPECT_EQ(link.MouseIcon().size(), QSize(16, 16));
    EXPECT_EQ(link.MousePointer(), 99);
    EXPECT_EQ(link.Picture().size(), QSize(41, 19));
    EXPECT_EQ(link.BackColor(), QColor(1, 2, 3));
}

TEST_F(HyperlinkLabel, ShowsItsBackColourAndItsPicture) {
    link.SetBackColor(Qt::green);
    EXPECT_EQ(link.grab().toImage().pixelColor(3, 3), QColor(Qt::green));
    link.SetPicture(Plain(Qt::blue, {10, 19}));
    EXPECT_EQ(link.grab().toImage().pixelColor(3, 3), QColor(Qt::blue));
    EXPECT_EQ(link.grab().toImage().pixelColor(30, 3), QColor(Qt::green));
    EXPECT_TRUE(link.findChildren<QTimer*>().isEmpty());
}

TEST_F(HyperlinkLabel, ThePointerIsAHandUntilAnotherIsSet) {
    EXPECT_EQ(link.cursor().shape(), Qt::PointingHandCursor);
    link.SetMousePointer(11);
    EXPECT_EQ(link.cursor().shape(), Qt::WaitCursor);
    link.SetMouseIcon(Plain(Qt::red, {16, 16}));
    EXPECT_EQ(link.cursor().shape(), Qt::WaitCursor);
    link.SetMousePointer(99);
    EXPECT_EQ(link.cursor().shape(), Qt::BitmapCursor);
    for (int unknown : {-1, 16, 98, 32767, 1 << 20}) {
        link.SetMousePointer(unknown);
        EXPECT_EQ(link.cursor().shape(), Qt::PointingHandCursor) << unknown;
    }
}

TEST_F(HyperlinkLabel, HyperLinkIsAReadOnlyProperty) {
    auto* host = link.property("HyperLink").value<HostHyperLink*>();
    ASSERT_NE(host, nullptr);
    EXPECT_EQ(host, link.HyperLink());
    EXPECT_FALSE(link.setProperty("HyperLink", QVariant::fromValue<HostHyperLink*>(nullptr)));
    EXPECT_EQ(link.HyperLink(), host);
}

TEST_F(HyperlinkLabel, TheOpenerGetsTheTargetAsItStands) {
    QStringList targets;
    link.HyperLink()->SetOpener([&](const QString& target) {
        targets << target;
        return true;
    });
    EXPECT_TRUE(link.HyperLink()->NavigateTo(QStringLiteral("http://example.org/a\r\n")));
    EXPECT_TRUE(link.HyperLink()->NavigateTo(QStringLiteral("http://example.org/"), QStringLiteral("top"),
                                             QStringLiteral("frame")));
    EXPECT_EQ(targets, (QStringList{QStringLiteral("http://example.org/a\r\n"),
                                    QStringLiteral("http://example.org/#top")}));
}

TEST_F(HyperlinkLabel, TheDesktopOpensATargetWithLineEndsAroundIt) {
    Browser browser;
    QDesktopServices::setUrlHandler(QStringLiteral("http"), &browser, "Open");
    EXPECT_TRUE(link.HyperLink()->NavigateTo(QStringLiteral("http://example.org/new?a=1\r\n\r\n")));
    EXPECT_EQ(browser.opened, QList<QUrl>{QUrl(QStringLiteral("http://example.org/new?a=1"))});
    for (const char* bad : {"", "\r\n", "no link", "/etc/passwd", "http://a b c:99999999/"}) {
        EXPECT_FALSE(link.HyperLink()->NavigateTo(QString::fromLatin1(bad))) << bad;
    }
    EXPECT_EQ(browser.opened.size(), 1);
    QDesktopServices::unsetUrlHandler(QStringLiteral("http"));
}

TEST_F(HyperlinkLabel, DesignKeys) {
    link.ReadProperties({{QStringLiteral("AutoRedraw"), true},
                         {QStringLiteral("MousePointer"), 2},
                         {QStringLiteral("Picture"), Plain(Qt::blue)},
                         {QStringLiteral("BackColor"), QColor(9, 8, 7)}});
    EXPECT_TRUE(link.AutoRedraw());
    EXPECT_EQ(link.MousePointer(), 2);
    EXPECT_FALSE(link.Picture().isNull());
    EXPECT_EQ(link.WriteProperties().size(), 4);
    link.ReadProperties({});
    EXPECT_FALSE(link.AutoRedraw());
    EXPECT_EQ(link.MousePointer(), 0);
    EXPECT_TRUE(link.Picture().isNull());
    EXPECT_EQ(link.BackColor(), ToQColor(kButtonFace));
    EXPECT_TRUE(link.WriteProperties().isEmpty());
}

TEST_F(HyperlinkLabel, AHandlerMayDeleteIt) {
    QPointer<UserControl2> doomed = new UserControl2;
    doomed->resize(41, 19);
    doomed->show();
    QObject::connect(doomed, &UserControl2::Click, [&] { delete doomed; });
    QMouseEvent down(QEvent::MouseButtonPress, {5, 5}, {5, 5}, Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(doomed, &down);
    QMouseEvent up(QEvent::MouseButtonRelease, {5, 5}, {5, 5}, Qt::LeftButton, {}, {});
    QApplication::sendEvent(doomed, &up);
    EXPECT_TRUE(doomed.isNull());
}

#include "hyperlink_label_test.moc"
