#include "display/recording_canvas.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace {

std::string Text(double value) {
    return Figure(value);
}
std::string Text(int value) {
    return std::to_string(value);
}
std::string Text(bool value) {
    return value ? "true" : "false";
}
std::string Text(const std::string& value) {
    return value;
}

template <class... Args> std::string CallText(const char* name, Args... args) {
    const std::vector<std::string> texts{Text(args)...};
    std::string call = name + std::string("(");
    for (std::size_t i = 0; i < texts.size(); ++i) {
        call += (i == 0 ? "" : ", ") + texts[i];
    }
    return call + ")";
}

std::string Hex(Colour colour) {
    std::ostringstream out;
    out << "0x" << std::hex << std::uppercase << colour;
    return out.str();
}

bool Begins(const std::string& text, const std::string& with) {
    return text.compare(0, with.size(), with) == 0;
}

} // namespace

std::string Figure(double value) {
    std::ostringstream out;
    out.precision(7);
    out << (value == 0 ? 0.0 : value); // no sign before a zero
    return out.str();
}

RecordingCanvas::RecordingCanvas(int width, int height, double ratio)
    : width_(width), height_(height), ratio_(ratio), right_(width), bottom_(height) {}

void RecordingCanvas::Resize(int width, int height) {
    width_ = width;
    height_ = height;
    left_ = top_ = 0;
    right_ = width;
    bottom_ = height;
}

template <class... Args> void RecordingCanvas::Call(const char* name, Args... args) {
    calls.push_back(CallText(name, args...));
}

std::vector<std::string> RecordingCanvas::CallsOf(const std::vector<std::string>& names) const {
    std::vector<std::string> found;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(found), [&](const std::string& call) {
        return std::any_of(names.begin(), names.end(),
                           [&](const std::string& name) { return Begins(call, name + "("); });
    });
    return found;
}

std::vector<std::string> RecordingCanvas::Between(const std::string& from, const std::string& to) const {
    const auto begins = [](const std::string& with) {
        return [&with](const std::string& call) { return Begins(call, with); };
    };
    auto first = std::find_if(calls.begin(), calls.end(), begins(from));
    if (first == calls.end()) {
        return {};
    }
    return {first + 1, std::find_if(first + 1, calls.end(), begins(to))};
}

int RecordingCanvas::Count(const std::string& call) const {
    return static_cast<int>(std::count_if(calls.begin(), calls.end(),
                                          [&](const std::string& made) { return Begins(made, call); }));
}

void RecordingCanvas::Clear() {
    Call("Clear");
}
void RecordingCanvas::SetDrawModeCopy() {
    Call("SetDrawModeCopy");
}
void RecordingCanvas::SetDrawWidth(int pixels) {
    Call("SetDrawWidth", pixels);
}
void RecordingCanvas::SetDrawStyle(PenStyle style) {
    Call("SetDrawStyle", std::string(style == PenStyle::Solid ? "Solid" : "Dotted"));
}
void RecordingCanvas::SetForeColor(Colour colour) {
    Call("SetForeColor", Hex(colour));
}

void RecordingCanvas::SetScale(double left, double top, double right, double bottom) {
    left_ = left;
    top_ = top;
    right_ = right;
    bottom_ = bottom;
    Call("SetScale", left, top, right, bottom);
}

void RecordingCanvas::SetPixelScale() {
    left_ = top_ = 0;
    right_ = width_;
    bottom_ = height_;
    Call("SetPixelScale");
}

void RecordingCanvas::Line(double x1, double y1, double x2, double y2) {
    current_ = {x2, y2};
    Call("Line", x1, y1, x2, y2);
}
void RecordingCanvas::LineTo(double x, double y) {
    current_ = {x, y};
    Call("LineTo", x, y);
}
void RecordingCanvas::FillBox(double x1, double y1, double x2, double y2) {
    Call("FillBox", x1, y1, x2, y2);
}
void RecordingCanvas::PSet(double x, double y) {
    Call("PSet", x, y);
}
void RecordingCanvas::SetCurrent(double x, double y) {
    current_ = {x, y};
    Call("SetCurrent", x, y);
}
void RecordingCanvas::Print(const QString& text) {
    Call("Print", text.toStdString());
}

double RecordingCanvas::TextWidth(const QString& text) const {
    return static_cast<double>(text.size()) * kCharacter * std::abs(ScaleWidth()) / width_;
}
double RecordingCanvas::TextHeight(const QString&) const {
    return kTextLine * std::abs(ScaleHeight()) / height_;
}
double RecordingCanvas::WidthToPixels(double width) const {
    return width * width_ / std::abs(ScaleWidth());
}

void RecordingCompanions::GroundLabelLeft(int channel, double x) {
    canvas_.Note(CallText("GroundLabelLeft", channel, x));
}
void RecordingCompanions::GroundLabelVisible(int channel, bool visible) {
    canvas_.Note(CallText("GroundLabelVisible", channel, visible));
}
void RecordingCompanions::GroundLabelCaption(int channel, QStringView caption) {
    canvas_.Note(CallText("GroundLabelCaption", channel, caption.toString().toStdString()));
}
void RecordingCompanions::GroundLabelTop(int channel, double y) {
    canvas_.Note(CallText("GroundLabelTop", channel, y));
}
void RecordingCompanions::GroundLabelColour(int channel, Colour colour) {
    canvas_.Note(CallText("GroundLabelColour", channel, Hex(colour)));
}
void RecordingCompanions::TriggerLine(double x1, double y1, double x2, double y2) {
    canvas_.Note(CallText("TriggerLine", x1, y1, x2, y2));
}
