#include "controls/fonts.h"
#include "frame/window/main_form_design.h"
#include "layout_rows.h"

#include <QFontMetricsF>
#include <gtest/gtest.h>

namespace {

TEST(Layout, EverythingThatAnswersTheHandHasAToolTip) {
    for (const FormDesign& form : AllForms()) {
        for (const ControlDesign& row : form.controls) {
            switch (row.kind) {
            case ControlKind::Knob:
            case ControlKind::Button:
            case ControlKind::Slider:
            case ControlKind::HyperLink:
            case ControlKind::CheckBox:
            case ControlKind::OptionButton:
            case ControlKind::ComboBox:
            case ControlKind::TextBox:
                EXPECT_FALSE(row.tip.isEmpty()) << Where(form, row);
                break;
            case ControlKind::ListBox:
                EXPECT_TRUE(!row.tip.isEmpty() || !row.visible) << Where(form, row);
                break;
            default:
                break;
            }
        }
        if (IsPanel(form)) {
            EXPECT_FALSE(Find(form, "Image1")->tip.isEmpty()) << form.name.toStdString();
        }
    }
}

/// Room that a row of that kind has for its caption.
QSizeF CaptionRoom(const ControlDesign& row) {
    constexpr double kLamp = 14 + 6 + 2; // indicator, gap and a hair
    switch (row.kind) {
    case ControlKind::CheckBox:
    case ControlKind::OptionButton:
        return {row.place.width() - kLamp, double(row.place.height())};
    case ControlKind::RotatedLabel:
        return QSizeF(row.place.size()).transposed();
    case ControlKind::Button:
        return {row.place.width() - 8.0, row.place.height() - 2.0}; // within the rings
    default:
        return row.place.size();
    }
}

TEST(Layout, CaptionsFitTheirControls) {
    for (const FormDesign& form : AllForms()) {
        for (const ControlDesign& row : form.controls) {
            const FontDesign& design = row.font.family == nullptr ? form.font : row.font;
            // The symbols' font is the controls' own business.
            if (row.caption.isEmpty() || QLatin1String(design.family) == QLatin1String("Corvantine")) {
                continue;
            }
            const QFont font = InstrumentFont(QString::fromLatin1(design.family), design.points, design.bold);
            const QFontMetricsF metrics(font);
            const QSizeF room = CaptionRoom(row);
            const QRectF box = metrics.boundingRect(QRectF(QPointF(0, 0), room),
                                                    Qt::TextWordWrap | Qt::AlignLeft, row.caption);
            const bool wraps = Name(row) == "InstructionsLabel" || Name(row).endsWith("Note");
            EXPECT_LE(wraps ? box.width() : metrics.horizontalAdvance(row.caption), room.width() + 0.5)
                << Where(form, row) << " " << row.caption.toStdString();
            EXPECT_LE(wraps ? box.height() : metrics.height(), room.height() + 0.5) << Where(form, row);
        }
    }
}

TEST(Layout, RunTimeTextsFitTheirLabels) {
    const struct {
        const char* name;
        const char* text;
    } texts[] = {
        {"AcqModeLabel",
         "Acquistion mode: RIS (repetitive inputs, norm trig only, effective sample interval: 1ns)"},
        {"AcqModeLabel", "Acquistion mode: Single-shot (sample interval: 400us, refresh mode)"},
        {"AcqModeLabel", "Acquistion mode: Single-shot (sample interval: 40ms, roll mode)"},
        {"TriggerStatusLabel", "trigger !....."},
        {"TriggerStatusLabel", "acquiring"},
        {"DemoLabel", "No Scopes In Use !"},
        {"DemoLabel", "DEBUG MODE !"},
        {"DemoLabel", "Demo Mode !"},
    };
    const FormDesign& form = MainFormDesign();
    for (const auto& [name, text] : texts) {
        const ControlDesign* row = Find(form, name);
        ASSERT_NE(row, nullptr) << name;
        const FontDesign& design = row->font.family == nullptr ? form.font : row->font;
        const QFontMetricsF metrics(
            InstrumentFont(QString::fromLatin1(design.family), design.points, design.bold));
        const QRectF box = metrics.boundingRect(QRectF(QPointF(0, 0), QSizeF(row->place.size())),
                                                Qt::TextWordWrap, QString::fromLatin1(text));
        EXPECT_LE(box.width(), row->place.width()) << text;
        EXPECT_LE(box.height(), row->place.height()) << text;
    }
}

} // namespace
