#include "frame/window/main_form_design.h"

#include "controls/panel_design.h"
#include "frame/record/channels.h"

#include <QColor>

// The face is 656 wide, a multiple of 4, so that a picture of its size has scan lines without padding.
// Margins are 16. The display module (plot, bars, sliders) stands at the left, the knobs in two columns of 96
// at the right, run and single below them at the corner nearest to the hand.
namespace {

constexpr QSize kFace{656, 420};
constexpr QRect kPlot{24, 71, 357, 240};
constexpr int kCursorBar = 14;
constexpr int kBarGap = 4;
constexpr int kRightBars = kPlot.x() + kPlot.width() + kBarGap;
constexpr int kLowerBars = kPlot.y() + kPlot.height() + kBarGap;

constexpr Colour kWell = 0x404040; ///< until the first skin gives its own
constexpr Colour kWhite = 0xFFFFFF;

ControlDesign FaceButton(const char* name, QRect place, const QString& caption, const QString& tip,
                         FontDesign font = kButtonFont) {
    return {.kind = ControlKind::Button,
            .name = name,
            .place = place,
            .caption = caption,
            .tip = tip,
            .fill = kSwitchOff,
            .back = 0x707070,
            .fore = kWhite,
            .font = font};
}

ControlDesign WindowButton(const char* name, int place, const QString& caption, const QString& tip,
                           FontDesign font) {
    constexpr int kSide = 24;
    constexpr int kPitch = 28;
    constexpr int kCount = 5;
    const int left = kFace.width() - 16 - (kCount - place) * kPitch + (kPitch - kSide);
    return {.kind = ControlKind::Button,
            .name = name,
            .place = {left, 12, kSide, kSide},
            .caption = caption,
            .tip = tip,
            .fill = 0x008000,
            .back = 0x707070,
            .fore = 0x00FF00,
            .font = font};
}

ControlDesign FaceKnob(const char* name, QRect place, const QString& tip, Colour fill, Colour border,
                       std::vector<std::pair<const char*, QVariant>> properties) {
    return {.kind = ControlKind::Knob,
            .name = name,
            .place = place,
            .tip = tip,
            .fill = fill,
            .back = border,
            .fore = kWhite,
            .properties = std::move(properties)};
}

ControlDesign ZoomKnob(const char* name, QRect place, const QString& tip, int maximum) {
    return FaceKnob(name, place, tip, 0x808080, 0x707070,
                    {{"KnobMin", 1},
                     {"KnobMax", maximum},
                     {"KnobValue", 1},
                     {"KnobStartAngle", -45},
                     {"KnobStopAngle", 225},
                     {"KnobTimeout", 10},
                     {"KnobMarkers", QStringLiteral("11")},
                     {"KnobMarkerColor", QColor(Qt::white)},
                     {"KnobValueFormat", QStringLiteral("x0")},
                     {"KnobValueAlign", 2},
                     {"KnobValueQuantized", true}});
}

ControlDesign FaceSlider(const char* name, QRect place, const QString& tip, Colour fill, double value,
                         double step) {
    return {.kind = ControlKind::Slider,
            .name = name,
            .place = place,
            .tip = tip,
            .fill = fill,
            .properties = {{"SliderDepth", 1}, {"SliderValueQuantized", step}, {"SliderValue", value}}};
}

ControlDesign StatusLabel(const char* name, QRect place, const QString& caption, Colour fore,
                          Qt::Alignment alignment, FontDesign font) {
    return {.kind = ControlKind::Label,
            .name = name,
            .place = place,
            .caption = caption,
            .fore = fore,
            .font = font,
            .properties = {{"alignment", int(alignment)}, {"wordWrap", true}}};
}

void AddPlot(std::vector<ControlDesign>& rows) {
    rows.push_back(FaceSlider("PretriggerSlider", {kPlot.x(), 52, 357, 15},
                              "Trigger position: how much of the record lies before the trigger", 0x0000FF,
                              0.5, 0.0001));
    rows.push_back(
        {.kind = ControlKind::Canvas, .name = "MainPlotCanvas", .place = kPlot, .tip = {}, .back = 0x000000});
    rows.push_back(FaceSlider("HorizPanSlider",
                              {kPlot.x(), kLowerBars + kCursorBar + kBarGap, kPlot.width(), 17},
                              "Horizontal pan: moves the view along the record", 0x707070, 0, 0.0001));
    rows.push_back(FaceSlider("VertPanSlider", {kRightBars + kCursorBar + kBarGap, kPlot.y(), 17, 239},
                              "Vertical pan: moves the view up and down", 0x707070, 0.5, 0.01));
    rows.push_back(FaceButton("NormaliseButton", {387, 317, 32, 32}, "6",
                              "Back to normal size: zoom x1, pan centred", SymbolFont(14.25)));
}

void AddCursorBars(std::vector<ControlDesign>& rows) {
    constexpr int kCursors = 3;
    constexpr int kHandle = 11; ///< along the bar
    rows.push_back(
        {.kind = ControlKind::Picture,
         .name = "VertCursorBar",
         .place = {kPlot.x(), kLowerBars, kPlot.width(), kCursorBar},
         .tip = "Time cursors: drag a handle with the left button, the right button moves it finely",
         .back = kWell});
    rows.push_back(
        {.kind = ControlKind::Picture,
         .name = "HorizCursorBar",
         .place = {kRightBars, kPlot.y(), kCursorBar, kPlot.height()},
         .tip = "Level cursors: drag a handle with the left button, the right button moves it finely",
         .back = kWell});
    for (int i = 0; i < 2; ++i) {
        const int last = i * (kPlot.width() - 4);
        rows.push_back({.kind = ControlKind::Line,
                        .name = "VertWorldLine",
                        .index = i,
                        .place = {last, 0, 1, kCursorBar},
                        .back = kWhite,
                        .parent = "VertCursorBar"});
        rows.push_back({.kind = ControlKind::Line,
                        .name = "HorizWorldLine",
                        .index = i,
                        .place = {0, i * (kPlot.height() - 4), kCursorBar, 1},
                        .back = kWhite,
                        .parent = "HorizCursorBar"});
    }
    for (int i = 0; i < kCursors; ++i) {
        const int along = 24 + 2 * i * kHandle;
        rows.push_back({.kind = ControlKind::Picture,
                        .name = "VertCursorHandle",
                        .index = i,
                        .place = {along, 0, kHandle, kCursorBar},
                        .properties = {{"drawing", QStringLiteral("timeCursor%1").arg(i + 1)}},
                        .parent = "VertCursorBar",
                        .visible = false});
        rows.push_back({.kind = ControlKind::Picture,
                        .name = "HorizCursorHandle",
                        .index = i,
                        .place = {0, along, kCursorBar, kHandle},
                        .properties = {{"drawing", QStringLiteral("levelCursor%1").arg(i + 1)}},
                        .parent = "HorizCursorBar",
                        .visible = false});
    }
}

void AddRun(std::vector<ControlDesign>& rows) {
    rows.push_back(FaceButton("RunButton", {452, 314, 72, 72}, "running", "Run and stop acquisition"));
    rows.push_back(
        FaceButton("OnceButton", {556, 314, 72, 72}, "single", "Single shot: stop after one acquisition"));
}

void AddTimeBaseAndTrigger(std::vector<ControlDesign>& rows) {
    rows.push_back(FaceKnob("TimeBaseKnob", {445, 64, 85, 96}, "Time base: time per horizontal division",
                            0x0000FF, 0x606060,
                            {{"KnobMin", 0},
                             {"KnobMax", 27},
                             {"KnobValue", 7},
                             {"KnobAnticlock", true},
                             {"KnobZeroButton", false},
                             {"KnobBand1Start", 24},
                             {"KnobBand1Stop", 28},
                             {"KnobBand1Color", QColor(Qt::red)},
                             {"KnobStartAngle", -45},
                             {"KnobStopAngle", 225},
                             {"KnobTimeout", 20},
                             {"KnobMarkers", QStringLiteral("28")},
                             {"KnobMarkerColor", QColor(Qt::green)},
                             {"KnobValueFormat", QStringLiteral("0")},
                             {"KnobValueAlign", 2},
                             {"KnobValueQuantized", true}}));
    rows.push_back(FaceKnob("TriggerKnob", {549, 64, 85, 89},
                            "Trigger level: a left click in the plot sets it too", 0x0000FF, 0x606060,
                            {{"KnobMin", -100},
                             {"KnobMax", 100},
                             {"KnobValue", 0},
                             {"KnobZeroButtonValue", 0},
                             {"KnobStartAngle", -90},
                             {"KnobStopAngle", 90},
                             {"KnobTimeout", 20},
                             {"KnobMarkers", QStringLiteral("11")},
                             {"KnobMarkerColor", QColor(Qt::white)},
                             {"KnobValueFormat", QStringLiteral("0\\% trig")},
                             {"KnobValueAlign", 2},
                             {"KnobValueQuantized", true}}));
    rows.push_back(FaceButton("TrigModeButton", {548, 190, 40, 40}, "norm",
                              "Trigger mode: auto, norm or free running", kPanelButtonFont));
    rows.push_back(FaceButton("TrigTypeButton", {596, 190, 40, 40}, "0",
                              "Trigger type: less than, greater than, falling edge or rising edge",
                              SymbolFont(21.75)));
}

void AddView(std::vector<ControlDesign>& rows) {
    rows.push_back(ZoomKnob("HorizZoomKnob", {468, 189, 59, 45}, "Horizontal zoom", 100));
    rows.push_back(ZoomKnob("VertZoomKnob", {468, 239, 59, 45}, "Vertical zoom", 20));
    rows.push_back(FaceButton("SampleDotsButton", {552, 252, 32, 32}, "8",
                              "Show sample points as dots (from zoom x5 on)", SymbolFont(14.25)));
    rows.push_back({.kind = ControlKind::Picture,
                    .name = "SkinColourImage",
                    .place = {600, 252, 32, 32},
                    .tip = "Change the colour of the panel",
                    .properties = {{"drawing", "skinColour"}}});
}

void AddWindowButtons(std::vector<ControlDesign>& rows) {
    rows.push_back(WindowButton("UsersGuideButton", 0, "?", "Open the user's guide", kButtonFont));
    rows.push_back(
        WindowButton("FullScreenButton", 1, "7", "Show or hide the large time window", SymbolFont(11.25)));
    rows.push_back(WindowButton("MinimiseMostlyButton", 2, "5", "Minimise all but the large time window",
                                SymbolFont(8.25)));
    rows.push_back(WindowButton("MinimiseButton", 3, "5", "Minimise", SymbolFont(11.25)));
    rows.push_back(WindowButton("CloseButton", 4, "4", "Save the settings and close", SymbolFont(11.25)));
}

void AddStatus(std::vector<ControlDesign>& rows) {
    rows.push_back(StatusLabel("TriggerStatusLabel", {28, 370, 80, 30}, "trigger ?", 0x808080,
                               Qt::AlignLeft | Qt::AlignVCenter, {"Arial", 9.75, true}));
    rows.push_back(StatusLabel("AcqModeLabel", {112, 370, 224, 30}, "Acquistion mode: ", kWhite,
                               Qt::AlignLeft | Qt::AlignVCenter, {}));
    rows.push_back(StatusLabel("DemoLabel", {340, 370, 80, 30}, "Demo Mode !", 0x20C0FF,
                               Qt::AlignRight | Qt::AlignVCenter, {"Arial", 8.25, true}));
}

FormDesign Build() {
    using Geometry = PanelGeometry;
    FormDesign form{.name = "Corvantine_Main", .caption = "Corvantine", .size = kFace, .font = kFaceFont};
    auto& rows = form.controls;
    rows.push_back({.kind = ControlKind::Picture, .name = "Image1", .place = {{0, 0}, kFace}});
    // Panels at the anchor are hidden but for their headers; one width further right they are all in view.
    rows.push_back({.kind = ControlKind::Picture,
                    .name = "TabSliderAnchorImage",
                    .place = {kFace.width() - Geometry::kTuck - Geometry::kTravel,
                              (kFace.height() - Geometry::kHeight) / 2, Geometry::kTravel, Geometry::kHeight},
                    .visible = false});
    // The keyboard goes through the face in this order.
    AddRun(rows);
    AddTimeBaseAndTrigger(rows);
    AddPlot(rows);
    AddView(rows);
    AddCursorBars(rows);
    AddWindowButtons(rows);
    AddStatus(rows);
    for (const char* list : {"SkinFiles", "SkinColourList"}) {
        rows.push_back(
            {.kind = ControlKind::ListBox, .name = list, .place = {0, 0, 16, 16}, .visible = false});
    }
    form.timers = {{"RunTimer", 100},       {"AutoTriggerTimer", 250},        {"TabTimer", 50},
                   {"CursTimer", 10, true}, {"TriggerLineTimer", 2000, true}, {"IDTimer", 4000, true}};
    return form;
}

} // namespace

const FormDesign& MainFormDesign() {
    static const FormDesign design = Build();
    return design;
}
