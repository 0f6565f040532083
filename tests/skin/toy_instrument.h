#pragma once

#include "controls/colour.h"
#include "controls/form.h"
#include "controls/picture.h"
#include "skin/skin_colour.h"

#include <QImage>
#include <QPainter>

/// A small face with every control that a skin paints, and panels to hang at it.
namespace toy {

inline constexpr QSize kFace{320, 200};
inline constexpr QRect kAnchor{240, 20, 80, 160}; ///< in front of the face's right edge
inline constexpr QSize kPanel{100, 160};          ///< 20 of it stand out while it is closed

inline FormDesign FaceDesign() {
    FormDesign form{
        .name = QStringLiteral("Corvantine_Main"), .caption = QStringLiteral("Corvantine"), .size = kFace};
    auto& rows = form.controls;
    rows.push_back({.kind = ControlKind::Picture, .name = "Image1", .place = {{0, 0}, kFace}});
    rows.push_back(
        {.kind = ControlKind::Picture, .name = "TabSliderAnchorImage", .place = kAnchor, .visible = false});
    rows.push_back({.kind = ControlKind::Picture, .name = "SkinColourImage", .place = {10, 170, 16, 16}});
    rows.push_back({.kind = ControlKind::Picture, .name = "VertCursorBar", .place = {20, 150, 101, 9}});
    rows.push_back({.kind = ControlKind::Picture, .name = "HorizCursorBar", .place = {5, 40, 10, 100}});
    int x = 40;
    for (const char* name : {"RunButton", "OnceButton", "TrigModeButton", "TrigTypeButton", "CloseButton",
                             "MinimiseButton", "MinimiseMostlyButton", "UsersGuideButton", "FullScreenButton",
                             "NormaliseButton", "SampleDotsButton"}) {
        rows.push_back({.kind = ControlKind::Button, .name = name, .place = {x, 10, 17, 17}});
        x += 18;
    }
    x = 20;
    for (const char* name : {"HorizZoomKnob", "TimeBaseKnob", "TriggerKnob", "VertZoomKnob"}) {
        rows.push_back({.kind = ControlKind::Knob, .name = name, .place = {x, 60, 43, 51}});
        x += 50;
    }
    x = 20;
    for (const char* name : {"HorizPanSlider", "VertPanSlider", "PretriggerSlider"}) {
        rows.push_back({.kind = ControlKind::Slider, .name = name, .place = {x, 120, 60, 15}});
        x += 66;
    }
    for (const char* name : {"SkinFiles", "SkinColourList"}) {
        rows.push_back({.kind = ControlKind::ListBox, .name = name, .place = {0, 0, 8, 8}, .visible = false});
    }
    form.timers = {{"RunTimer", 100}, {"TabTimer", 50}};
    return form;
}

inline FormDesign PanelDesign(const QString& name, int row) {
    return {
        .name = name,
        .caption = name,
        .size = kPanel,
        .controls = {{.kind = ControlKind::Picture, .name = "Image2", .place = {{0, 0}, kPanel}},
                     {.kind = ControlKind::Picture, .name = "Image1", .place = {80, 5 + 30 * row, 20, 25}}}};
}

/// The face's outline has round corners; everything outside has the key colour, as the top right pixel.
inline QImage FacePicture(const QColor& colour, QSize size = kFace) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(ToQColor(kSkinKey));
    QPainter painter(&image);
    painter.setBrush(colour);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(image.rect(), 30, 30);
    return image;
}

/// The body of a panel and its tab in that row.
inline QImage PanelPicture(const QColor& colour, int row) {
    QImage image(kPanel, QImage::Format_RGB32);
    image.fill(ToQColor(kSkinKey));
    QPainter painter(&image);
    painter.fillRect(QRect(0, 0, 80, 160), colour);
    painter.fillRect(QRect(80, 5 + 30 * row, 20, 25), colour);
    return image;
}

} // namespace toy
