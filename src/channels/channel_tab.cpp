#include "channels/channel_tab.h"

#include "channels/volts_table.h"
#include "controls/button_control.h"
#include "controls/colour.h"
#include "controls/form.h"
#include "controls/knob_control.h"
#include "controls/number_format.h"
#include "controls/panel_design.h"
#include "controls/picture.h"
#include "display/canvas.h"
#include "frame/helpers/helpers.h"
#include "frame/record/channel_sets.h"
#include "frame/record/record.h"

#include <QLabel>
#include <QRadioButton>
#include <QTimer>
#include <utility>

namespace {

constexpr Colour kBlack = 0;
constexpr int kDC = 1;  ///< index of Coupling
constexpr int kGND = 2; ///< index of Coupling
constexpr int kX10 = 1; ///< index of ProbeType

enum LEDMode : int { kNormalLED = 1, kIdentifiedLED = 2, kOtherLED = 3 };

template <class T, std::size_t N> std::array<T*, N> ControlArray(const Form& form, const char* name) {
    std::array<T*, N> controls{};
    for (std::size_t i = 0; i < N; ++i) {
        controls[i] = form.control<T>(name, static_cast<int>(i));
    }
    return controls;
}

} // namespace

ChannelTab::ChannelTab(Form& form, Record& record, Driver& driver, SettingsStore& settings, QTimer& IDTimer,
                       Canvas& MainPlotCanvas, Calls calls)
    : form_(form), record_(record), driver_(driver), settings_(settings), IDTimer_(IDTimer),
      canvas_(MainPlotCanvas), calls_(std::move(calls)), VoltsKnob(form.control<KnobControl1>("VoltsKnob")),
      OffsetKnob(form.control<KnobControl1>("OffsetKnob")),
      Coupling(ControlArray<QRadioButton, kCouplings>(form, "Coupling")),
      ProbeType(ControlArray<QRadioButton, kProbes>(form, "ProbeType")),
      ChannelOnButton(form.control<ButtonControl1>("ChannelOnButton")),
      InvertButton(form.control<ButtonControl1>("InvertButton")),
      BWLimitButton(form.control<ButtonControl1>("BWLimitButton")),
      FFTButton(form.control<ButtonControl1>("FFTButton")),
      TrigChanButton(form.control<ButtonControl1>("TrigChanButton")),
      OffsetNullButton(form.control<ButtonControl1>("OffsetNullButton")),
      CalSourceButton(form.control<ButtonControl1>("CalSourceButton")),
      IDButton(form.control<ButtonControl1>("IDButton")), Image1(form.control<Picture>("Image1")),
      TabName(form.control<QLabel>("TabName")),
      TriggerChannelLine(form.control<QWidget>("TriggerChannelLine")), heldTrace_(kSampleRow + 1),
      rescaledTrace_(kSampleRow + 1) {}

void ChannelTab::Connect() {
    connect(VoltsKnob, &KnobControl1::Change, this, &ChannelTab::VoltsKnob_Change);
    connect(VoltsKnob, &KnobControl1::KnobXlateValue, this, &ChannelTab::VoltsKnob_KnobXlateValue);
    connect(OffsetKnob, &KnobControl1::Change, this, &ChannelTab::OffsetKnob_Change);
    connect(OffsetKnob, &KnobControl1::KnobXlateValue, this, &ChannelTab::OffsetKnob_KnobXlateValue);
    for (int i = 0; i < kCouplings; ++i) {
        connect(Coupling[static_cast<std::size_t>(i)], &QRadioButton::clicked, this,
                [this, i] { Coupling_Click(i); });
    }
    for (int i = 0; i < kProbes; ++i) {
        connect(ProbeType[static_cast<std::size_t>(i)], &QRadioButton::clicked, this,
                [this, i] { ProbeType_Click(i); });
    }
    connect(ChannelOnButton, &ButtonControl1::Click, this, &ChannelTab::ChannelOnButton_Click);
    connect(InvertButton, &ButtonControl1::Click, this, &ChannelTab::InvertButton_Click);
    connect(BWLimitButton, &ButtonControl1::Click, this, &ChannelTab::BWLimitButton_Click);
    connect(FFTButton, &ButtonControl1::Click, this, &ChannelTab::FFTButton_Click);
    connect(TrigChanButton, &ButtonControl1::Click, this, &ChannelTab::TrigChanButton_Click);
    connect(OffsetNullButton, &ButtonControl1::Click, this, &ChannelTab::OffsetNullButton_Click);
    connect(CalSourceButton, &ButtonControl1::Click, this, &ChannelTab::CalSourceButton_Click);
    connect(IDButton, &ButtonControl1::Click, this, &ChannelTab::IDButton_Click);
    connect(Image1, &Picture::MouseDown, this, &ChannelTab::Image1_MouseDown);
    connect(Image1, &Picture::DblClick, this, &ChannelTab::Image1_DblClick);
}

