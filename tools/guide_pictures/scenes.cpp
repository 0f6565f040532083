#include "scenes.h"

#include "controls/button_control.h"
#include "controls/knob_control.h"
#include "controls/panel_design.h"
#include "controls/picture.h"
#include "controls/slider_control.h"
#include "display/plot_canvas.h"
#include "frame/instrument/instrument.h"
#include "frame/record/record.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QListWidget>
#include <QMouseEvent>
#include <QRadioButton>

namespace {

constexpr int kManyPasses = 6000; ///< ms until interleaving has renewed every sample
constexpr int kSettle = 800;      ///< ms in which a picture is drawn and measured anew several times

// Positions of TimeBaseKnob
constexpr int k100ns = 4;
constexpr int k1us = 7;
constexpr int k20us = 11;
constexpr int k100ms = 22;

class Photographer {
  public:
    Photographer(Instrument& instrument, Camera& camera)
        : instrument_(instrument), camera_(camera), forms_(instrument.forms) {}

    template <class T> T* Main(const char* name) { return forms_.MainForm->control<T>(name); }
    template <class T> T* Tab(int slot, const char* name, int index = -1) {
        return forms_.TabForm[slot]->control<T>(name, index);
    }
    void TurnTo(const char* knob, int value) { Main<KnobControl1>(knob)->SetKnobValue(value); }
    void Press(const char* button) { emit Main<ButtonControl1>(button)->Click(); }
    void PressTab(int slot) { emit Tab<Picture>(slot, "Image1")->MouseDown(Qt::LeftButton, {}); }
    void Face(const QString& name) {
        Wait(kSettle);
        const Form& main = *forms_.MainForm;
        QRect area = main.geometry();
        area.setRight(forms_.surface->width() - PanelGeometry::kTravel - 1);
        camera_.Take(name, *forms_.surface, forms_.surface->Shot(), area,
                     {{&main},
                      {forms_.TabForm[1], QStringLiteral("CH1.")},
                      {forms_.TabForm[2], QStringLiteral("CH2.")},
                      {forms_.TabForm[3], QStringLiteral("CH3.")},
                      {forms_.TabForm[4], QStringLiteral("CH4.")},
                      {forms_.TabForm[kMathTab], QStringLiteral("MATH.")},
                      {forms_.TabForm[kDataTab], QStringLiteral("DATA.")},
                      {forms_.TabForm[kCursTab], QStringLiteral("CURS.")},
                      {forms_.TabForm[kHorzTab], QStringLiteral("HORZ.")},
                      {forms_.TabForm[kAboutTab], QStringLiteral("About.")}});
    }

    void Panel(const QString& name, int slot) {
        PressTab(slot);
        Wait(kSettle);
        const Form& panel = *forms_.TabForm[slot];
        QRect area = panel.geometry();
        area.setLeft(area.left() + PanelGeometry::kBodyLeft);
        camera_.Take(name, *forms_.surface, forms_.surface->Shot(), area, {{&panel}});
        PressTab(slot);
    }

    /// The plot with what stands around it: bars, sliders.
    void Plot(const QString& name) {
        Wait(kSettle);
        const auto* canvas = Main<QWidget>("MainPlotCanvas");
        const QRect area(canvas->mapTo(forms_.surface.get(), QPoint()), canvas->size());
        camera_.Take(name, *forms_.surface, forms_.surface->Shot(), area, {});
    }

    void Window(const QString& name, Form& form) {
        Wait(kSettle);
        camera_.Take(name, form, {{&form}});
    }

    void ShowCursors() {
        ClickCursorBoxes();
        constexpr double kPeriod = 20e-9;
        const int samples[] = {311, 832};
        const double levels[] = {37, -12};
        for (int i : {0, 1}) {
            Record& record = instrument_.record;
            record.VertCursorTime[i] = samples[i] * kPeriod;
            instrument_.cursorBars->MoveVertCursorHandle(i, record.VertCursorTime[i]);
            record.HorizCursorVolts[i] = levels[i];
            instrument_.cursorBars->MoveHorizCursorHandle(i, levels[i]);
        }
    }

    void ClickCursorBoxes() {
        for (int i : {0, 1}) {
            Tab<QCheckBox>(kCursTab, "VertCursorEn", i)->click();
            Tab<QCheckBox>(kCursTab, "HorizCursorEn", i)->click();
        }
    }

    void PutCrossHair(int x, int y) {
        auto* canvas = forms_.FFTForm->control<QWidget>("Canvas");
        QMouseEvent move(QEvent::MouseMove, QPointF(x, y), canvas->mapToGlobal(QPointF(x, y)), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(canvas, &move);
    }

    void SaveInto(const QDir& folder) {
        Tab<QRadioButton>(kMathTab, "FFTPlotType", 0)->setChecked(true);
        emit Tab<ButtonControl1>(kDataTab, "SaveDataButton")->Click();
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr) {
            qFatal("the data panel did not ask for a file");
        }
        dialog->setDirectory(folder);
        dialog->selectFile(QStringLiteral("CorvantineData"));
        static_cast<QDialog*>(dialog)->accept();
    }

