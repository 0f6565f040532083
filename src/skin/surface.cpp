#include "skin/surface.h"

#include "controls/form.h"
#include "controls/picture.h"
#include "controls/window_mover.h"
#include "skin/dib_section_region.h"
#include "skin/fine_outline.h"
#include "skin/instrument_icon.h"
#include "skin/native_shape.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QWindow>
#include <algorithm>

namespace {

const auto kTakeOutline = static_cast<QEvent::Type>(QEvent::registerEventType());

} // namespace

Surface::Surface(QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint | Qt::WindowMinimizeButtonHint |
                          Qt::WindowSystemMenuHint) {
    setObjectName(QStringLiteral("Surface"));
    setWindowIcon(InstrumentIcon());
    // Not every compositor knows shapes; what the mask leaves out is transparent as well.
    setAttribute(Qt::WA_TranslucentBackground);
}

void Surface::Carry(Form& face, const std::vector<Form*>& panels) {
    face_ = &face;
    panels_.assign(panels.begin(), panels.end());
    for (Form* panel : panels) {
        panel->setParent(this);
        panel->hide();
        panel->raise();
        panel->installEventFilter(this);
    }
    face.setParent(this);
    // Opaque as it is, what lies behind it need not be painted whenever one of its controls is.
    face.setAutoFillBackground(true);
    face.raise();
    face.show();
    face.installEventFilter(this);
    setWindowTitle(face.windowTitle());
    MakeRoom({});
}

void Surface::MakeRoom(const QRect& anchor) {
    const QPoint before = pos() + face_->pos();
    QRect extent = face_->rect();
    for (const auto& panel : panels_) {
        const QRect closed(anchor.topLeft(), panel->size());
        extent |= closed | closed.translated(anchor.width(), 0);
    }
    face_->move(-extent.topLeft());
    setFixedSize(extent.size());
    if (testAttribute(Qt::WA_Moved)) { // else the window manager chooses the place
        MoveTo(before.x(), before.y());
    }
    OutlineChanged();
}

void Surface::MoveBy(Picture& picture) {
    new WindowMover(picture);
}

QPoint Surface::FacePlace() const {
    return face_ == nullptr ? QPoint() : face_->pos();
}

int Surface::Left() const {
    return pos().x() + FacePlace().x();
}

int Surface::Top() const {
    return pos().y() + FacePlace().y();
}

void Surface::MoveTo(int left, int top) {
    const QPoint place = QPoint(left, top) - FacePlace();
    if (!drawn_) {
        asked_ = place;
    }
    move(place);
}

void Surface::ConfirmPlace() {
    // A window manager that puts the window into a frame of its own may let the toolkit see the frame's place
    // of one moment and never tell the final one. Asking again makes it tell.
    drawn_ = true;
    if (asked_ && *asked_ != pos()) {
        move(*asked_);
    }
}

void Surface::Minimise() {
    away_ = true;
    showMinimized();
}

void Surface::BringFaceToFront() {
    if (face_ != nullptr) {
        face_->raise();
    }
    raise();
}

void Surface::BringPanelUp(QWidget& panel) {
    if (face_ != nullptr) {
        panel.stackUnder(face_);
    }
}

void Surface::SendPanelToBack(QWidget& panel) {
    panel.lower();
}

