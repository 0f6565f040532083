#include "skin/surface.h"

#include "log_book.h"
#include "skin/dib_section_region.h"
#include "skin/instrument_icon.h"
#include "toy_instrument.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QtTest/QSignalSpy>
#include <gtest/gtest.h>

namespace {

class SurfaceParts : public testing::Test {
  protected:
    void SetUp() override {
        face = new Form(toy::FaceDesign());
        for (int row = 0; row < 3; ++row) {
            panels.push_back(new Form(toy::PanelDesign(QStringLiteral("Panel%1").arg(row), row)));
        }
        surface.Carry(*face, panels);
        surface.MakeRoom(toy::kAnchor);
    }
    void Show() {
        for (Form* panel : panels) {
            panel->move(toy::kAnchor.topLeft());
            panel->show();
        }
        surface.show();
        Settle();
    }
    static void Settle() { QCoreApplication::processEvents(); }
    /// Children from the back to the front.
    QStringList Order() const {
        QStringList names;
        for (const QObject* child : surface.children()) {
            if (child->isWidgetType()) {
                names += child->objectName();
            }
        }
        return names;
    }
    const QRegion faceShape = QRegion(10, 10, 300, 180);
    const QRegion panelShape = QRegion(0, 0, 100, 160) - QRegion(90, 150, 10, 10);

