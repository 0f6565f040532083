#include "analysis/measurement_design.h"

#include "frame/record/record.h"

namespace {

struct Column {
    int left;
    int width;
    const char* title;
};

// In pixels of the window; they stand over the labels of the rows.
constexpr Column kColumns[] = {
    {2, 19, "Ch"}, {21, 32, "V/div"}, {53, 44, "Vavg"}, {97, 50, "Vpk-pk"}, {147, 64, "Freq"}};
constexpr int kCursorLeft = 212;
constexpr int kCursorPitch = 43;
constexpr int kCursorTitles = 3;
constexpr int kRowsEnd = 475;
constexpr int kTop = 3;
constexpr int kHeight = 17;

ControlDesign TitlePicture(int number, int left, int width) {
    static const char* const kNames[] = {"Picture1", "Picture2", "Picture3", "Picture4",
                                         "Picture5", "Picture6", "Picture7"};
    return {.kind = ControlKind::Picture,
            .name = kNames[number - 1],
            .place = {left, kTop, width, kHeight},
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
    FormDesign form{.name = "Corvantine_StatsForm",
                    .caption = "Corvantine measurements",
                    .size = {477, 17 * kScopeChannels + 64},
                    .back = 0x363230,
                    .ground = "figures"};
    auto& rows = form.controls;
    int number = 0;
    for (const Column& column : kColumns) {
        rows.push_back(TitlePicture(++number, column.left, column.width));
        rows.push_back(Title(number - 1, {0, 0, column.width, kHeight}, column.title, rows.back().name));
    }
    int index = number;
    int left = kCursorLeft;
    for (const char* letter : {"v", "t"}) {
        // The last reaches to the end of the rows.
        const int width = letter[0] == 't' ? kRowsEnd - left : kCursorTitles * kCursorPitch;
        const ControlDesign picture = TitlePicture(++number, left, width);
        rows.push_back(picture);
        for (int i = 0; i < kCursorTitles; ++i) {
            rows.push_back(Title(index++, {i * kCursorPitch, 0, kCursorPitch, kHeight},
                                 QStringLiteral("@%1%2").arg(QLatin1String(letter)).arg(i + 1),
                                 picture.name));
        }
        left += kCursorTitles * kCursorPitch;
    }
    return form;
}

} // namespace

const FormDesign& MeasurementDesign() {
    static const FormDesign design = BuildMeasurements();
    return design;
}