QImage Surface::Shot() {
    const double ratio = devicePixelRatioF();
    QImage picture((QSizeF(size()) * ratio).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    for (QObject* child : children()) {
        auto* part = qobject_cast<QWidget*>(child);
        if (part != nullptr && !part->isWindow() && part->isVisible()) {
            part->render(&painter, part->pos());
        }
    }
    painter.end();
    picture.setDevicePixelRatio(1); // whoever takes it counts its pixels
    return picture;
}

bool Surface::InReach(const QWidget& control) const {
    const QWidget* part = &control;
    while (part->parentWidget() != nullptr && part->parentWidget() != this) {
        part = part->parentWidget();
    }
    const QPoint centre = control.mapTo(this, control.rect().center());
    bool above = false;
    for (const QObject* child : children()) { // from the rearmost to the foremost
        const auto* other = qobject_cast<const QWidget*>(child);
        if (other == part) {
            above = true;
        } else if (above && other != nullptr && !other->isWindow() && !other->isHidden()) {
            const QPoint at = centre - other->pos();
            if (other->rect().contains(at) && (other->mask().isEmpty() || other->mask().contains(at))) {
                return false;
            }
        }
    }
    return true;
}

bool Surface::focusNextPrevChild(bool next) {
    QWidget* const from = focusWidget() != nullptr ? focusWidget() : this;
    const auto step = [next](const QWidget* at) {
        return next ? at->nextInFocusChain() : at->previousInFocusChain();
    };
    for (QWidget* to = step(from); to != from; to = step(to)) {
        const bool stops = (to->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && to->focusProxy() == nullptr;
        if (to != this && to->window() == this && stops && to->isVisible() && to->isEnabled() &&
            InReach(*to)) {
            to->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    }
    return false;
}

// Keys must not turn what nobody sees.
void Surface::DropFocusOutOfReach() {
    QWidget* const control = focusWidget();
    if (control != nullptr && control != this && !InReach(*control)) {
        control->clearFocus();
    }
}

void Surface::OutlineChanged() {
    if (!outlinePending_) {
        outlinePending_ = true;
        QCoreApplication::postEvent(this, new QEvent(kTakeOutline), Qt::HighEventPriority);
    }
}

QRegion Surface::Outline() const {
    QRegion outline;
    auto add = [&](const QWidget* part) {
        if (part != nullptr && !part->isHidden()) {
            const QRegion whole(part->rect());
            outline |= (part->mask().isEmpty() ? whole : whole & part->mask()).translated(part->pos());
        }
    };
    for (const auto& panel : panels_) {
        add(panel);
    }
    add(face_);
    return outline;
}

void Surface::TakeOutline() {
    outlinePending_ = false;
    const QRegion fine = FitShapes();
    const QRegion outline = Outline();
    if (shaped_ && outline == outline_ && fine == fineOutline_) {
        return;
    }
    shaped_ = true;
    outline_ = outline;
    fineOutline_ = fine;
    ShapeByMask(this, &outline_);
    // A drawing that came before the outline was cut by the old one, and what is opaque would not be drawn
    // again for its parent's sake.
    for (QWidget* part : findChildren<QWidget*>()) {
        if (!part->isWindow()) {
            part->update();
        }
    }
    if (devicePixelRatioF() != 1.0) {
        ShapeInDevicePixels(*this, fineOutline_);
    }
}

void Surface::TakeShape(const QObject* part) {
    std::erase_if(shapes_, [part](const Shape& shape) { return shape.part.isNull() || shape.part == part; });
}

// The mask of a part lets everything through that its finer outline touches; the window's outline cuts the
// rest. Gives the whole in device pixels.
QRegion Surface::FitShapes() {
    const double ratio = devicePixelRatioF();
    QRegion whole;
    const auto fit = [&](QWidget* part) {
        if (part == nullptr || part->isHidden() || (ratio == 1.0 && shapes_.empty())) {
            return;
        }
        const auto known = std::find_if(shapes_.begin(), shapes_.end(),
                                        [part](const Shape& shape) { return shape.part == part; });
        Shape shape = known == shapes_.end() ? Shape{part, part->mask(), {}, 0} : *known;
        if (shape.ratio != ratio) {
            const QRegion given = shape.given.isEmpty() ? QRegion(part->rect()) : shape.given & part->rect();
            shape.ratio = ratio;
            shape.fine = ratio == 1.0 ? given : FineOutline(given, part->size(), ratio);
            if (!shape.given.isEmpty() && !given.isEmpty()) {
                part->setMask(ratio == 1.0 ? shape.given : Covering(shape.fine, ratio));
            }
            if (known == shapes_.end()) {
                shapes_.push_back(shape);
            } else {
                *known = shape;
            }
        }
        whole |= shape.fine.translated((QPointF(part->pos()) * ratio).toPoint());
    };
    for (const auto& panel : panels_) {
        fit(panel);
    }
    fit(face_);
    return whole;
}

bool Surface::event(QEvent* event) {
    if (event->type() == kTakeOutline) {
        TakeOutline();
        return true;
    }
    return QWidget::event(event);
}

bool Surface::eventFilter(QObject* watched, QEvent* event) {
    if (watched == windowHandle()) {
        if (event->type() == QEvent::Expose) {
            watched->removeEventFilter(this);
            ConfirmPlace();
        }
        return false;
    }
    if (event->type() == ShapeChangedEvent()) {
        TakeShape(watched);
        OutlineChanged();
    }
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
        DropFocusOutOfReach();
        OutlineChanged();
        break;
    case QEvent::WindowTitleChange:
        if (watched == face_) {
            setWindowTitle(face_->windowTitle());
        }
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void Surface::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) {
        if (isMinimized()) {
            emit Minimised();
        } else if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) {
            away_ = false;
        }
    }
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        away_ = false;
        emit Activated();
    }
}

void Surface::closeEvent(QCloseEvent* event) {
    event->ignore();
    emit CloseRequested();
}

void Surface::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    TakeOutline();
    if (!event->spontaneous()) {
        if (!drawn_) {
            windowHandle()->installEventFilter(this);
            // The window system keeps the outline in its own pixels.
            connect(windowHandle(), &QWindow::screenChanged, this, [this] {
                shaped_ = false;
                clearMask(); // the same mask once more would not be passed on
                OutlineChanged();
            });
        }
        raise();
        activateWindow();
    }
}
