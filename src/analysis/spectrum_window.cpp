#include "analysis/spectrum_window.h"

#include "controls/colour.h"
#include "controls/fonts.h"
#include "controls/form.h"
#include "controls/plot_window_design.h"
#include "controls/window_mover.h"
#include "display/plot_canvas.h"
#include "driver/driver.h"
#include "frame/record/record.h"

#include <QEvent>
#include <QFontMetrics>
#include <QLabel>
#include <QRadioButton>
#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr CrossHair kMiddle{(1 + kSpectrumBins - 1) / 2.0, 0};
constexpr QSize kLeast{520, 160}; ///< below it the stamp has no room beside the key
constexpr int kMargin = 4;
constexpr int kSmallest = 9; ///< pixels; what is smaller nobody reads

/// The form's font, then the narrow one in sizes down to the smallest that can be read.
std::vector<QFont> Fonts(const QFont& formFont) {
    std::vector<QFont> fonts{formFont};
    QFont narrow = InstrumentFont(QStringLiteral("Arial Narrow"), FontPoints(formFont));
    for (int pixels = narrow.pixelSize(); pixels >= kSmallest; --pixels) {
        narrow.setPixelSize(pixels);
        fonts.push_back(narrow);
    }
    return fonts;
}

void Put(QWidget* widget, const QRect& place) {
    if (widget->geometry() != place) {
        widget->setGeometry(place);
    }
}

} // namespace

SpectrumWindow::SpectrumWindow(Form& form, Record& record, Driver& driver, const QRadioButton& FFTPlotType0,
                               const Scales& scales, Calls calls)
    : form_(form), record_(record), driver_(driver), decibels_(FFTPlotType0), scales_(scales),
      calls_(std::move(calls)), canvas_(form.control<PlotCanvas>("Canvas")),
      FFTCursorLineVert(form.control<QWidget>("FFTCursorLineVert")),
      FFTCursorLineHoriz(form.control<QWidget>("FFTCursorLineHoriz")),
      TitleLabel(form.control<QLabel>("TitleLabel")),
      OtherInfoLabel(*form.control<QLabel>("OtherInfoLabel"), FittedLabel::Grow::Up),
      FFTStatsFreq(*form.control<QLabel>("FFTStatsFreq"), FittedLabel::Grow::Down),
      FFTStatsMag(*form.control<QLabel>("FFTStatsMag"), FittedLabel::Grow::Up), cross_(kMiddle) {
    connect(canvas_, &PlotCanvas::Pressed, this, [this](Qt::MouseButton button, double x, double y) {
        Canvas_MouseDown(button, {x, y});
    });
    connect(canvas_, &PlotCanvas::Moved, this, [this](Qt::MouseButtons, double x, double y) {
        Canvas_MouseMove({x, y});
    });
    connect(&form_, &Form::Resized, this, &SpectrumWindow::Form_Resize);
    new WindowMover(*canvas_);
    new WindowMover(form_);
    form_.installEventFilter(this);
    form_.setMinimumSize(kLeast);
    BeginLabels();
}