int ChannelTab::Channel() const {
    return form_.Tag.toInt();
}

float ChannelTab::GetVoltsPerDiv() const {
    return KnobToVoltsPerDiv(static_cast<float>(VoltsKnob->KnobValue()), ProbeType[kX10]->isChecked());
}

float ChannelTab::GetVoltsPerADCStep() const {
    return VoltsPerADCStep(GetVoltsPerDiv());
}

float ChannelTab::GetOffset() const {
    return static_cast<float>(OffsetKnob->KnobValue());
}

int ChannelTab::GetRange() const {
    return VoltsKnob->KnobValue();
}

void ChannelTab::Form_Load() {
    TriggerChannelLine->hide();
}

void ChannelTab::SetUpFrontEnd() {
    // The knobs of a panel that was never shown are laid out one day all the same, and then tell a change.
    if (!record_.ScopeInUse[Channel()]) {
        return;
    }
    driver_.SetUpFrontEnd(Channel(), VoltsKnob->KnobValue(), Coupling[kDC]->isChecked(),
                          Coupling[kGND]->isChecked());
}

void ChannelTab::VoltsKnob_Change() {
    UpdateNullDialog();
    SetUpFrontEnd();
    ApplyOffset();
    calls_.RedrawSettings();
    calls_.PlotNow();
    // Each plot wipes the canvas, so the warning waits for the last one.
    WarnOfResolution();
}

void ChannelTab::VoltsKnob_KnobXlateValue(float value, QString& text) {
    text =
        ShortestText(KnobToVoltsPerDiv(value, ProbeType[kX10]->isChecked())) + VoltsKnob->KnobValueFormat();
}

void ChannelTab::OffsetKnob_Change() {
    ApplyOffset();
    WarnOfResolution();
}

void ChannelTab::ApplyOffset() {
    const float offset = GetOffset();
    if (!record_.ScopeInUse[Channel()]) {
        return;
    }
    driver_.SetOffset(Channel(), OffsetPercent(offset));
    if (!record_.Running && !record_.PlotInhibit) {
        RescaleHeldTrace(offset);
    }
    calls_.PlotNow();
}

void ChannelTab::RescaleHeldTrace(float offset) {
    const int ch = Channel();
    const int positions = record_.HeldSampleData.positions();
    for (int i = 0; i < positions; ++i) {
        heldTrace_[static_cast<std::size_t>(i)] = record_.HeldSampleData(ch, i);
    }
    driver_.ReScaleSampleData(heldTrace_.data(), rescaledTrace_.data(), record_.SampleDepth,
                              OffsetPercent(record_.HeldOffset[ch]), OffsetPercent(offset),
                              record_.HeldVoltsPerDiv[ch], GetVoltsPerDiv());
    // What a cursor at the very end reads, one step past the last sample.
    const auto depth = static_cast<std::size_t>(record_.SampleDepth);
    if (depth > 0 && depth < rescaledTrace_.size()) {
        rescaledTrace_[depth] = rescaledTrace_[depth - 1];
    }
    for (int i = 0; i < positions; ++i) {
        record_.SampleData(ch, i) = rescaledTrace_[static_cast<std::size_t>(i)];
    }
}

void ChannelTab::WarnOfResolution() {
    if (record_.Running || record_.PlotInhibit || !(record_.HeldVoltsPerDiv[Channel()] > GetVoltsPerDiv())) {
        return;
    }
    canvas_.SetCurrent(0, 0);
    canvas_.Print(QStringLiteral("WARNING: CH%1 VOLTAGE AXIS RESOLUTION ZOOM (plot will look noisey) !")
                      .arg(Channel()));
}

void ChannelTab::OffsetKnob_KnobXlateValue(float value, QString& text) {
    const double span = OffsetKnob->KnobMax() - OffsetKnob->KnobMin();
    text = ShortestText(2 * static_cast<double>(value) / span);
}

void ChannelTab::Coupling_Click(int) {
    SetUpFrontEnd();
}

