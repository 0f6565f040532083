#include "analysis/measurement_window.h"

#include "analysis/measurement.h"
#include "analysis/measurement_layout.h"
#include "controls/colour.h"
#include "controls/fonts.h"
#include "controls/form.h"
#include "controls/number_format.h"
#include "controls/picture.h"
#include "controls/window_mover.h"
#include "frame/helpers/helpers.h"
#include "frame/record/record.h"
#include "frame/record/steps.h"

#include <QCheckBox>
#include <QFrame>
#include <QLabel>
#include <algorithm>
#include <cmath>

namespace {

// Pixels of the window, under the headings of its table.
constexpr int kLabelHeight = 13;
struct Span {
    int left, width;
};

QFrame* MakePanel(QWidget* parent, const char* name, int channel, QRect place, Colour colour) {
    auto* panel = new QFrame(parent);
    panel->setObjectName(QString::fromLatin1(name) + QString::number(channel));
    panel->setFrameStyle(QFrame::Box | QFrame::Plain);
    panel->setGeometry(place);
    QPalette palette = panel->palette();
    palette.setColor(QPalette::Window, ToQColor(colour));
    palette.setColor(QPalette::WindowText, Qt::black);
    panel->setPalette(palette);
    panel->setAutoFillBackground(true);
    panel->show();
    return panel;
}

QLabel* MakeFigure(QWidget* panel, int number, Span span) {
    auto* label = new QLabel(panel);
    label->setTextFormat(Qt::PlainText);
    label->setObjectName(QStringLiteral("%1_%2").arg(panel->objectName()).arg(number));
    label->setAlignment(Qt::AlignCenter);
    label->setFont(InstrumentFont(QStringLiteral("MS Sans Serif"), 8));
    // Two pixels down, so that the text stands in the middle of the bordered row.
    label->setGeometry(span.left, 2, span.width, kLabelHeight);
    return label;
}

void Show(QLabel* label, const QString& text) {
    if (label->text() != text) {
        label->setText(text);
    }
}

} // namespace

MeasurementWindow::Controls MeasurementWindow::Controls::Of(const Form& cursors) {
    Controls controls;
    for (int cursor = 0; cursor < kCursors; ++cursor) {
        controls.VertCursorEn[cursor] = cursors.control<QCheckBox>("VertCursorEn", cursor);
        controls.HorizCursorEn[cursor] = cursors.control<QCheckBox>("HorizCursorEn", cursor);
    }
    return controls;
}

MeasurementWindow::MeasurementWindow(Form& form, Record& record, Driver& driver, const Scales& scales,
                                     const Controls& controls)
    : form_(form), record_(record), driver_(driver), scales_(scales), controls_(controls) {
    // The window is moved by its headings and by what shows of its ground.
    new WindowMover(form_);
    connect(&form_, &Form::Pressed, this, [this] { form_.raise(); });
    for (Picture* heading : form_.findChildren<Picture*>()) {
        new WindowMover(*heading);
        connect(heading, &Picture::MouseDown, this, [this] { form_.raise(); });
    }
}

void MeasurementWindow::Build() {
    int place = 0;
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        if (record_.ScopeInUse[channel]) {
            BuildRow(channel, place++);
        }
    }
    form_.resize(form_.width(), record_.NumScopesFound * kMeasurementRowHeight + kMeasurementRoomBesideRows);
}

void MeasurementWindow::BuildRow(int channel, int place) {
    Row& row = rows_[channel];
    const int top = kMeasurementFirstRow + place * kMeasurementRowHeight;
    const Colour colour = record_.ChannelColour[channel];
    row.ChStats =
        MakePanel(&form_, "ChStats", channel,
                  {kMeasurementFiguresLeft, top, kMeasurementFiguresWidth, kMeasurementRowHeight}, colour);
    for (int i = 1; i <= kFigures; ++i) {
        const MeasurementColumn& column = kMeasurementColumns[static_cast<std::size_t>(i - 1)];
        row.figures[i] = MakeFigure(row.ChStats, i, {column.figureLeft, column.figureWidth});
    }
    row.CursStats = MakePanel(
        &form_, "CursStats", channel,
        {kMeasurementCursorsLeft, top, kMeasurementRowsEnd - kMeasurementCursorsLeft, kMeasurementRowHeight},
        colour);
    for (int i = 1; i <= kCursorFigures; ++i) {
        row.cursors[i] =
            MakeFigure(row.CursStats, i, {(i - 1) * kMeasurementCursorWidth, kMeasurementCursorWidth});
    }
    row.figures[1]->setText(channel <= kScopeChannels ? QString::number(channel)
                                                      : QStringLiteral("M%1").arg(channel - kScopeChannels));
}

