#include "controls/form.h"

#include "controls/button_control.h"
#include "controls/colour.h"
#include "controls/face_style.h"
#include "controls/fonts.h"
#include "controls/hyperlink_label.h"
#include "controls/knob_control.h"
#include "controls/knob_instances.h"
#include "controls/panel_design.h"
#include "controls/picture.h"
#include "controls/slider_control.h"
#include "controls/slider_instances.h"
#include "frame/window/all_forms.h"
#include "frame/window/main_form_design.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPainter>
#include <QRadioButton>
#include <QSignalSpy>
#include <QStyleOptionButton>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

namespace {

const FormDesign& DesignOf(const QString& name) {
    static const std::vector<FormDesign> forms = AllForms();
    for (const FormDesign& form : forms) {
        if (form.name == name) {
            return form;
        }
    }
    ADD_FAILURE() << name.toStdString();
    return forms.front();
}

TEST(FormOfTables, HoldsEveryRowUnderItsNameAtItsPlace) {
    for (const FormDesign& design : AllForms()) {
        const Form form(design);
        EXPECT_EQ(form.objectName(), design.name);
        EXPECT_EQ(form.windowTitle(), design.caption);
        EXPECT_EQ(form.size(), design.size);
        for (const ControlDesign& row : design.controls) {
            const auto* widget = form.control<QWidget>(row.name, row.index);
            EXPECT_EQ(widget->geometry(), row.place) << widget->objectName().toStdString();
            EXPECT_EQ(widget->toolTip(), row.tip) << widget->objectName().toStdString();
            EXPECT_EQ(widget->isHidden(), !row.visible) << widget->objectName().toStdString();
            EXPECT_EQ(widget->parentWidget()->objectName(), row.parent == nullptr ? design.name : row.parent);
        }
        for (const TimerDesign& row : design.timers) {
            const QTimer* timer = form.timer(row.name);
            EXPECT_EQ(timer->parent(), &form);
            EXPECT_EQ(timer->interval(), row.interval);
            EXPECT_EQ(timer->isSingleShot(), row.singleShot);
            EXPECT_FALSE(timer->isActive());
        }
    }
}

TEST(FormOfTables, KnobsAreTheDesignedInstances) {
    size_t found = 0;
    for (const FormDesign& design : AllForms()) {
        const Form form(design);
        for (const KnobInstance& instance : KnobInstances()) {
            const auto* knob = form.findChild<KnobControl1*>(instance.name);
            if (knob == nullptr) {
                continue;
            }
            ++found;
            const QVariantMap bag = instance.bag();
            for (auto it = bag.begin(); it != bag.end(); ++it) {
                EXPECT_EQ(knob->property(it.key().toLatin1()), it.value())
                    << instance.name << " " << it.key().toStdString();
            }
            EXPECT_EQ(knob->size(), instance.size) << instance.name;
        }
    }
    EXPECT_EQ(found, KnobInstances().size() + 2 * 3) << "two knobs stand on four panels";
}

TEST(FormOfTables, KnobsHaveTheirColoursBandsAndFonts) {
    const Form face(MainFormDesign());
    const auto* timeBase = face.control<KnobControl1>("TimeBaseKnob");
    EXPECT_EQ(timeBase->KnobFillColor(), ToQColor(0x0000FF));
    EXPECT_EQ(timeBase->KnobBorderColor(), ToQColor(0x606060));
    EXPECT_EQ(timeBase->KnobMarkerColor(), ToQColor(0x00FF00));
    EXPECT_EQ(timeBase->KnobBand1Start(), 24);
    EXPECT_EQ(timeBase->KnobBand1Stop(), 28);
    EXPECT_EQ(timeBase->KnobBand1Color(), QColor(Qt::red));
    EXPECT_FALSE(timeBase->KnobZeroButton());
    EXPECT_EQ(timeBase->KnobFont().family(), "Arial");
    const auto* trigger = face.control<KnobControl1>("TriggerKnob");
    EXPECT_EQ(trigger->KnobMarkerColor(), QColor(Qt::white));
    EXPECT_TRUE(trigger->KnobZeroButton());
    EXPECT_EQ(trigger->KnobZeroButtonValue(), 0);
    const auto* zoom = face.control<KnobControl1>("VertZoomKnob");
    EXPECT_EQ(zoom->KnobFillColor(), ToQColor(0x808080));
    EXPECT_EQ(zoom->KnobBorderColor(), ToQColor(0x707070));
    EXPECT_EQ(zoom->KnobTextColor(), QColor(Qt::white));

    const Form channel(DesignOf("Corvantine_Tab3"));
    const auto* offset = channel.control<KnobControl1>("OffsetKnob");
    EXPECT_EQ(offset->KnobFillColor(), ToQColor(0xC0C0C0));
    EXPECT_EQ(offset->KnobBorderColor(), ToQColor(0x98B6BC));
    EXPECT_EQ(offset->KnobMarkerColor(), QColor(Qt::black));
    EXPECT_EQ(offset->KnobLowerLimit(), -128);
    EXPECT_EQ(offset->KnobFont().family(), "Microsoft Sans Serif");
    const Form math(DesignOf("Corvantine_TabMath"));
    const auto* volts = math.control<KnobControl1>("Math2VoltsKnob");
    EXPECT_EQ(volts->KnobFont().family(), "Small Fonts");
    EXPECT_DOUBLE_EQ(FontPoints(volts->KnobFont()), 6.75);
}

TEST(FormOfTables, SlidersAreTheDesignedInstances) {
    const Form face(MainFormDesign());
    const Form horizontal(DesignOf("Corvantine_TabHorz"));
    for (const auto& [name, size, fill, value, step] : kSliderInstances) {
        const auto* slider = face.findChild<SliderControl1*>(name);
        if (slider == nullptr) {
            slider = horizontal.control<SliderControl1>(name);
        }
        EXPECT_EQ(slider->size(), size) << name;
        EXPECT_EQ(slider->SliderFillColor(), ToQColor(fill)) << name;
        EXPECT_FLOAT_EQ(slider->SliderValue(), value) << name;
        EXPECT_FLOAT_EQ(slider->SliderValueQuantized(), step) << name;
        EXPECT_EQ(slider->SliderDepth(), 1) << name;
    }
}

TEST(FormOfTables, ButtonsOfAChannelHaveTheirCaptionsAndColours) {
    const Form form(DesignOf("Corvantine_Tab1"));
    const struct {
        const char* name;
        const char* caption;
        Colour fill;
        Colour fore;
        const char* tip;
    } buttons[] = {
        {"ChannelOnButton", "on", 0xFFFFFF, 0, "Turn the channel plot on and off"},
        {"TrigChanButton", "trig", 0xFFFFFF, 0, "Set this as the trigger channel"},
        {"BWLimitButton", "bw", 0x808080, 0xFFFFFF, "Limit bandwidth to approx Fsample/4"},
        {"InvertButton", "inv", 0x808080, 0xFFFFFF, "Invert the plot"},
        {"FFTButton", "FFT", 0x808080, 0xFFFFFF, "Enable a Fast Fourier Transform spectral plot"},
        {"IDButton", "id", 0x808080, 0xFFFFFF, "Blink this channels LED to identify it"},
        {"CalSourceButton", "cmp", 0x808080, 0xFFFFFF,
         "Turn the probe compensation square wave on and off (turns off automatically after use)"},
        {"OffsetNullButton", "null", 0x808080, 0xFFFFFF, "Configure offset null"},
    };
    for (const auto& [name, caption, fill, fore, tip] : buttons) {
        const auto* button = form.control<ButtonControl1>(name);
        EXPECT_EQ(button->ButtonCaption(), caption);
        EXPECT_EQ(button->ButtonFillColor(), ToQColor(fill)) << name;
        EXPECT_EQ(button->ButtonBackColor(), ToQColor(0x98B6BC)) << name;
        EXPECT_EQ(button->ButtonForeColor(), ToQColor(fore)) << name;
        EXPECT_EQ(button->toolTip(), tip);
    }
}

TEST(FormOfTables, WindowButtonsAreGreen) {
    const Form face(MainFormDesign());
    for (const char* name :
         {"CloseButton", "MinimiseButton", "MinimiseMostlyButton", "UsersGuideButton", "FullScreenButton"}) {
        const auto* button = face.control<ButtonControl1>(name);
        EXPECT_EQ(button->ButtonFillColor(), ToQColor(0x008000)) << name;
        EXPECT_EQ(button->ButtonForeColor(), ToQColor(0x00FF00)) << name;
        EXPECT_EQ(button->ButtonBackColor(), ToQColor(0x707070)) << name;
    }
}

TEST(FormOfTables, OptionsOfAFrameExcludeEachOther) {
    const Form form(DesignOf("Corvantine_Tab1"));
    EXPECT_TRUE(form.control<QRadioButton>("Coupling", 1)->isChecked());
    EXPECT_TRUE(form.control<QRadioButton>("ProbeType", 1)->isChecked());
    form.control<QRadioButton>("Coupling", 2)->click();
    EXPECT_FALSE(form.control<QRadioButton>("Coupling", 1)->isChecked());
    EXPECT_TRUE(form.control<QRadioButton>("ProbeType", 1)->isChecked()) << "another frame";
    EXPECT_EQ(form.control<QRadioButton>("ProbeType", 0)->text(), "x1   Probe");
}

TEST(FormOfTables, APressOnTheNameOfAPanelReachesItsHeader) {
    Form form(DesignOf("Corvantine_TabMath"));
    auto* header = form.control<Picture>("Image1");
    const QSignalSpy presses(header, &Picture::MouseDown);
    auto* name = form.control<QLabel>("TabName");
    form.show();
    // As the toolkit delivers it: the name does not take it, its parent does.
    QTest::mouseClick(form.windowHandle(), Qt::RightButton, {}, name->mapTo(&form, name->rect().center()));
    ASSERT_EQ(presses.count(), 1);
    EXPECT_EQ(presses[0][0].value<Qt::MouseButton>(), Qt::RightButton);
}

TEST(FormOfTables, BackgroundColourOfACheckBoxIsItsWindowRole) {
    ApplyFaceStyle(*qApp);
    const Form form(DesignOf("Corvantine_TabData"));
    auto* box = form.control<QCheckBox>("SaveCh", 2);
    QPalette palette = box->palette();
    palette.setColor(QPalette::Window, Qt::yellow);
    box->setPalette(palette);
    EXPECT_EQ(box->grab().toImage().pixelColor(box->width() - 4, 4), QColor(Qt::yellow));
    EXPECT_TRUE(box->isChecked());
}

TEST(FormOfTables, ListsHaveTheirEntries) {
    const Form form(DesignOf("Corvantine_TabMath"));
    const auto* windows = form.control<QComboBox>("FFTWindowCombo");
    QStringList entries;
    for (int i = 0; i < windows->count(); ++i) {
        entries << windows->itemText(i);
    }
    EXPECT_EQ(entries, (QStringList{"Rectangular", "Hanning", "Hamming", "Triangular", "Welch!"}));
    EXPECT_EQ(form.control<QComboBox>("Math1Combo", 1)->count(), 0) << "filled when the channels are known";
}

TEST(FormOfTables, TheLinkShowsItsPicture) {
    const Form form(DesignOf("Corvantine_TabAbout"));
    const auto* link = form.control<UserControl2>("WebLink");
    EXPECT_TRUE(link->AutoRedraw());
    EXPECT_EQ(link->Picture().deviceIndependentSize(), QSizeF(41, 19));
}

TEST(FormOfTables, PanelsCarryThePictureThatTheyAreShapedFrom) {
    for (const FormDesign& design : AllPanels()) {
        const Form form(design);
        const QImage shape = form.control<Picture>("Image2")->Image().toImage();
        ASSERT_EQ(shape.size(), design.size);
        EXPECT_EQ(shape.pixelColor(shape.width() - 1, 0), ToQColor(0xC0FFFF));
    }
}

QImage Indicator(const FaceStyle& style, QStyle::PrimitiveElement element, QStyle::State state) {
    QImage image(14, 14, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QStyleOptionButton option;
    option.rect = image.rect();
    option.state = state | QStyle::State_Enabled;
    style.drawPrimitive(element, &option, &painter, nullptr);
    return image;
}

TEST(FaceStyleLamps, ShowTheirState) {
    const FaceStyle style;
    for (const auto element : {QStyle::PE_IndicatorCheckBox, QStyle::PE_IndicatorRadioButton}) {
        const QImage on = Indicator(style, element, QStyle::State_On);
        const QImage off = Indicator(style, element, QStyle::State_Off);
        int lit = 0;
        for (int y = 0; y < on.height(); ++y) {
            for (int x = 0; x < on.width(); ++x) {
                lit += on.pixelColor(x, y).green() - off.pixelColor(x, y).green() > 80;
            }
        }
        EXPECT_GT(lit, 8) << "a lamp that is on shines green";
        const QImage hover = Indicator(style, element, QStyle::State_Off | QStyle::State_MouseOver);
        EXPECT_NE(hover, off);
        const QImage focus = Indicator(
            style, element, QStyle::State_Off | QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange);
        EXPECT_NE(focus, off);
    }
}

TEST(PictureDrawing, StandsInOnlyWhereThePictureIsTooCoarse) {
    Picture picture;
    picture.resize(20, 10);
    picture.SetDrawing([](QPainter& painter, const QRectF& place) { painter.fillRect(place, Qt::green); });
    EXPECT_EQ(picture.grab().toImage().pixelColor(5, 5), QColor(Qt::green)) << "there is no picture";
    QPixmap red(20, 10);
    red.fill(Qt::red);
    picture.SetPicture(red);
    EXPECT_EQ(picture.grab().toImage().pixelColor(5, 5), QColor(Qt::red)) << "the screen is as coarse";
    picture.SetPicture({});
    picture.SetDrawing({});
    picture.SetBackColor(Qt::blue);
    EXPECT_EQ(picture.grab().toImage().pixelColor(5, 5), QColor(Qt::blue));
}

TEST(PictureDrawing, IsDrawnOnceASize) {
    int drawings = 0;
    Picture picture;
    picture.resize(20, 10);
    picture.SetDrawing([&](QPainter&, const QRectF&) { ++drawings; });
    picture.grab();
    picture.grab();
    EXPECT_EQ(drawings, 1);
    picture.resize(30, 10);
    picture.grab();
    EXPECT_EQ(drawings, 2);
}

} // namespace
