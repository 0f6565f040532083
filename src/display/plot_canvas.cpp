#include "display/plot_canvas.h"

#include "controls/colour.h"
#include "controls/design.h"
#include "display/far_away.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace {

constexpr Colour kTriggerLineColour = 0x6060FF; // apart from the white level cursors
constexpr const char* kLabelLetters = "ABCDRS";

int Place(double pixels) {
    return std::isnan(pixels) ? -kFarAway
                              : static_cast<int>(std::clamp<double>(std::round(pixels), -kFarAway, kFarAway));
}

QSize RasterSize(const QWidget& widget) {
    const double ratio = widget.devicePixelRatioF();
    return {static_cast<int>(std::ceil(widget.width() * ratio)),
            static_cast<int>(std::ceil(widget.height() * ratio))};
}

/// Whether it is another value than it was.
template <class T> bool Put(T& field, const T& value) {
    const bool changed = field != value;
    if (changed) {
        field = value;
    }
    return changed;
}

void Paint(QWidget* widget, QPalette::ColorRole role, Colour colour) {
    QPalette palette = widget->palette();
    palette.setColor(role, ToQColor(colour));
    widget->setPalette(palette);
}

} // namespace

const Form::CanvasMaker kPlotCanvas = [](QWidget* parent) { return new PlotCanvas(parent); };

PlotCanvas::PlotCanvas(QWidget* parent) : QWidget(parent), raster_(1, 1), TriggerLine_(new QFrame(this)) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    raster_.OnTouch([this] { update(); });
    TriggerLine_->setObjectName(QStringLiteral("TriggerLine"));
    TriggerLine_->setAutoFillBackground(true);
    TriggerLine_->setAttribute(Qt::WA_TransparentForMouseEvents);
    Paint(TriggerLine_, QPalette::Window, kTriggerLineColour);
    TriggerLine_->resize(0, 1);
    TriggerLine_->hide();
    for (int channel = 1; channel <= kAllChannels; ++channel) {
        labels_[channel].caption = QLatin1Char(kLabelLetters[channel - 1]);
    }
    FitLabels();
    FitRaster();
}

void PlotCanvas::FitRaster() {
    const QSize size = RasterSize(*this);
    if (size.width() != raster_.width() || size.height() != raster_.height() ||
        devicePixelRatioF() != raster_.PixelRatio()) {
        raster_.Resize(size.width(), size.height(), devicePixelRatioF());
        ForgetInk();
        emit Resized();
    }
}

/// A label is as large as its largest letter, so that a new caption changes no size.
void PlotCanvas::FitLabels() {
    raster_.SetFont(font());
    const QFontMetrics metrics(font());
    labelSize_ = {metrics.maxWidth(), metrics.height()};
    labelAscent_ = metrics.ascent();
    ForgetInk();
}

void PlotCanvas::ForgetInk() {
    for (GroundLabel& label : labels_) {
        label.ink = {};
    }
    update();
}

void PlotCanvas::resizeEvent(QResizeEvent*) {
    FitRaster();
}

void PlotCanvas::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange) {
        FitLabels();
    }
    QWidget::changeEvent(event);
}

void PlotCanvas::paintEvent(QPaintEvent* event) {
    if (devicePixelRatioF() != raster_.PixelRatio() && !fitPending_) {
        // The window came to another screen. What is plotted then takes time and may call anybody: not in
        // here.
        fitPending_ = true;
        QMetaObject::invokeMethod(
            this,
            [this] {
                fitPending_ = false;
                FitRaster();
            },
            Qt::QueuedConnection);
    }
    const double ratio = raster_.PixelRatio();
    QPainter painter(this);
    painter.scale(1 / ratio, 1 / ratio); // in device pixels, so that a raster pixel is one of the screen
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    const QRect exposed = event->rect();
    const QRect device(QPoint(static_cast<int>(std::floor(exposed.left() * ratio)),
                              static_cast<int>(std::floor(exposed.top() * ratio))),
                       QPoint(static_cast<int>(std::ceil((exposed.right() + 1) * ratio)),
                              static_cast<int>(std::ceil((exposed.bottom() + 1) * ratio))));
    const QRect part = device & raster_.Image().rect();
    painter.drawImage(part.topLeft(), raster_.Image(), part);
    painter.resetTransform();
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    PaintLabels(painter);
}

