#include "controls/colour.h"
#include "controls/contrast.h"
#include "controls/face_pictures.h"
#include "controls/panel_design.h"
#include "controls/panel_picture.h"
#include "frame/window/all_forms.h"
#include "frame/window/main_form_design.h"
#include "skin/fine_skin.h"
#include "skin/skin_colour.h"

#include <QDir>
#include <QImage>
#include <gtest/gtest.h>

namespace {

struct Skin {
    QString file;
    QImage picture;
};

std::vector<Skin> Skins() {
    const QDir folder(QStringLiteral(CORVANTINE_SOURCE_DIR "/skins"));
    std::vector<Skin> skins;
    for (const QString& file : folder.entryList({"Corvantine_skin_*.bmp"}, QDir::Files, QDir::Name)) {
        skins.push_back({folder.filePath(file), QImage(folder.filePath(file))});
    }
    return skins;
}

QColor Sample(const QImage& skin, const QRect& place) {
    return skin.pixelColor(SamplePoint(place));
}

QRect Place(const QString& name) {
    for (const ControlDesign& row : MainFormDesign().controls) {
        if (ControlName(row.name, row.index) == name) {
            return row.place;
        }
    }
    ADD_FAILURE() << name.toStdString();
    return {};
}

/// Expects one colour along the edges of a place and in its corners.
void ExpectFlat(const QImage& skin, const QRect& place, const QColor& colour, const std::string& what) {
    int others = 0;
    for (int x = place.left(); x <= place.right(); ++x) {
        others += skin.pixelColor(x, place.top()) != colour || skin.pixelColor(x, place.bottom()) != colour;
    }
    for (int y = place.top(); y <= place.bottom(); ++y) {
        others += skin.pixelColor(place.left(), y) != colour || skin.pixelColor(place.right(), y) != colour;
    }
    EXPECT_EQ(others, 0) << what << " shows as a rectangle on the skin";
}

TEST(Skins, ThereAreFourOfTheSizeOfTheFace) {
    EXPECT_GE(Skins().size(), 4U);
    for (const auto& [file, skin] : Skins()) {
        ASSERT_EQ(skin.size(), MainFormDesign().size) << file.toStdString();
        EXPECT_EQ(skin.depth() >= 24 ? 24 : 0, 24);
        EXPECT_EQ(LoadFineSkin(file).size(), 3 * skin.size()) << file.toStdString();
    }
}

TEST(Skins, TheOutsideHasTheKeyColourAndTheShouldersAreRound) {
    for (const auto& [file, skin] : Skins()) {
        const QColor key = ToQColor(kSkinKey);
        const int right = skin.width() - 1;
        const int bottom = skin.height() - 1;
        for (const QPoint corner :
             {QPoint(0, 0), QPoint(right, 0), QPoint(0, bottom), QPoint(right, bottom)}) {
            EXPECT_EQ(skin.pixelColor(corner), key) << file.toStdString();
        }
        EXPECT_EQ(skin.pixelColor(right, 4), key) << "a shoulder, not a corner";
        for (const QPoint edge : {QPoint(right / 2, 0), QPoint(0, bottom / 2), QPoint(right, bottom / 2),
                                  QPoint(right / 2, bottom)}) {
            EXPECT_NE(skin.pixelColor(edge), key) << file.toStdString();
        }
        int inside = 0;
        for (int y = 30; y < skin.height() - 30; ++y) {
            for (int x = 0; x < skin.width(); ++x) {
                inside += skin.pixelColor(x, y) == key;
            }
        }
        EXPECT_EQ(inside, 0) << "a hole in the face of " << file.toStdString();
    }
}

TEST(Skins, ButtonsAndBarsGrowOutOfTheirGround) {
    for (const auto& [file, skin] : Skins()) {
        for (const ControlDesign& row : MainFormDesign().controls) {
            const QString name = ControlName(row.name, row.index);
            if (row.kind == ControlKind::Button || name.endsWith("CursorBar")) {
                ExpectFlat(skin, row.place, Sample(skin, row.place), file.toStdString() + name.toStdString());
            }
        }
    }
}

TEST(Skins, KnobsGrowOutOfTheirPlates) {
    for (const auto& [file, skin] : Skins()) {
        for (const ControlDesign& row : MainFormDesign().controls) {
            if (row.kind == ControlKind::Knob) {
                const Colour plate = Brightened(FromQColor(Sample(skin, row.place)));
                ExpectFlat(skin, row.place, ToQColor(plate), file.toStdString() + row.name);
            }
        }
    }
}

TEST(Skins, TextsOnTheFaceCanBeRead) {
    for (const auto& [file, skin] : Skins()) {
        for (const ControlDesign& row : MainFormDesign().controls) {
            const bool onGround = row.kind == ControlKind::Button || row.kind == ControlKind::Knob;
            if (onGround || row.kind == ControlKind::Label) {
                EXPECT_GE(Contrast(ToQColor(row.fore), Sample(skin, row.place)), 4.5)
                    << file.toStdString() << " " << row.name;
            }
        }
        // The status and the mode turn red.
        for (const char* label : {"TriggerStatusLabel", "AcqModeLabel"}) {
            EXPECT_GE(Contrast(Qt::red, Sample(skin, Place(label))), 4.5) << file.toStdString() << label;
        }
    }
}

TEST(Skins, PointersStandOutFromTheirKnobs) {
    for (const auto& [file, skin] : Skins()) {
        for (const char* knob : {"TimeBaseKnob", "TriggerKnob", "HorizZoomKnob", "VertZoomKnob"}) {
            const Colour face = Brightened(FromQColor(Sample(skin, Place(knob))));
            EXPECT_GE(Contrast(Qt::black, ToQColor(face)), 2.5) << file.toStdString() << knob;
        }
    }
}

TEST(Skins, ThumbsStandOutFromTheirModule) {
    for (const auto& [file, skin] : Skins()) {
        for (const char* slider : {"HorizPanSlider", "VertPanSlider", "PretriggerSlider"}) {
            const QRect place = Place(slider);
            EXPECT_GE(Contrast(Sample(skin, place), skin.pixelColor(place.topLeft())), 2.5)
                << file.toStdString() << slider;
        }
    }
}

TEST(Panels, OnlyTheFaceItsRailsAndItsOwnHeaderBelongToTheOutline) {
    using Geometry = PanelGeometry;
    const QColor key = ToQColor(kSkinKey);
    int row = 0;
    for (const FormDesign& panel : AllPanels()) {
        const QImage shape = PanelShapePicture(panel);
        ASSERT_EQ(shape.size(), panel.size);
        EXPECT_EQ(shape.pixelColor(shape.width() - 1, 0), key) << panel.name.toStdString();
        for (int other = 0; other < kPanelRows; ++other) {
            const QPoint header = Geometry::Header(other).center();
            EXPECT_EQ(shape.pixelColor(header) != key, other == row) << panel.name.toStdString() << other;
            // The header of a closed panel shows through the window of one that is pulled out.
            const QPoint through = header - QPoint(Geometry::kTravel, 0);
            EXPECT_EQ(shape.pixelColor(through) != key, other == row) << panel.name.toStdString() << other;
        }
        for (const ControlDesign& control : panel.controls) {
            if (control.parent == nullptr && control.kind != ControlKind::Picture) {
                EXPECT_NE(shape.pixelColor(control.place.topLeft()), key) << control.name;
                EXPECT_NE(shape.pixelColor(control.place.bottomRight()), key) << control.name;
            }
        }
        ++row;
    }
}

TEST(Panels, ControlsGrowOutOfTheirGround) {
    for (const FormDesign& panel : AllPanels()) {
        const QImage shape = PanelShapePicture(panel);
        for (const ControlDesign& row : panel.controls) {
            if (row.parent == nullptr && row.kind == ControlKind::Button) {
                ExpectFlat(shape, row.place, ToQColor(row.back), panel.name.toStdString() + row.name);
            } else if (row.kind == ControlKind::Knob) {
                ExpectFlat(shape, row.place, ToQColor(row.fill), panel.name.toStdString() + row.name);
            }
        }
    }
}

TEST(Panels, TheArtRunsOnBeyondTheOutline) {
    // Where a coarse mask shows a little more than the fine art, nothing of the key may show.
    const FormDesign panel = AllPanels().front();
    const QImage fine = RenderDrawing(PanelDrawing(panel), panel.size, 2).toImage();
    const QRgb key = ToQColor(kSkinKey).rgb();
    for (int y = 0; y < fine.height(); ++y) {
        for (int x = 0; x < fine.width(); ++x) {
            ASSERT_NE(fine.pixel(x, y), key) << x << "," << y;
            ASSERT_EQ(qAlpha(fine.pixel(x, y)), 255) << x << "," << y;
        }
    }
}

TEST(Drawings, EveryOneThatATableAsksForIsThere) {
    for (const FormDesign& form : AllForms()) {
        if (form.ground != nullptr) {
            EXPECT_TRUE(FindDrawing(form.ground, form)) << form.ground;
        }
        for (const ControlDesign& row : form.controls) {
            for (const auto& [key, value] : row.properties) {
                if (QLatin1String(key) == QLatin1String("drawing")) {
                    const FaceDrawing drawing = FindDrawing(value.toString(), form);
                    ASSERT_TRUE(drawing) << value.toString().toStdString();
                    const QImage image = RenderDrawing(drawing, row.place.size(), 2).toImage();
                    EXPECT_GT(qAlpha(image.pixel(image.width() / 2, image.height() / 2)), 128)
                        << value.toString().toStdString();
                }
            }
        }
    }
    EXPECT_FALSE(FindDrawing("nothing of that name", AllPanels().front()));
    EXPECT_FALSE(FindDrawing({}, AllPanels().front()));
}

} // namespace
