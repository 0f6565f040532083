#pragma once

#include "controls/colour.h"
#include "controls/design.h"

#include <QPoint>
#include <QSize>

/// What all pull-out panels share: one size and place, and a header each, one below another, that stands
/// out of the main window's right edge while the panel is closed. A panel that is pulled out leaves a window
/// between itself and the main window, through which the headers of the closed ones stay in reach.
struct PanelGeometry {
    static constexpr int kTuck = 4;    ///< of the panel, still under the main window when pulled out
    static constexpr int kWindow = 52; ///< width of the window for the other headers
    static constexpr int kBody = 200;  ///< width of the face that carries the controls
    static constexpr int kHeader = 48; ///< width of a header
    static constexpr int kHeight = 376;
    static constexpr int kHeaderHeight = 38;
    static constexpr int kHeaderPitch = 40;
    static constexpr int kFirstHeader = 9; ///< top of the first header
    static constexpr int kRail = 7;        ///< height of the rails above and below the window
    static constexpr int kMargin = 12;
    static constexpr int kBodyLeft = kTuck + kWindow;
    static constexpr int kBodyRight = kBodyLeft + kBody;
    static constexpr int kLeft = kBodyLeft + kMargin;   ///< of a panel's contents
    static constexpr int kRight = kBodyRight - kMargin; ///< one past them
    static constexpr int kWidth = kRight - kLeft;
    static constexpr int kLegend = 14;              ///< width of a rotated legend
    static constexpr int kTravel = kWindow + kBody; ///< from closed to pulled out

    static constexpr QSize Size() { return {kBodyRight + kHeader, kHeight}; }
    static constexpr QRect Header(int row) {
        return {kBodyRight, kFirstHeader + row * kHeaderPitch, kHeader, kHeaderHeight};
    }
};

/// Rows of the headers from the top; channels take 0 to 3.
enum PanelRow { kMathPanelRow = 4, kHorzPanelRow, kCursPanelRow, kDataPanelRow, kAboutPanelRow, kPanelRows };

inline constexpr Colour kPanelBack = 0x98B6BC;   ///< the panel's face, and the back of all that lies on it
inline constexpr Colour kPanelPlate = 0xC0C0C0;  ///< the plates that carry the knobs
inline constexpr Colour kPanelLegend = 0x28343A; ///< engraved text
inline constexpr Colour kAttention = 0xFF;       ///< ring of a button that changes what is measured, while on

/// A panel with its background, its header and the header's name; the caller adds the contents.
FormDesign PanelForm(const QString& name, int row, const QString& header, Colour colour, Colour text,
                     const QString& tip);

ControlDesign PanelButton(const char* name, int index, QRect place, const QString& caption,
                          const QString& tip, Colour fill = kSwitchOff, Colour fore = 0xFFFFFF);
ControlDesign PanelLabel(const char* name, int index, QRect place, const QString& caption,
                         Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter);
/// A sentence or two across the panel, up to four lines.
ControlDesign PanelNote(const char* name, int top, const QString& text);
ControlDesign PanelRotatedLabel(const char* name, int index, QRect place, const QString& caption);
/// A grouping frame of the panel's colour; its option buttons are rows with its objectName as parent.
ControlDesign PanelFrame(const char* name, int index, QRect place, const QString& tip);
ControlDesign PanelOption(const char* name, int index, int row, const char* frame, int width,
                          const QString& caption, const QString& tip, bool checked);
ControlDesign PanelCombo(const char* name, int index, QRect place, const QString& tip);
ControlDesign PanelSeparator(const char* name, int top);
ControlDesign PanelVoltsKnob(const char* name, QRect place, int maximum, int value, const QString& format);
ControlDesign PanelOffsetKnob(const char* name, QRect place, int timeout, int lowerLimit);

inline constexpr int kPanelOptionPitch = 22;
inline constexpr int kPanelFramePad = 6;
/// Height of a frame of that many option buttons.
constexpr int PanelFrameHeight(int options) {
    return 2 * kPanelFramePad + options * kPanelOptionPitch;
}
