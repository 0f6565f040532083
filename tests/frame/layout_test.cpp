#include "controls/colour.h"
#include "controls/panel_design.h"
#include "controls/panel_picture.h"
#include "frame/all_forms.h"
#include "frame/main_form_design.h"
#include "layout_json.h"
#include "skin/fine_skin.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QSet>
#include <gtest/gtest.h>

namespace {

QString Name(const ControlDesign& row) {
    return ControlName(row.name, row.index);
}
QString Parent(const ControlDesign& row) {
    return row.parent == nullptr ? QString() : row.parent;
}

const ControlDesign* Find(const FormDesign& form, const QString& name) {
    for (const ControlDesign& row : form.controls) {
        if (Name(row) == name) {
            return &row;
        }
    }
    return nullptr;
}

std::string Where(const FormDesign& form, const ControlDesign& row) {
    return (form.name + "." + Name(row)).toStdString();
}

/// Pictures that others lie on by design: the skin, a panel's background.
bool IsGround(const ControlDesign& row) {
    return row.kind == ControlKind::Picture && row.parent == nullptr &&
           (Name(row) == "Image1" || Name(row) == "Image2");
}

/// Markers that move along their bar, over each other and over the handles.
bool Floats(const ControlDesign& row) {
    return row.kind == ControlKind::Line && row.parent != nullptr;
}

TEST(Layout, EveryNameIsUnique) {
    for (const FormDesign& form : AllForms()) {
        QSet<QString> names;
        for (const ControlDesign& row : form.controls) {
            EXPECT_FALSE(names.contains(Name(row))) << Where(form, row);
            names.insert(Name(row));
        }
    }
}

TEST(Layout, EverythingLiesInsideItsParent) {
    for (const FormDesign& form : AllForms()) {
        for (const ControlDesign& row : form.controls) {
            QRect ground({0, 0}, form.size);
            if (row.parent != nullptr) {
                const ControlDesign* parent = Find(form, row.parent);
                ASSERT_NE(parent, nullptr) << Where(form, row);
                ground = QRect({0, 0}, parent->place.size());
            }
            EXPECT_TRUE(ground.contains(row.place)) << Where(form, row);
            EXPECT_FALSE(row.place.isEmpty()) << Where(form, row);
        }
    }
}

TEST(Layout, NothingOverlaps) {
    for (const FormDesign& form : AllForms()) {
        for (size_t i = 0; i < form.controls.size(); ++i) {
            for (size_t k = 0; k < i; ++k) {
                const ControlDesign& a = form.controls[i];
                const ControlDesign& b = form.controls[k];
                if (Parent(a) != Parent(b) || IsGround(a) || IsGround(b) || Floats(a) || Floats(b) ||
                    a.kind == ControlKind::ListBox || Name(a) == "TabSliderAnchorImage" ||
                    Name(b) == "TabSliderAnchorImage") {
                    continue;
                }
                EXPECT_FALSE(a.place.intersects(b.place)) << Where(form, a) << " " << Where(form, b);
            }
        }
    }
}

TEST(Layout, TheSkinsWerePaintedForThePresentPlaces) {
    QFile file(QStringLiteral(CORVANTINE_SOURCE_DIR "/skins/layout.json"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().toStdString(), LayoutJson(MainFormDesign()).toStdString())
        << "run export_layout > skins/layout.json, then skins/paint_skins.py";
}

TEST(Layout, EverySkinHasTheSizeOfTheFaceAndTheKeyColourAtItsTopRight) {
    const QDir skins(QStringLiteral(CORVANTINE_SOURCE_DIR "/skins"));
    const QStringList files = skins.entryList({"Corvantine_skin_*.bmp"}, QDir::Files);
    EXPECT_GE(files.size(), 4);
    for (const QString& file : files) {
        const QImage skin(skins.filePath(file));
        ASSERT_EQ(skin.size(), MainFormDesign().size) << file.toStdString();
        EXPECT_EQ(skin.pixelColor(skin.width() - 1, 0), ToQColor(kShapeKey)) << file.toStdString();
        EXPECT_EQ(LoadFineSkin(skins.filePath(file)).size(), 3 * skin.size()) << file.toStdString();
    }
}

} // namespace
