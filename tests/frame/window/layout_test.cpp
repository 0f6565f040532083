#include "controls/knob_instances.h"
#include "controls/panel_design.h"
#include "controls/slider_instances.h"
#include "frame/window/all_forms.h"
#include "frame/window/main_form_design.h"
#include "layout_json.h"
#include "layout_rows.h"

#include <QFile>
#include <QSet>
#include <gtest/gtest.h>
#include <map>

namespace {

using Geometry = PanelGeometry;

QString Parent(const ControlDesign& row) {
    return row.parent == nullptr ? QString() : row.parent;
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

/// Rows that are never seen.
bool IsHidden(const ControlDesign& row) {
    return row.kind == ControlKind::ListBox && !row.visible ? true : Name(row) == "TabSliderAnchorImage";
}

TEST(Layout, EveryNameIsUnique) {
    for (const FormDesign& form : AllForms()) {
        QSet<QString> names;
        for (const ControlDesign& row : form.controls) {
            EXPECT_FALSE(names.contains(Name(row))) << Where(form, row);
            names.insert(Name(row));
        }
        for (const TimerDesign& timer : form.timers) {
            EXPECT_FALSE(names.contains(timer.name)) << timer.name;
            names.insert(timer.name);
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
                const bool apart = Parent(a) != Parent(b) || IsGround(a) || IsGround(b) || Floats(a) ||
                                   Floats(b) || IsHidden(a) || IsHidden(b);
                if (!apart) {
                    EXPECT_FALSE(a.place.intersects(b.place)) << Where(form, a) << " " << Where(form, b);
                }
            }
        }
    }
}

TEST(Layout, InstancesHaveTheirSizes) {
    std::map<QString, QSize> sizes{{"WebLink", {41, 19}}};
    for (const KnobInstance& knob : KnobInstances()) {
        sizes[knob.name] = knob.size;
    }
    for (const SliderInstance& slider : kSliderInstances) {
        sizes[slider.name] = slider.size;
    }
    for (const char* knob : {"VoltsKnob", "OffsetKnob"}) { // both math channels have the same
        sizes[QStringLiteral("Math2%1").arg(knob)] = sizes.at(QStringLiteral("Math1%1").arg(knob));
    }
    QSet<QString> seen;
    for (const FormDesign& form : AllForms()) {
        for (const ControlDesign& row : form.controls) {
            const auto size = sizes.find(Name(row));
            if (size != sizes.end()) {
                EXPECT_EQ(row.place.size(), size->second) << Where(form, row);
                seen.insert(Name(row));
            }
            const bool sized = row.kind == ControlKind::Knob || row.kind == ControlKind::Slider;
            EXPECT_TRUE(!sized || size != sizes.end()) << Where(form, row);
            if (row.kind == ControlKind::Button) {
                EXPECT_GE(std::min(row.place.width(), row.place.height()), 15) << Where(form, row);
                EXPECT_LE(std::max(row.place.width(), row.place.height()), 72) << Where(form, row);
            }
        }
    }
    EXPECT_EQ(seen.size(), static_cast<qsizetype>(sizes.size()));
}

TEST(Layout, EveryNameOfTheInstrumentIsThere) {
    const std::map<QString, QStringList> names = {
        {"Corvantine_Main",
         {"Image1",
          "MainPlotCanvas",
          "TimeBaseKnob",
          "TriggerKnob",
          "HorizZoomKnob",
          "VertZoomKnob",
          "HorizPanSlider",
          "VertPanSlider",
          "PretriggerSlider",
          "RunButton",
          "OnceButton",
          "TrigModeButton",
          "TrigTypeButton",
          "CloseButton",
          "MinimiseButton",
          "MinimiseMostlyButton",
          "UsersGuideButton",
          "FullScreenButton",
          "NormaliseButton",
          "SampleDotsButton",
          "SkinColourImage",
          "VertCursorBar",
          "HorizCursorBar",
          "VertCursorHandle(0)",
          "VertCursorHandle(2)",
          "HorizCursorHandle(0)",
          "HorizCursorHandle(2)",
          "VertWorldLine(0)",
          "VertWorldLine(1)",
          "HorizWorldLine(0)",
          "HorizWorldLine(1)",
          "TriggerStatusLabel",
          "AcqModeLabel",
          "DemoLabel",
          "TabSliderAnchorImage",
          "SkinFiles",
          "SkinColourList"}},
        {"Corvantine_Tab1",
         {"VoltsKnob",    "OffsetKnob",   "Coupling(0)",     "Coupling(1)",        "Coupling(2)",
          "ProbeType(0)", "ProbeType(1)", "ChannelOnButton", "TrigChanButton",     "BWLimitButton",
          "InvertButton", "FFTButton",    "IDButton",        "CalSourceButton",    "OffsetNullButton",
          "TabName",      "Image1",       "Image2",          "TriggerChannelLine", "Frame1(0)",
          "Frame1(1)"}},
        {"Corvantine_TabMath",
         {"MathChannelEn(1)",
          "MathChannelEn(2)",
          "Math1Combo(0)",
          "Math1Combo(1)",
          "Math1Combo(2)",
          "Math2Combo(0)",
          "Math2Combo(1)",
          "Math2Combo(2)",
          "Math1VoltsKnob",
          "Math2VoltsKnob",
          "Math1OffsetKnob",
          "Math2OffsetKnob",
          "FFTButton(0)",
          "FFTButton(1)",
          "FFTWindowCombo",
          "FFTPlotType(0)",
          "FFTPlotType(1)",
          "Math1Label(0)",
          "Math1Label(5)",
          "Line1",
          "Line2",
          "Frame1",
          "Image1",
          "Image2",
          "TabName"}},
        {"Corvantine_TabHorz",
         {"DelayKnob", "DelayLabel", "UpdateRateSlider", "TrigChanButton(1)", "TrigChanButton(4)",
          "UpdateRateMarkerLabel(1)", "UpdateRateMarkerLabel(4)", "Image1", "Image2", "TabName"}},
        {"Corvantine_TabCurs",
         {"VertCursorEn(0)", "VertCursorEn(2)", "HorizCursorEn(0)", "HorizCursorEn(2)", "Image1", "Image2",
          "TabName"}},
        {"Corvantine_TabData", {"SaveCh(1)", "SaveCh(4)", "SaveDataButton", "Image1", "Image2", "TabName"}},
        {"Corvantine_TabAbout",
         {"About(0)", "VersionText", "Label1", "CorvantineList", "Label2", "DebugList", "UpdateRateLabel",
          "WebLink", "Image1", "Image2", "TabName"}},
        {"Corvantine_SplashForm",
         {"Label1(0)", "Label1(1)", "Label1(2)", "Label1(3)", "Label1(4)", "Label1(5)"}},
        {"Corvantine_OffsetNullForm",
         {"CurrentChanText", "CurrentNullText", "ApplyNullButton", "CancelNullButton", "DoneNullButton",
          "InstructionsLabel"}},
        {"Corvantine_StatsForm",
         {"Picture1", "Picture2", "Picture3", "Picture4", "Picture5", "Picture6", "Picture7", "TitleText(0)",
          "TitleText(10)"}},
        {"Corvantine_FFTForm",
         {"Canvas", "FFTCursorLineVert", "FFTCursorLineHoriz", "ClipboardButton", "OtherInfoLabel",
          "TitleLabel", "FFTStatsFreq", "FFTStatsMag", "IdentFrame", "Ch(1)", "Ch(6)"}},
        {"Corvantine_FullScreenTimeForm",
         {"Canvas", "ScopeSettingsLabel", "OtherInfoLabel", "ClipboardButton", "IdentFrame", "Ch(1)",
          "Ch(6)"}},
    };
    size_t forms = 0;
    for (const FormDesign& form : AllForms()) {
        const bool otherChannel = form.name.startsWith("Corvantine_Tab") && form.name.back().isDigit();
        const auto wanted = names.find(otherChannel ? QString("Corvantine_Tab1") : form.name);
        ASSERT_NE(wanted, names.end()) << form.name.toStdString();
        forms += wanted->first == form.name ? 1 : 0;
        for (const QString& name : wanted->second) {
            EXPECT_NE(Find(form, name), nullptr) << form.name.toStdString() << "." << name.toStdString();
        }
    }
    EXPECT_EQ(forms, names.size());
}

TEST(Layout, TimersHaveTheirIntervals) {
    const std::map<QString, std::pair<int, bool>> timers = {
        {"RunTimer", {100, false}},
        {"AutoTriggerTimer", {250, false}},
        {"TabTimer", {50, false}},
        {"CursTimer", {10, true}},
        {"TriggerLineTimer", {2000, true}},
        {"IDTimer", {4000, true}},
        {"DoneTimer", {1500, true}},
        {"WaitForUpdateTimer1", {50, false}},
        {"WaitForUpdateTimer2", {50, false}},
    };
    size_t found = 0;
    for (const FormDesign& form : AllForms()) {
        for (const TimerDesign& timer : form.timers) {
            const auto wanted = timers.find(timer.name);
            ASSERT_NE(wanted, timers.end()) << timer.name;
            EXPECT_EQ(timer.interval, wanted->second.first) << timer.name;
            EXPECT_EQ(timer.singleShot, wanted->second.second) << timer.name;
            ++found;
        }
    }
    EXPECT_EQ(found, timers.size());
}

TEST(Layout, TheFaceKeepsItsMarginsAndItsPlotLarge) {
    const FormDesign& form = MainFormDesign();
    EXPECT_EQ(form.size.width() % 4, 0) << "scan lines without padding";
    const QRect inner = QRect({0, 0}, form.size).adjusted(16, 12, -16, -16);
    int largest = 0;
    for (const ControlDesign& row : form.controls) {
        if (row.parent == nullptr && !IsGround(row) && !IsHidden(row)) {
            EXPECT_TRUE(inner.contains(row.place)) << Where(form, row);
            if (Name(row) != "MainPlotCanvas") {
                largest = std::max(largest, row.place.width() * row.place.height());
            }
        }
    }
    const QRect plot = Find(form, "MainPlotCanvas")->place;
    EXPECT_GT(plot.width() * plot.height(), 8 * largest);
    // Bars and sliders run along the plot, from edge to edge.
    for (const char* name : {"VertCursorBar", "HorizPanSlider", "PretriggerSlider"}) {
        EXPECT_EQ(Find(form, name)->place.left(), plot.left()) << name;
        EXPECT_EQ(Find(form, name)->place.right(), plot.right()) << name;
    }
    for (const char* name : {"HorizCursorBar", "VertPanSlider"}) {
        EXPECT_EQ(Find(form, name)->place.top(), plot.top()) << name;
        EXPECT_NEAR(Find(form, name)->place.bottom(), plot.bottom(), 1) << name;
    }
}

TEST(Layout, PanelsHaveOnePlaceAndKeepTheirMargins) {
    const QRect face(Geometry::kLeft, 10, Geometry::kWidth, Geometry::kHeight - 20);
    for (const FormDesign& form : AllPanels()) {
        EXPECT_EQ(form.size, Geometry::Size()) << form.name.toStdString();
        for (const ControlDesign& row : form.controls) {
            if (row.parent == nullptr && !IsGround(row)) {
                EXPECT_TRUE(face.contains(row.place)) << Where(form, row);
            }
        }
    }
}

TEST(Layout, HeadersStandOutOfTheEdgeOneBelowAnother) {
    const FormDesign& main = MainFormDesign();
    const QRect anchor = Find(main, "TabSliderAnchorImage")->place;
    int row = 0;
    int last = 0;
    QSet<Colour> colours;
    for (const FormDesign& panel : AllPanels()) {
        const QRect header = Find(panel, "Image1")->place.translated(anchor.topLeft());
        EXPECT_EQ(header.size(), Geometry::Header(row).size()) << panel.name.toStdString();
        EXPECT_EQ(header.left(), main.size.width()) << "closed, just the header is in view";
        EXPECT_GT(header.top(), last) << panel.name.toStdString();
        EXPECT_LT(header.bottom(), main.size.height());
        const int open = anchor.left() + anchor.width() + Geometry::kBodyLeft;
        EXPECT_GE(open, header.right()) << "pulled out, the face clears the other headers";
        last = header.bottom();
        colours.insert(Find(panel, "TabName")->back);
        ++row;
    }
    EXPECT_EQ(row, kPanelRows);
    EXPECT_EQ(colours.size(), kPanelRows);
}

TEST(Layout, TheFourChannelPanelsDifferInTwoPointsOnly) {
    const std::vector<FormDesign> panels = AllPanels();
    for (int channel = 2; channel <= 4; ++channel) {
        const FormDesign& one = panels[0];
        const FormDesign& other = panels[static_cast<size_t>(channel - 1)];
        ASSERT_EQ(one.controls.size(), other.controls.size());
        for (size_t i = 0; i < one.controls.size(); ++i) {
            const ControlDesign& a = one.controls[i];
            const ControlDesign& b = other.controls[i];
            ASSERT_EQ(Name(a), Name(b));
            const bool header = Name(a) == "Image1" || Name(a) == "TabName";
            EXPECT_TRUE(header || (a.place == b.place && a.caption == b.caption && a.tip == b.tip))
                << Where(other, b);
            for (size_t k = 0; k < a.properties.size(); ++k) {
                const QString key = b.properties[k].first;
                const QVariant wanted =
                    key == "KnobLowerLimit" ? QVariant(channel <= 2 ? -127 : -128) : a.properties[k].second;
                EXPECT_EQ(b.properties[k].second, wanted) << Where(other, b) << key.toStdString();
            }
        }
        EXPECT_EQ(Find(other, "TabName")->caption, QString("CH%1").arg(channel));
        EXPECT_EQ(Find(other, "Image1")->tip, QString("Scope channel %1 settings").arg(channel));
    }
}

TEST(Layout, TheSkinsWerePaintedForThePresentPlaces) {
    QFile file(QStringLiteral(CORVANTINE_SOURCE_DIR "/skins/layout.json"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().toStdString(), LayoutJson(MainFormDesign()).toStdString())
        << "run export_layout > skins/layout.json, then skins/paint_skins.py";
}

} // namespace