  private:
    Instrument& instrument_;
    Camera& camera_;
    Forms& forms_;
};

void TakeSkins(Instrument& instrument, Photographer& photographer) {
    const auto* skins = instrument.forms.MainForm->control<QListWidget>("SkinColourList");
    for (int i = 0; i < skins->count(); ++i) {
        instrument.skins->SkinColourImage_Click();
        photographer.Face(QStringLiteral("skin_") + skins->item(instrument.skins->SkinIndex)->text());
    }
}

/// Channels 1 and 2 alone: the second repeats twice as often as the first.
void TakeSampling(Photographer& photographer) {
    for (int channel : {3, 4}) {
        emit photographer.Tab<ButtonControl1>(channel, "ChannelOnButton")->Click();
    }
    photographer.Press("SampleDotsButton");
    photographer.TurnTo("HorizZoomKnob", 15);
    photographer.Main<SliderControl1>("HorizPanSlider")->SetSliderValue(0.42F);
    photographer.Plot(QStringLiteral("dots"));
    photographer.Press("NormaliseButton");
    photographer.Press("SampleDotsButton");

    photographer.TurnTo("TimeBaseKnob", k100ns);
    Wait(kManyPasses);
    photographer.Plot(QStringLiteral("interleaved"));
    emit photographer.Tab<ButtonControl1>(2, "TrigChanButton")->Click();
    photographer.TurnTo("TriggerKnob", 73);
    Wait(kManyPasses);
    photographer.Plot(QStringLiteral("interleaved_wrong"));
    emit photographer.Tab<ButtonControl1>(1, "TrigChanButton")->Click();
    photographer.TurnTo("TriggerKnob", 0);
    photographer.TurnTo("TimeBaseKnob", k1us);
}

void TakeSpectra(Instrument& instrument, Photographer& photographer) {
    photographer.Tab<QComboBox>(kMathTab, "FFTWindowCombo")->setCurrentIndex(1);
    photographer.Tab<QRadioButton>(kMathTab, "FFTPlotType", 0)->setChecked(true);
    for (int channel : {1, 2}) {
        emit photographer.Tab<ButtonControl1>(channel, "FFTButton")->Click();
    }
    photographer.TurnTo("TimeBaseKnob", k20us);
    Wait(kSettle);
    instrument.forms.FFTForm->resize(720, 400);
    Wait(kSettle);
    photographer.PutCrossHair(82, 160);
    photographer.Window(QStringLiteral("spectrum"), *instrument.forms.FFTForm);
}

} // namespace

void TakeFastSignals(Instrument& instrument, Camera& camera, const QDir& saved) {
    Photographer photographer(instrument, camera);
    Forms& forms = instrument.forms;
    Wait(3000); // until auto mode has found the trigger
    photographer.ShowCursors();
    photographer.Face(QStringLiteral("face"));
    TakeSkins(instrument, photographer);
    photographer.Panel(QStringLiteral("panel_channel"), 1);
    photographer.Tab<QCheckBox>(kMathTab, "MathChannelEn", 1)->click();
    photographer.Tab<QComboBox>(kMathTab, "Math1Combo", 2)->setCurrentIndex(1);
    photographer.Panel(QStringLiteral("panel_math"), kMathTab);
    photographer.Panel(QStringLiteral("panel_data"), kDataTab);
    photographer.Panel(QStringLiteral("panel_cursors"), kCursTab);
    photographer.Panel(QStringLiteral("panel_horizontal"), kHorzTab);
    photographer.Panel(QStringLiteral("panel_about"), kAboutTab);
    photographer.Window(QStringLiteral("measurements"), *forms.StatsForm);

    photographer.Press("FullScreenButton");
    forms.FullScreenTimeForm->resize(840, 470);
    photographer.Window(QStringLiteral("large"), *forms.FullScreenTimeForm);
    photographer.Press("FullScreenButton");

    emit photographer.Tab<ButtonControl1>(1, "OffsetNullButton")->Click();
    photographer.Window(QStringLiteral("offset_null"), *forms.OffsetNullForm);
    forms.OffsetNullForm->hide();

    photographer.ClickCursorBoxes();
    photographer.Tab<QCheckBox>(kMathTab, "MathChannelEn", 1)->click();
    TakeSampling(photographer);
    TakeSpectra(instrument, photographer);
    photographer.Tab<QCheckBox>(kMathTab, "MathChannelEn", 1)->click();
    Wait(kSettle);
    photographer.SaveInto(saved);
}

void TakeSlowSignals(Instrument& instrument, Camera& camera) {
    Photographer photographer(instrument, camera);
    photographer.TurnTo("TimeBaseKnob", k100ms);
    Wait(4500); // into the second record
    photographer.Plot(QStringLiteral("roll"));
}
