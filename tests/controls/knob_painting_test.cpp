#include "controls/knob_instances.h"
#include "controls/knob_painter.h"
#include "controls/knob_support.h"

#include <QLabel>
#include <QLineEdit>
#include <QPainter>

namespace {

/// The colour near a place of a knob, told by which of its channels are high: "white", "black", "red" ...
std::string Name(const QColor& c) {
    const auto high = [](int channel) { return channel > 150; };
    const auto low = [](int channel) { return channel < 105; };
    if (high(c.red()) && high(c.green()) && high(c.blue())) {
        return "white";
    }
    if (low(c.red()) && low(c.green()) && low(c.blue())) {
        return "black";
    }
    if (high(c.red()) && low(c.green()) && low(c.blue())) {
        return "red";
    }
    if (low(c.red()) && high(c.green()) && low(c.blue())) {
        return "green";
    }
    return c.name().toStdString();
}

/// A drawn face, ten times as large as its pixels, so that a line is wide enough to be looked at.
class Face {
  public:
    static constexpr int kScale = 10;

    explicit Face(const KnobDesign& design, QSize size = {85, 96})
        : layout(LayOutKnob({size, design.KnobValueAlign, 13, 20, {7, 7}})),
          image(size * kScale, QImage::Format_ARGB32_Premultiplied) {
        image.fill(Qt::magenta);
        QPainter painter(&image);
        painter.scale(kScale, kScale);
        DrawKnobFace(painter, design, layout);
    }
    void pointer(double angle, const QColor& fill = Qt::lightGray) {
        QPainter painter(&image);
        painter.scale(kScale, kScale);
        DrawKnobPointer(painter, layout, angle, fill);
    }
    /// Invalid beyond the control, which cuts the smallest knobs off below.
    QColor colour(QPointF at) const {
        const QPoint pixel = (at * kScale).toPoint();
        return image.rect().contains(pixel) ? image.pixelColor(pixel) : QColor();
    }
    QColor colour(double radius, double angle) const {
        return colour(knob::PointAt(layout.drawnCentre(), radius, angle));
    }
    std::string at(double radius, double angle) const { return Name(colour(radius, angle)); }

    KnobLayout layout;
    QImage image;
};

KnobDesign Grey() {
    KnobDesign design;
    design.KnobFillColor = QColor(128, 128, 128);
    design.KnobBorderColor = QColor(128, 128, 128);
    design.KnobMarkerColor = Qt::green;
    design.KnobBand1Color = Qt::red;
    design.KnobStartAngle = -45;
    design.KnobStopAngle = 225;
    design.KnobMarkers = "0";
    design.KnobZeroButton = false;
    return design;
}

using KnobPainting = KnobTest;

} // namespace

TEST(KnobFace, TwoRingsInOppositeLightMakeAGroove) {
    const Face face(Grey());
    const double r = face.layout.Radius;
    // The knob's 90 degrees are up and its 270 down; the light turns at upper right and lower left.
    for (double angle : {0.0, 45.0, 90.0, 130.0, -40.0}) {
        EXPECT_EQ(face.at(r - 1, angle), "black") << angle;
        EXPECT_EQ(face.at(r - 3, angle), "white") << angle;
    }
    for (double angle : {140.0, 180.0, 225.0, 270.0, 310.0}) {
        EXPECT_EQ(face.at(r - 1, angle), "white") << angle;
        EXPECT_EQ(face.at(r - 3, angle), "black") << angle;
    }
    EXPECT_EQ(face.colour(r - 2, 90), QColor(128, 128, 128)); // the gap
}

TEST(KnobFace, TheCircleIsFilledAndTheControlsBackIsTheSame) {
    KnobDesign design = Grey();
    design.KnobFillColor = QColor(90, 120, 150);
    design.KnobBorderColor = QColor(200, 20, 20);
    const Face face(design);
    EXPECT_EQ(face.colour(QPointF(1, 40)), design.KnobFillColor);
    EXPECT_EQ(face.colour(QPointF(42.5, 42.5)), design.KnobFillColor);
    EXPECT_EQ(face.colour(face.layout.Radius - 0.25, 45), design.KnobBorderColor); // the outline
    EXPECT_EQ(face.colour(face.layout.label.center()), design.KnobBorderColor);
}

TEST(KnobFace, ALabelOnTheFaceSwapsTheColours) {
    KnobDesign design = Grey();
    design.KnobFillColor = QColor(90, 120, 150);
    design.KnobBorderColor = QColor(200, 20, 20);
    design.KnobValueAlign = 1;
    const Face face(design);
    EXPECT_EQ(face.colour(QPointF(1, 20)), design.KnobBorderColor);
    EXPECT_EQ(face.colour(QPointF(1, face.layout.label.center().y())), design.KnobFillColor);
}