void MeasurementWindow::SetVisible(int channel, bool visible) {
    if (rows_[channel].ChStats != nullptr) {
        rows_[channel].ChStats->setVisible(visible);
        rows_[channel].CursStats->setVisible(visible);
    }
}

// The test of the stack comes after the rows were built. What is left moves up.
void MeasurementWindow::DropRows() {
    int place = 0;
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        Row& row = rows_[channel];
        if (row.ChStats == nullptr) {
            continue;
        }
        if (record_.ScopeInUse[channel]) {
            const int top = kMeasurementFirstRow + place++ * kMeasurementRowHeight;
            if (row.ChStats->y() != top) {
                row.ChStats->move(row.ChStats->x(), top);
                row.CursStats->move(row.CursStats->x(), top);
            }
        } else {
            delete row.ChStats;
            delete row.CursStats;
            row = {};
        }
    }
}

void MeasurementWindow::UpdateStats() {
    DropRows();
    const SamplePeriod period = driver_.ReadSamplePeriod(record_.Running, record_.HeldSamplePeriod);
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        if (rows_[channel].ChStats != nullptr) {
            UpdateRow(channel, period);
        }
    }
}

void MeasurementWindow::UpdateRow(int channel, const SamplePeriod& period) {
    const ChannelScale* volts = scales_[channel];
    const float scale = volts == nullptr ? 0 : volts->GetVoltsPerADCStep();
    const double ground = StepsOfPercent(static_cast<double>(record_.ChannelOffsetPercent[channel]));
    const Colour colour = record_.ChannelColour[channel];
    Row& row = rows_[channel];
    SetOnOffColours(row.figures[1], record_.ChannelInvert[channel], colour, 0, 0, colour);

    const RoundedRecord samples(record_.SampleData.row(channel), ChannelTable::stride());
    const Levels levels = MeasureLevels(samples);
    record_.OffsetNullMeasured[channel] = static_cast<float>(levels.mean - ground);
    record_.OffsetNullActive = true;

    const bool limited = channel <= kScopeChannels && record_.ChannelBWLimit[channel];
    Show(row.figures[2], ShortestText(volts == nullptr ? 0.0F : volts->GetVoltsPerDiv()) +
                             (limited ? QStringLiteral("bw") : QString()));
    Show(row.figures[3], AverageText(levels, ground, scale));
    Show(row.figures[4], PeakToPeakText(levels, scale));
    // The one figure that shows what the driver says, however odd.
    Show(row.figures[5],
         FrequencyText(CrossingSpacing(samples, levels.mean), static_cast<double>(period.reported)));
    UpdateCursors(channel, scale, ground, static_cast<double>(period.usable));
}

void MeasurementWindow::UpdateCursors(int channel, float scale, double ground, double period) {
    static const QString kBlank = QStringLiteral(" ");
    Row& row = rows_[channel];
    for (int j = 0; j < kCursors; ++j) {
        const bool level = controls_.HorizCursorEn[j]->isChecked();
        Show(row.cursors[1 + j],
             level ? SignedVolts(static_cast<double>(scale) * (record_.HorizCursorVolts[j] - ground))
                   : kBlank);
        QString text = kBlank;
        if (controls_.VertCursorEn[j]->isChecked()) {
            const double at = std::nearbyint(record_.VertCursorTime[j] / period);
            const int x = static_cast<int>(std::clamp(std::isnan(at) ? 0.0 : at, 0.0, double{kSampleDepth}));
            text = SignedVolts(static_cast<double>(scale) *
                               (static_cast<double>(record_.SampleData(channel, x)) - ground));
        }
        Show(row.cursors[1 + kCursors + j], text);
    }
}
