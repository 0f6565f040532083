#pragma once

#include "frame/record/colour.h"

#include <QRect>
#include <QString>
#include <QVariant>
#include <utility>
#include <vector>

/// What a row of a form's table is built as.
enum class ControlKind {
    Knob,         ///< KnobControl1
    Button,       ///< ButtonControl1
    Slider,       ///< SliderControl1
    HyperLink,    ///< UserControl2
    Label,        ///< QLabel
    RotatedLabel, ///< RotatedLabel
    Picture,      ///< Picture: an image or a plain coloured surface that takes the mouse
    Line,         ///< QFrame of one colour, as thin as its rectangle
    CheckBox,     ///< QCheckBox
    OptionButton, ///< QRadioButton
    ComboBox,     ///< QComboBox
    ListBox,      ///< QListWidget
    TextBox,      ///< QLineEdit
    Frame,        ///< Picture that groups others
    Canvas        ///< a plot canvas, made by the display room
};

struct FontDesign {
    const char* family = nullptr; ///< null: the form's font, and points and bold with it
    double points = 8.25;
    bool bold = false;
};

/// Colours of a row; kNoColour leaves the control's own.
inline constexpr Colour kNoColour = 0xFF000000;

/// One control of a form: where it stands, what it says, how it looks. Pixels at scale 1, relative to the
/// parent row (or the form). Extra properties are design keys of the custom controls ("KnobMin"), Qt
/// properties ("wordWrap") of the others; "drawing" names a picture's art, "items" are the lines of a
/// ComboBox.
struct ControlDesign {
    ControlKind kind;
    const char* name;
    int index = -1; ///< element of a control array, -1 for a single control
    QRect place = {};
    QString caption = {};
    QString tip = {};
    Colour fill = kNoColour; ///< ButtonFillColor, KnobFillColor, SliderFillColor
    Colour back = kNoColour; ///< ButtonBackColor, KnobBorderColor, background
    Colour fore = kNoColour; ///< ButtonForeColor, KnobTextColor, text
    FontDesign font = {};
    std::vector<std::pair<const char*, QVariant>> properties = {};
    const char* parent = nullptr; ///< objectName of the row that holds this one, for example "Frame1(0)"
    bool visible = true;
};

struct TimerDesign {
    const char* name;
    int interval; ///< milliseconds
    bool singleShot = false;
};

/// Everything that is fixed about a form before the program runs.
struct FormDesign {
    QString name;
    QString caption;
    QSize size;
    Colour back = kNoColour;      ///< none: the form paints no ground of its own
    const char* ground = nullptr; ///< drawing of the whole form, under its controls
    FontDesign font = {"MS Sans Serif", 8.25, false};
    std::vector<ControlDesign> controls = {};
    std::vector<TimerDesign> timers = {};
};

inline constexpr FontDesign kFaceFont{"Arial", 8.25};
inline constexpr FontDesign kPanelFont{"Microsoft Sans Serif", 8.25};
inline constexpr FontDesign kPanelSmallFont{"Small Fonts", 6.75};
inline constexpr FontDesign kPanelButtonFont{"Arial Narrow", 8.25, true};
inline constexpr FontDesign kButtonFont{"Arial", 9.75, true};

/// The program's own glyphs at a size: the captions "0" to "8".
constexpr FontDesign SymbolFont(double points) {
    return {"Corvantine", points};
}

/// The objectName of element index of a control array, "Coupling(1)"; the plain name for index -1.
inline QString ControlName(const char* name, int index = -1) {
    return index < 0 ? QString::fromLatin1(name)
                     : QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}
