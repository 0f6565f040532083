#include "display/widget_frame.h"

#include "controls/colour.h"
#include "frame/record/record.h"

#include <qcustomplot.h>

namespace {

constexpr double kTop = 126;
constexpr int kVertIntervals = 20;
constexpr int kHorizDivs = 30;
constexpr double kSamplePeriod = 1e-6;

} // namespace

WidgetFrame::WidgetFrame(const Record& record, QSize size) : plot_(std::make_unique<QCustomPlot>()) {
    plot_->setPlottingHints(QCP::phFastPolylines | QCP::phCacheLabels);
    plot_->setNotAntialiasedElements(QCP::aeAll);
    plot_->setBackground(QBrush(Qt::black));
    plot_->axisRect()->setAutoMargins(QCP::msNone);
    plot_->axisRect()->setMargins(QMargins());
    plot_->setViewport(QRect(QPoint(), size)); // a widget that was never shown takes no size
    plot_->setBufferDevicePixelRatio(1);
    AddGrid();
    AddTraces(record);
    AddMarkers(record);
}

WidgetFrame::~WidgetFrame() = default;

void WidgetFrame::Draw() {
    plot_->replot(QCustomPlot::rpImmediateRefresh);
}

void WidgetFrame::AddGrid() {
    for (QCPAxis* axis : {plot_->xAxis, plot_->yAxis}) {
        auto ticker = QSharedPointer<QCPAxisTickerFixed>::create();
        const bool horizontal = axis == plot_->xAxis;
        ticker->setTickStep(horizontal ? (kSampleDepth - 1.0) / kHorizDivs : 2 * kTop / kVertIntervals);
        axis->setTicker(ticker);
        axis->setTickLabels(false);
        axis->setTicks(false);
        axis->setSubTicks(false);
        axis->setBasePen(Qt::NoPen);
        axis->grid()->setPen(QPen(ToQColor(0xC00000), 1, Qt::DotLine));
        axis->grid()->setZeroLinePen(axis->grid()->pen());
    }
    plot_->xAxis->setRange(0, kSampleDepth - 1);
    plot_->yAxis->setRange(-kTop, kTop);
}

void WidgetFrame::AddTraces(const Record& record) {
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        QCPGraph* graph = plot_->addGraph();
        graph->setPen(QPen(ToQColor(record.ChannelColour[channel]), 2));
        graph->setAdaptiveSampling(true);
        QVector<double> x;
        QVector<double> y;
        for (int i = 0; i < kSampleDepth; ++i) {
            x.push_back(i);
            y.push_back(record.SampleData(channel, i));
        }
        graph->setData(x, y, true);
    }
}

void WidgetFrame::AddLine(double x1, double y1, double x2, double y2) {
    auto* line = new QCPItemLine(plot_.get());
    line->start->setCoords(x1, y1);
    line->end->setCoords(x2, y2);
    line->setPen(QPen(Qt::white, 1));
}

void WidgetFrame::AddMarkers(const Record& record) {
    for (int i = 0; i < kCursors; ++i) {
        const double x = record.VertCursorTime[i] / kSamplePeriod;
        AddLine(x, -kTop, x, kTop);
        AddLine(0, record.HorizCursorVolts[i], kSampleDepth - 1, record.HorizCursorVolts[i]);
        auto* text = new QCPItemText(plot_.get());
        text->position->setCoords(x, kTop - 6 * i);
        text->setPositionAlignment(Qt::AlignLeft | Qt::AlignTop);
        text->setColor(Qt::white);
        text->setText(QStringLiteral("t%1@ 400.000us → t2: 1.200ms").arg(i + 1));
    }
    constexpr double kStem = 40; // samples; about as long as the plotter's markers
    AddLine(kSampleDepth - kStem, 30, kSampleDepth, 30);
    AddLine(kSampleDepth - kStem, 27, kSampleDepth - kStem, 33);
    AddLine(1500, -kTop, 1500 + kStem, 5 - kTop);
    AddLine(1500, -kTop, 1500 - kStem, 5 - kTop);
}