// Only the switches of the spectra close the window.
bool SpectrumWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &form_ && event->type() == QEvent::Close) {
        event->ignore();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

SpectrumPlot SpectrumWindow::Plot() {
    return {.Surface = [this]() -> Canvas& { return canvas_->Surface(); },
            .RefreshAppInfo = [this] { RefreshAppInfo(); },
            .Canvas_UpdateStats = [this] { Canvas_UpdateStats(); },
            .Visible = [this] { return calls_.MainMinimised() || form_.isVisible(); },
            .Show = [this] { form_.show(); },
            .Hide = [this] { form_.hide(); }};
}

void SpectrumWindow::RefreshAppInfo() {
    OtherInfoLabel.Show(calls_.MakeDataStamp());
}

void SpectrumWindow::Canvas_MouseDown(Qt::MouseButton button, CrossHair at) {
    if (button == Qt::RightButton) {
        if (!CursorLocked) {
            cross_ = at; // a touch or a pen presses where nothing has moved before
            Canvas_UpdateStats();
        }
        CursorLocked = !CursorLocked;
    }
}

void SpectrumWindow::Canvas_MouseMove(CrossHair at) {
    if (!CursorLocked) {
        cross_ = at;
    }
    Canvas_UpdateStats();
}

// By bin and level, so that they stay where they point whatever becomes of the window.
void SpectrumWindow::PlaceLines() {
    const QPointF at = canvas_->FromUser({cross_.x, cross_.y});
    const QRect canvas(QPoint(0, 0), canvas_->size());
    const auto place = [](double pixel, int span) {
        return static_cast<int>(std::clamp<double>(std::round(pixel), -1, span));
    };
    Put(FFTCursorLineVert, {place(at.x(), canvas.width()), 0, 1, canvas.height()});
    Put(FFTCursorLineHoriz, {0, place(at.y(), canvas.height()), canvas.width(), 1});
}

void SpectrumWindow::StretchCursorLines() {
    FFTCursorLineVert->resize(1, form_.height());
    FFTCursorLineHoriz->resize(form_.width(), 1);
}

std::span<const SpectrumReading> SpectrumWindow::Read() {
    const int bin = BinAt(cross_.x);
    std::size_t count = 0;
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        if (!record_.ChannelFFT[channel] || !record_.ChannelOn[channel]) {
            continue;
        }
        const ChannelScale* scale = scales_[channel];
        readings_[count++] = {.channel = channel,
                              .value = record_.SpectrumData(channel, bin),
                              .voltsPerDiv = scale == nullptr ? 0 : scale->GetVoltsPerDiv(),
                              .voltsPerStep = scale == nullptr ? 0 : scale->GetVoltsPerADCStep(),
                              .inUse = record_.ScopeInUse[channel],
                              .limited = channel <= kScopeChannels && record_.ChannelBWLimit[channel]};
    }
    return {readings_.data(), count};
}

void SpectrumWindow::Canvas_UpdateStats() {
    PlaceLines();
    const float nyquist = Nyquist(driver_.GetSamplePeriod(record_.Running, record_.HeldSamplePeriod));
    const bool decibels = decibels_.isChecked();
    const auto channels = Read();
    if (channels.size() != shown_) {
        shown_ = channels.size();
        BeginLabels();
    }
    WriteCursorReadOut(text_, cross_, nyquist, decibels, channels);
    if (FFTStatsFreq.Show(text_)) {
        TitleLabel->setVisible(FFTStatsFreq.InRoom() == 0);
    }
    WriteScaleReadOut(text_, nyquist, decibels, channels);
    FFTStatsMag.Show(text_);
}

void SpectrumWindow::BeginLabels() {
    const int line = QFontMetrics(form_.font()).height();
    const auto fonts = Fonts(form_.font());
    const int width = form_.width();
    const int besideTitle = TitleLabel->geometry().right() + 1;
    const auto row = [&](int left, int top) {
        return QRect(left, top, std::max(0, width - kMargin - left), line);
    };
    FFTStatsFreq.Begin({{row(besideTitle, 0), fonts}, {row(kMargin, 0), fonts}});
    const int below = canvas_->geometry().bottom() + 1;
    const int besideKey = form_.control<QWidget>("IdentFrame")->x() - kPlotWindowTextLeft;
    FFTStatsMag.Begin({{row(kPlotWindowTextLeft, below), fonts}});
    OtherInfoLabel.Begin({{QRect(kPlotWindowTextLeft, below + line, besideKey, line), fonts}});
}

void SpectrumWindow::Form_Resize() {
    const int line = QFontMetrics(form_.font()).height();
    const int height = form_.height() > 3 * line ? form_.height() - 3 * line : canvas_->height();
    canvas_->setGeometry(0, line, form_.width(), height);

    auto* clipboard = form_.control<QWidget>("ClipboardButton");
    clipboard->setGeometry(clipboard->x(), line + height, clipboard->width(), 2 * line);
    TitleLabel->setGeometry(kMargin, 0,
                            QFontMetrics(TitleLabel->font()).horizontalAdvance(TitleLabel->text()), line);
    PlaceLines();
    auto* key = form_.control<QWidget>("IdentFrame");
    key->resize(key->width(), line);
    key->move(canvas_->width() - key->width(), form_.height() - key->height());
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        auto* label = form_.control<QLabel>("Ch", channel);
        QPalette palette = label->palette();
        palette.setColor(QPalette::WindowText, ToQColor(record_.ChannelColour[channel]));
        label->setPalette(palette);
    }
    BeginLabels();
    calls_.PlotNow();
    RefreshAppInfo();
}