TEST(KnobFace, WithoutALabelItHasNoBack) {
    KnobDesign design = Grey();
    design.KnobBorderColor = Qt::blue;
    for (bool editable : {true, false}) {
        design.KnobValueEditable = editable;
        design.KnobValueFormat = editable ? "0" : "";
        const Face face(design);
        EXPECT_EQ(face.colour(face.layout.label.center()), design.KnobFillColor);
    }
}

TEST(KnobFace, MarkersStandAcrossTheCircle) {
    for (const KnobInstance& k : KnobInstances()) {
        KnobDesign design = ReadKnobDesign(k.bag());
        design.KnobMarkerColor = Qt::green;
        design.KnobFillColor = QColor(128, 128, 128);
        design.KnobBorderColor = QColor(128, 128, 128);
        const Face face(design, k.size);
        const double r = face.layout.Radius;
        for (int i = 1; i <= k.markers; ++i) {
            const double angle = k.start + k.sweep * (i - 1.0) / (k.markers - 1);
            EXPECT_EQ(face.at(r + 1.5, angle), "green") << k << " marker " << i;
            EXPECT_NE(face.at(r + 2.5, angle), "green") << k << " marker " << i;
        }
        const double between = k.start + k.sweep * 0.5 / (k.markers - 1);
        EXPECT_NE(face.at(r + 1.5, between), "green") << k;
        EXPECT_NE(face.at(r + 1.5, k.start - (360 - k.sweep) / 2.0), "green") << k; // the dead arc
    }
}

TEST(KnobFace, MarkersReachIntoTheCircle) {
    KnobDesign design = Grey();
    design.KnobMarkers = "2";
    const Face face(design);
    EXPECT_EQ(face.at(face.layout.Radius - 1.75, -45), "green"); // between the rings
    EXPECT_NE(face.at(face.layout.Radius - 2.2, -45), "green");
}

TEST(KnobFace, TheRimsAreDrawnOverTheMarkers) {
    KnobDesign design = Grey();
    design.KnobMarkers = "11";
    const Face face(design);
    for (int i = 0; i < 11; ++i) {
        const double angle = -45 + 27.0 * i;
        const std::string rim = face.at(face.layout.Radius - 1, angle);
        EXPECT_TRUE(rim == "black" || rim == "white") << rim << " at " << angle;
        EXPECT_EQ(face.at(face.layout.Radius + 1.5, angle), "green") << angle;
    }
}

TEST(KnobFace, TheBandHasItsOwnColour) {
    KnobDesign design = Grey();
    design.KnobMarkers = "28";
    design.KnobBand1Start = 24;
    design.KnobBand1Stop = 28;
    const Face face(design);
    for (int i = 1; i <= 28; ++i) {
        EXPECT_EQ(face.at(face.layout.Radius + 1.5, -45 + (i - 1) * 10), i >= 24 ? "red" : "green") << i;
    }
}

TEST(KnobFace, NoMarkersForOneOrNone) {
    for (const char* markers : {"1", "0", "abc", ""}) {
        KnobDesign design = Grey();
        design.KnobMarkers = markers;
        const Face face(design);
        for (int angle = 0; angle < 360; ++angle) {
            ASSERT_NE(face.at(face.layout.Radius + 1, angle), "green") << markers << " at " << angle;
        }
        EXPECT_EQ(face.at(face.layout.Radius - 1, 45), "black"); // the rims are there all the same
    }
}

TEST(KnobFace, ThePointerIsABlackLineOfThreePixels) {
    Face face(Grey());
    const double length = face.layout.Radius - 5;
    face.pointer(90);
    EXPECT_EQ(face.at(0.95 * length - 0.2, 90), "black");
    EXPECT_EQ(face.at(0.75 * length, 90), "black");
    EXPECT_EQ(face.at(0.5 * length + 0.2, 90), "black");
    EXPECT_NE(face.at(0.5 * length - 1.8, 90), "black");
    EXPECT_NE(face.at(0.95 * length + 1.8, 90), "black");
    const QPointF middle = knob::PointAt(face.layout.drawnCentre(), 0.75 * length, 90);
    EXPECT_EQ(Name(face.colour(middle + QPointF(1.4, 0))), "black");
    EXPECT_EQ(Name(face.colour(middle - QPointF(1.4, 0))), "black");
    EXPECT_NE(Name(face.colour(middle + QPointF(1.6, 0))), "black");
    EXPECT_NE(Name(face.colour(middle - QPointF(1.6, 0))), "black");
}