/// A label keeps its picture: to lay out a text takes longer than all else in a paint.
void PlotCanvas::PaintLabels(QPainter& painter) {
    for (GroundLabel& label : labels_) {
        if (label.visible) {
            if (label.ink.isNull()) {
                label.ink = InkOf(label);
            }
            painter.drawImage(label.place, label.ink);
        }
    }
}

QImage PlotCanvas::InkOf(const GroundLabel& label) const {
    const double ratio = raster_.PixelRatio();
    QImage ink((QSizeF(labelSize_) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    ink.setDevicePixelRatio(ratio);
    ink.fill(Qt::transparent);
    QPainter painter(&ink);
    painter.setFont(font());
    painter.setPen(ToQColor(label.colour));
    painter.drawText(QPointF(0, labelAscent_), label.caption);
    return ink;
}

QPointF PlotCanvas::ToUser(QPointF position) const {
    const double ratio = raster_.PixelRatio();
    return {raster_.Map().UserX(position.x() * ratio), raster_.Map().UserY(position.y() * ratio)};
}

QPointF PlotCanvas::FromUser(QPointF position) const {
    const double ratio = raster_.PixelRatio();
    return {raster_.Map().X(position.x()) / ratio, raster_.Map().Y(position.y()) / ratio};
}

void PlotCanvas::mousePressEvent(QMouseEvent* event) {
    const QPointF user = ToUser(event->position());
    emit Pressed(event->button(), user.x(), user.y());
}

void PlotCanvas::mouseMoveEvent(QMouseEvent* event) {
    const QPointF user = ToUser(event->position());
    emit Moved(event->buttons(), user.x(), user.y());
}

void PlotCanvas::mouseDoubleClickEvent(QMouseEvent* event) {
    const QPointF user = ToUser(event->position());
    emit DoubleClicked(user.x(), user.y());
}

/// Where the label was and where it is are painted anew, if anything changed.
template <class Change> void PlotCanvas::ChangeLabel(int channel, Change change) {
    const GroundLabel& label = labels_[channel];
    const bool wasVisible = label.visible;
    const QRect before = LabelRect(channel);
    if (!change(labels_[channel])) {
        return;
    }
    if (wasVisible) {
        update(before);
    }
    if (label.visible) {
        update(LabelRect(channel));
    }
}

void PlotCanvas::GroundLabelLeft(int channel, double x) {
    const int left = Place(FromUser({x, 0}).x());
    ChangeLabel(channel, [left](GroundLabel& label) { return Put(label.place.rx(), left); });
}

void PlotCanvas::GroundLabelTop(int channel, double y) {
    const int top = Place(FromUser({0, y}).y());
    ChangeLabel(channel, [top](GroundLabel& label) { return Put(label.place.ry(), top); });
}

void PlotCanvas::GroundLabelVisible(int channel, bool visible) {
    ChangeLabel(channel, [visible](GroundLabel& label) { return Put(label.visible, visible); });
}

void PlotCanvas::GroundLabelCaption(int channel, QStringView caption) {
    ChangeLabel(channel, [caption](GroundLabel& label) {
        const bool changed = label.caption != caption;
        if (changed) {
            label.caption = caption.toString();
            label.ink = {};
        }
        return changed;
    });
}

double PlotCanvas::GroundLabelHeight(int /*channel*/) const {
    return labelSize_.height() * raster_.PixelRatio() / std::abs(raster_.Map().PixelsPerUnitY());
}

void PlotCanvas::GroundLabelColour(int channel, Colour colour) {
    ChangeLabel(channel, [colour](GroundLabel& label) {
        const bool changed = Put(label.colour, colour);
        if (changed) {
            label.ink = {};
        }
        return changed;
    });
}

void PlotCanvas::TriggerLine(double x1, double y1, double x2, double y2) {
    const QPointF from = FromUser({x1, y1});
    const QPointF to = FromUser({x2, y2});
    const int left = Place(std::min(from.x(), to.x()));
    const int right = Place(std::max(from.x(), to.x()));
    const QRect place(left, Place(from.y()), std::max(1, right - left + 1), 1);
    if (TriggerLine_->geometry() != place) {
        TriggerLine_->setGeometry(place);
    }
}