    Surface surface;
    Form* face = nullptr;
    std::vector<Form*> panels;
};

TEST_F(SurfaceParts, CarriesTheFaceInFrontOfThePanels) {
    EXPECT_EQ(face->parentWidget(), &surface);
    EXPECT_EQ(Order(), (QStringList{"Panel0", "Panel1", "Panel2", "Corvantine_Main"}));
    EXPECT_FALSE(face->isHidden());
    EXPECT_TRUE(panels[0]->isHidden()) << "the start-up shows them";
    EXPECT_TRUE(surface.isWindow());
    EXPECT_TRUE(surface.windowFlags() & Qt::FramelessWindowHint);
}

TEST_F(SurfaceParts, HasRoomForThePanelsPulledOut) {
    EXPECT_EQ(surface.size(), QSize(240 + 80 + 100, 200));
    EXPECT_EQ(face->pos(), QPoint(0, 0));
    EXPECT_EQ(surface.minimumSize(), surface.maximumSize());
}

TEST_F(SurfaceParts, HasRoomForPanelsThatStandAboveAndLeftOfTheFace) {
    surface.MoveTo(500, 400);
    surface.MakeRoom(QRect(-150, -30, 40, 160));
    EXPECT_EQ(face->pos(), QPoint(150, 30));
    EXPECT_EQ(surface.size(), QSize(150 + 320, 30 + 200));
    EXPECT_EQ(surface.Left(), 500);
    EXPECT_EQ(surface.Top(), 400);
    EXPECT_EQ(surface.pos(), QPoint(350, 370));
}

TEST_F(SurfaceParts, ItsPlaceIsTheFaces) {
    surface.MakeRoom(QRect(-150, -30, 40, 160));
    surface.MoveTo(-20, 15);
    EXPECT_EQ(surface.Left(), -20);
    EXPECT_EQ(surface.Top(), 15);
    EXPECT_EQ(surface.pos() + face->pos(), QPoint(-20, 15));
}

TEST_F(SurfaceParts, MakingRoomLeavesTheFirstPlaceToTheWindowManager) {
    EXPECT_FALSE(surface.testAttribute(Qt::WA_Moved));
}

TEST_F(SurfaceParts, OutlineIsTheUnionOfWhatShows) {
    Show();
    ShapeByMask(face, &faceShape);
    ShapeByMask(panels[1], &panelShape);
    panels[0]->hide();
    panels[2]->hide();
    const QPoint at = toy::kAnchor.topLeft();
    EXPECT_EQ(surface.Outline(), faceShape | panelShape.translated(at));
    panels[2]->show();
    EXPECT_EQ(surface.Outline(), faceShape | QRegion(QRect(at, toy::kPanel)));
}

TEST_F(SurfaceParts, AnEmptyFaceAddsNothingToTheOutline) {
    Show();
    const QRegion nothing;
    ShapeByMask(face, &nothing);
    ShapeByMask(panels[0], &panelShape);
    panels[1]->hide();
    panels[2]->hide();
    EXPECT_EQ(surface.Outline(), panelShape.translated(toy::kAnchor.topLeft()));
    panels[0]->hide();
    EXPECT_TRUE(surface.Outline().isEmpty());
    Settle();
    EXPECT_FALSE(surface.mask().isEmpty()) << "an empty mask is no mask";
    EXPECT_TRUE((surface.mask() & surface.rect()).isEmpty());
}

TEST_F(SurfaceParts, AShapeBeyondItsFormIsCutAtItsEdge) {
    Show();
    const QRegion wide(0, 0, 400, 300);
    ShapeByMask(face, &wide);
    for (Form* panel : panels) {
        panel->hide();
    }
    EXPECT_EQ(surface.Outline(), QRegion(face->rect()));
}

TEST_F(SurfaceParts, MaskFollowsMovesShapesAndVisibility) {
    Show();
    EXPECT_EQ(surface.mask(), surface.Outline());
    panels[0]->move(toy::kAnchor.topLeft() + QPoint(80, 0));
    Settle();
    EXPECT_TRUE(surface.mask().contains(QPoint(419, 100)));
    EXPECT_EQ(surface.mask(), surface.Outline());
    panels[0]->hide();
    Settle();
    EXPECT_FALSE(surface.mask().contains(QPoint(419, 100)));
    ShapeByMask(face, &faceShape);
    Settle();
    EXPECT_FALSE(surface.mask().contains(QPoint(5, 5)));
    EXPECT_EQ(surface.mask(), surface.Outline());
}

TEST_F(SurfaceParts, SeveralChangesMakeOneMask) {
    Show();
    const QRegion before = surface.mask();
    for (Form* panel : panels) {
        panel->move(toy::kAnchor.topLeft() + QPoint(80, 0));
    }
    EXPECT_EQ(surface.mask(), before);
    Settle();
    EXPECT_EQ(surface.mask(), surface.Outline());
    EXPECT_NE(surface.mask(), before);
}

TEST_F(SurfaceParts, LaterPanelIsOnTopAndTheFaceInFront) {
    surface.BringPanelUp(*panels[0]);
    EXPECT_EQ(Order(), (QStringList{"Panel1", "Panel2", "Panel0", "Corvantine_Main"}));
    surface.BringPanelUp(*panels[1]);
    surface.BringFaceToFront();
    EXPECT_EQ(Order(), (QStringList{"Panel2", "Panel0", "Panel1", "Corvantine_Main"}));
    surface.BringPanelUp(*panels[1]);
    EXPECT_EQ(Order(), (QStringList{"Panel2", "Panel0", "Panel1", "Corvantine_Main"}));
    surface.SendPanelToBack(*panels[1]);
    EXPECT_EQ(Order(), (QStringList{"Panel1", "Panel2", "Panel0", "Corvantine_Main"}));
}

TEST_F(SurfaceParts, TakesTheTitleOfTheFace) {
    EXPECT_EQ(surface.windowTitle(), QStringLiteral("Corvantine"));
    face->setWindowTitle(QStringLiteral("Corvantine_5:2"));
    EXPECT_EQ(surface.windowTitle(), QStringLiteral("Corvantine_5:2"));
}

TEST_F(SurfaceParts, HasAnIconOfEveryUsualSize) {
    for (const int side : {16, 22, 24, 32, 48, 64, 128, 256}) {
        EXPECT_TRUE(surface.windowIcon().availableSizes().contains(QSize(side, side))) << side;
        const QImage icon = InstrumentIconAt(side).toImage();
        std::set<QRgb> colours;
        for (int i = 0; i < side * side; ++i) {
            colours.insert(icon.pixel(i % side, i / side));
        }
        EXPECT_GT(colours.size(), 20U) << side;
    }
}

TEST_F(SurfaceParts, AskedToCloseItStaysAndSaysSo) {
    Show();
    QSignalSpy asked(&surface, &Surface::CloseRequested);
    QCloseEvent event;
    QCoreApplication::sendEvent(&surface, &event);
    EXPECT_FALSE(event.isAccepted());
    EXPECT_EQ(asked.count(), 1);
    EXPECT_TRUE(surface.isVisible());
}

TEST_F(SurfaceParts, APartThatGoesFirstIsForgotten) {
    Show();
    delete panels[1];
    Settle();
    EXPECT_TRUE(surface.Outline().contains(QPoint(5, 5)));
    delete face;
    Settle();
    EXPECT_FALSE(surface.Outline().contains(QPoint(5, 5)));
}

TEST_F(SurfaceParts, DrawsWhatShowsThroughTheFacesCorners) {
    Show();
    face->control<Picture>("Image1")->SetPicture(QPixmap::fromImage(toy::FacePicture(Qt::gray)));
    panels[2]->control<Picture>("Image2")->SetPicture(QPixmap::fromImage(toy::PanelPicture(Qt::cyan, 2)));
    const QRegion round = QRegion(face->rect()) - QRegion(300, 20, 20, 20);
    ShapeByMask(face, &round);
    const QImage image = surface.grab().toImage();
    EXPECT_EQ(image.pixelColor(310, 30), QColor(Qt::cyan));
    EXPECT_EQ(image.pixelColor(280, 30), QColor(Qt::gray)) << "the face covers the panel";
    EXPECT_EQ(image.pixelColor(410, 190).alpha(), 0) << "where nothing shows, for compositors without shapes";
}

/// Counts how often what it watches is painted.
class PaintCount : public QObject {
  public:
    int paints = 0;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
};

TEST_F(SurfaceParts, WhatTheFaceCoversIsNotPaintedWithItsControls) {
    Show();
    panels[2]->control<Picture>("Image2")->SetPicture(QPixmap::fromImage(toy::PanelPicture(Qt::cyan, 2)));
    Settle();
    PaintCount panel;
    PaintCount control;
    panels[2]->control<Picture>("Image2")->installEventFilter(&panel);
    face->control<Picture>("Image1")->installEventFilter(&control);
    face->control<Picture>("Image1")->update(250, 60, 20, 20); // before the closed panels
    Settle();
    EXPECT_EQ(control.paints, 1);
    EXPECT_EQ(panel.paints, 0);
    face->hide();
    Settle();
    EXPECT_GT(panel.paints, 0) << "what is no longer covered is painted";
}

} // namespace
