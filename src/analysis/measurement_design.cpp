#include "analysis/measurement_design.h"

#include "analysis/measurement_layout.h"

#include "frame/record/channels.h"

namespace {

// In pixels of the window.
constexpr int kCursorTitles = 3;
constexpr int kTop = 3;

ControlDesign TitlePicture(int number, int left, int width) {
    static const char* const kNames[] = {"Picture1", "Picture2", "Picture3", "Picture4",
                                         "Picture5", "Picture6", "Picture7"};
    return {.kind = ControlKind::Picture,
            .name = kNames[number - 1],
            .place = {left, kTop, width, kMeasurementRowHeight},
            .back = 0x2A2826};
}

ControlDesign Title(int index, QRect place, const QString& caption, const char* picture) {
    return {.kind = ControlKind::Label,
            .name = "TitleText",
            .index = index,
            .place = place,
            .caption = caption,
            .fore = 0xFFFFFF,
            .font = {"MS Sans Serif", 8, true},
            .properties = {{"alignment", int(Qt::AlignCenter)}},
            .parent = picture};
}

FormDesign BuildMeasurements() {
    FormDesign form{
        .name = "Corvantine_StatsForm",
        .caption = "Corvantine measurements",
        .size = {kMeasurementWidth, kMeasurementRowHeight * kScopeChannels + kMeasurementRoomBesideRows},
        .back = 0x363230,
        .ground = "figures"};
    auto& rows = form.controls;
    int number = 0;
    for (const MeasurementColumn& column : kMeasurementColumns) {
        rows.push_back(TitlePicture(++number, column.left, column.width));
        rows.push_back(
            Title(number - 1, {0, 0, column.width, kMeasurementRowHeight}, column.title, rows.back().name));
    }
    int index = number;
    int left = kMeasurementCursorsLeft;
    for (const char* letter : {"v", "t"}) {
        // The last reaches to the end of the rows.
        const int width =
            letter[0] == 't' ? kMeasurementRowsEnd - left : kCursorTitles * kMeasurementCursorWidth;
        const ControlDesign picture = TitlePicture(++number, left, width);
        rows.push_back(picture);
        for (int i = 0; i < kCursorTitles; ++i) {
            rows.push_back(Title(
                index++, {i * kMeasurementCursorWidth, 0, kMeasurementCursorWidth, kMeasurementRowHeight},
                QStringLiteral("@%1%2").arg(QLatin1String(letter)).arg(i + 1), picture.name));
        }
        left += kCursorTitles * kMeasurementCursorWidth;
    }
    return form;
}

} // namespace

const FormDesign& MeasurementDesign() {
    static const FormDesign design = BuildMeasurements();
    return design;
}