TEST(KnobFace, OnADarkFaceThePointerHasALightEdge) {
    KnobDesign design = Grey();
    design.KnobFillColor = QColor(40, 40, 40);
    Face face(design);
    const QPointF edge =
        knob::PointAt(face.layout.drawnCentre(), 0.75 * (face.layout.Radius - 5), 90) + QPointF(1.8, 0);
    const int plain = face.colour(edge).lightness();
    face.pointer(90, design.KnobFillColor);
    EXPECT_GT(face.colour(edge).lightness(), plain + 30);
    EXPECT_EQ(face.at(0.75 * (face.layout.Radius - 5), 90), "black");
}

TEST(KnobFace, ThePointerStaysWithinItsBounds) {
    for (const KnobInstance& k : KnobInstances()) {
        const KnobLayout layout = LayOutKnob({k.size, k.align, 13, 20, {7, 7}});
        for (int angle = 0; angle < 360; angle += 15) {
            QImage image(k.size, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::white);
            {
                QPainter painter(&image);
                DrawKnobPointer(painter, layout, angle, Qt::black);
                painter.fillRect(PointerBounds(layout).toAlignedRect(), Qt::white);
            }
            QImage blank(k.size, QImage::Format_ARGB32_Premultiplied);
            blank.fill(Qt::white);
            EXPECT_EQ(image, blank) << k << " at " << angle;
        }
    }
}

// The control

TEST_F(KnobPainting, APutIsSeenAtTheNextPainting) {
    knob->SetKnobFillColor(QColor(10, 20, 30));
    EXPECT_EQ(knob->grab().toImage().pixelColor(2, 60), QColor(10, 20, 30));
    knob->SetKnobFillColor(QColor(40, 50, 60));
    EXPECT_EQ(knob->grab().toImage().pixelColor(2, 60), QColor(40, 50, 60));
}

TEST_F(KnobPainting, ThePointerFollowsTheValue) {
    knob->SetKnobFillColor(QColor(200, 200, 200));
    const KnobLayout layout = LayOutKnob({knob->size(), 0, 13, 20, {7, 7}});
    const auto shown = [&](int value) {
        knob->SetKnobValue(value);
        const QPointF at =
            knob::PointAt(layout.drawnCentre(), 0.75 * (layout.Radius - 5), -45 + 270 * value / 100.0);
        return Name(knob->grab().toImage().pixelColor(at.toPoint()));
    };
    for (int value : {0, 25, 50, 100}) {
        EXPECT_EQ(shown(value), "black") << value;
    }
}

TEST_F(KnobPainting, AQuantizedPointerStandsOnSteps) {
    knob->ReadProperties({{"KnobMin", 0}, {"KnobMax", 2}, {"KnobValueQuantized", true}});
    press(50);
    const QImage first = knob->grab().toImage();
    move(60);
    EXPECT_EQ(knob->grab().toImage(), first);
}

TEST_F(KnobPainting, AMoveOfThePointerPaintsAtOnce) {
    Settle(*knob, "Timer1");
    const QImage before = knob->grab().toImage();
    press(100);
    EXPECT_FALSE(Pending(*knob, "Timer1"));
    EXPECT_NE(knob->grab().toImage(), before);
}

TEST_F(KnobPainting, AHiddenKnobPaintsNothing) {
    QWidget holder;
    holder.resize(100, 100);
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(1, 99, 1));
    holder.setPalette(palette);
    knob->setParent(&holder);
    knob->show();
    knob->SetKnobVisible(false);
    const QImage image = holder.grab().toImage();
    for (int x = 0; x < 100; x += 3) {
        for (int y = 0; y < 100; y += 3) {
            ASSERT_EQ(image.pixelColor(x, y), QColor(1, 99, 1)) << x << "," << y;
        }
    }
    knob->SetKnobVisible(true);
    EXPECT_NE(holder.grab().toImage(), image);
    knob->setParent(nullptr);
}

TEST_F(KnobPainting, TheTextHasItsColour) {
    knob->SetKnobTextColor(QColor(255, 0, 0));
    knob->SetKnobBorderColor(Qt::black);
    const auto* label = child<QLabel>("KnobValueLabel");
    const QImage image = knob->grab(label->geometry()).toImage();
    int red = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            red += Name(image.pixelColor(x, y)) == "red" ? 1 : 0;
        }
    }
    EXPECT_GT(red, 5);
}
