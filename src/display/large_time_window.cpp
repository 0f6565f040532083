#include "display/large_time_window.h"

#include "controls/button_control.h"
#include "controls/colour.h"
#include "controls/form.h"
#include "controls/knob_control.h"
#include "controls/window_mover.h"
#include "display/large_time_design.h"
#include "display/plot_canvas.h"
#include "frame/record/channel_sets.h"
#include "frame/record/record.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QSignalBlocker>
#include <utility>

LargeTimeWindow::Controls LargeTimeWindow::Controls::Of(const Form& main, const ChannelForms& channels) {
    Controls controls{.TimeBaseKnob = main.control<KnobControl1>("TimeBaseKnob"), .VoltsKnob = {}};
    for (int channel = 1; channel <= kScopeChannels; ++channel) {
        controls.VoltsKnob[channel] = channels[channel]->control<KnobControl1>("VoltsKnob");
    }
    return controls;
}

LargeTimeWindow::LargeTimeWindow(Form& form, Record& record, const Controls& controls, Calls calls)
    : form_(form), record_(record), controls_(controls), calls_(std::move(calls)) {
    auto* canvas = form_.control<PlotCanvas>("Canvas");
    connect(canvas, &PlotCanvas::Pressed, this, [this](Qt::MouseButton button) {
        if (button == Qt::RightButton) {
            form_.lower();
        }
    });
    new WindowMover(*canvas);
    connect(canvas, &PlotCanvas::DoubleClicked, this, &LargeTimeWindow::Canvas_DblClick);
    connect(&form_, &Form::Resized, this, &LargeTimeWindow::Form_Resize);
    // The change of timebase asks for its new text before the knob has it.
    connect(controls_.TimeBaseKnob, &KnobControl1::Change, this, &LargeTimeWindow::RedrawSettings);
}

QString LargeTimeWindow::Settings() const {
    QString text =
        QStringLiteral("HORZ:") + controls_.TimeBaseKnob->KnobXlatedValue() + QStringLiteral(" VERT:");
    ForAcquiringScopes(record_, [&](int ch) {
        text += QStringLiteral(" CH%1:").arg(ch) + controls_.VoltsKnob[ch]->KnobXlatedValue();
        if (record_.ChannelBWLimit[ch]) {
            text += QStringLiteral("(bw)");
        }
    });
    return text;
}

void LargeTimeWindow::RedrawSettings() {
    form_.control<QLabel>("ScopeSettingsLabel")->setText(Settings());
    RefreshAppInfo();
}

void LargeTimeWindow::RefreshAppInfo() {
    form_.control<QLabel>("OtherInfoLabel")->setText(calls_.MakeDataStamp());
}

void LargeTimeWindow::Canvas_DblClick() {
    const QSize screen = QGuiApplication::primaryScreen()->size();
    form_.setGeometry(0, 0, screen.width(), static_cast<int>(kLargeTimeHeight * screen.height()));
    Form_Resize();
}

void LargeTimeWindow::Form_Resize() {
    const int line = QFontMetrics(form_.font()).height();
    auto* canvas = form_.control<PlotCanvas>("Canvas");
    const int height = form_.height() > 2 * line ? form_.height() - 2 * line : canvas->height();
    {
        const QSignalBlocker quiet(canvas); // it asks for a plot, which comes at the end
        canvas->setGeometry(0, 0, form_.width(), height);
    }
    const auto toTop = [&](const char* name, int top) {
        auto* widget = form_.control<QWidget>(name);
        widget->move(widget->x(), top);
    };
    toTop("ScopeSettingsLabel", height);
    toTop("OtherInfoLabel", height + line);
    toTop("ClipboardButton", height);
    auto* clipboard = form_.control<QWidget>("ClipboardButton");
    clipboard->resize(clipboard->width(), 2 * line); // its lower rim stays in the window
    auto* key = form_.control<QWidget>("IdentFrame");
    key->move(canvas->width() - key->width(), form_.height() - key->height());
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        auto* label = form_.control<QLabel>("Ch", channel);
        QPalette palette = label->palette();
        palette.setColor(QPalette::WindowText, ToQColor(record_.ChannelColour[channel]));
        label->setPalette(palette);
    }
    RedrawSettings();
    calls_.PlotNow();
}