void ChannelTab::ProbeType_Click(int) {
    CalSourceOff();
    UpdateNullDialog();
    VoltsKnob->RefreshValue();
    calls_.RedrawSettings();
}

void ChannelTab::ChannelOnButton_Click() {
    const int ch = Channel();
    const bool on = record_.ChannelOn[ch] = !record_.ChannelOn[ch];
    SetButtonFill(ChannelOnButton, on, record_.ChannelColour[ch], kSwitchOff);
    SetButtonText(ChannelOnButton, on, QStringLiteral("on"), QStringLiteral("off"));
    SetOnOffColours(TabName, true, kSwitchOff, record_.ChannelColour[ch], kBlack, kBlack);
    if (on) {
        PaintTabName();
    }
    calls_.SetStatsVisible(ch, on);
    calls_.RedrawSettings();
    calls_.PlotNow();
}

void ChannelTab::PaintTabName() {
    const Colour colour = record_.ChannelColour[Channel()];
    SetOnOffColours(TabName, record_.ChannelInvert[Channel()], colour, kBlack, kBlack, colour);
}

void ChannelTab::InvertButton_Click() {
    const int ch = Channel();
    record_.ChannelInvert[ch] = !record_.ChannelInvert[ch];
    SetButtonFill(InvertButton, record_.ChannelInvert[ch], kAttention, kSwitchOff);
    PaintTabName();
    calls_.RedrawSettings();
    calls_.PlotNow();
}

void ChannelTab::BWLimitButton_Click() {
    const int ch = Channel();
    record_.ChannelBWLimit[ch] = !record_.ChannelBWLimit[ch];
    SetButtonFill(BWLimitButton, record_.ChannelBWLimit[ch], kAttention, kSwitchOff);
    calls_.RedrawSettings();
    record_.TracesStale = true;
    calls_.PlotNow();
}

void ChannelTab::FFTButton_Click() {
    const int ch = Channel();
    record_.ChannelFFT[ch] = !record_.ChannelFFT[ch];
    SetButtonFill(FFTButton, record_.ChannelFFT[ch], kAttention, kSwitchOff);
    calls_.PlotNow();
}

void ChannelTab::TrigChanButton_Click() {
    int channel = Channel();
    calls_.TrigChanButton_Click(channel);
}

void ChannelTab::OffsetNullButton_Click() {
    UpdateNullDialog();
    calls_.ShowNullDialog();
    calls_.PlotNow();
}

void ChannelTab::UpdateNullDialog() {
    calls_.PointNullDialog(Channel(), VoltsKnob->KnobValue());
}

void ChannelTab::CalSourceButton_Click() {
    const int ch = Channel();
    record_.ChannelCalSource[ch] = record_.ChannelCalSource[ch] == 0 ? 1 : 0;
    SetButtonFill(CalSourceButton, record_.ChannelCalSource[ch] == 1, kAttention, kSwitchOff);
    driver_.SetCalSource(ch, record_.ChannelCalSource[ch]);
}

void ChannelTab::CalSourceOff() {
    record_.ChannelCalSource[Channel()] = -1;
    CalSourceButton_Click();
}

void ChannelTab::IDButton_Click() {
    // A second tab's button is grey, yet with a blink under way it stops that blink; the first stays red.
    const bool red = IDButton->ButtonFillColor() == ToQColor(kAttention);
    if (!red && !record_.IDActive) {
        record_.IDActive = true;
        IDButton->SetButtonFillColor(ToQColor(kAttention));
        SetLEDModes(kOtherLED);
        record_.IDChannel = Channel();
        driver_.SetLEDMode(Channel(), kIdentifiedLED);
        IDTimer_.start();
    } else {
        SetLEDModes(kNormalLED);
        IDTimer_.stop();
        record_.IDActive = false;
        IDButton->SetButtonFillColor(ToQColor(kSwitchOff));
    }
}

void ChannelTab::SetLEDModes(int mode) {
    ForScopesInUse(record_, [&](int ch) { driver_.SetLEDMode(ch, mode); });
}

void ChannelTab::Image1_MouseDown(Qt::MouseButton button) {
    CalSourceOff();
    calls_.HideNullDialog();
    if (button == Qt::LeftButton) {
        record_.TabOpen[Channel()] = !record_.TabOpen[Channel()];
        calls_.RaiseMainAndStats();
    } else {
        calls_.RaiseMainAndStats();
        ChannelOnButton_Click();
    }
}

void ChannelTab::Image1_DblClick() {
    Image1_MouseDown(Qt::LeftButton);
}
