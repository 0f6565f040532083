#include "controls/control_maker.h"

#include "controls/button_control.h"
#include "controls/colour.h"
#include "controls/face_pictures.h"
#include "controls/fonts.h"
#include "controls/hyperlink_label.h"
#include "controls/knob_control.h"
#include "controls/panel_picture.h"
#include "controls/picture.h"
#include "controls/rotated_label.h"
#include "controls/slider_control.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>

QFont MakeFont(const FontDesign& design, const QFont& formFont) {
    if (design.family == nullptr) {
        return formFont;
    }
    return InstrumentFont(QString::fromLatin1(design.family), design.points, design.bold);
}

void SetColours(QWidget* widget, Colour back, Colour fore) {
    QPalette palette = widget->palette();
    if (back != kNoColour) {
        for (auto role : {QPalette::Window, QPalette::Base, QPalette::Button}) {
            palette.setColor(role, ToQColor(back));
        }
        widget->setAutoFillBackground(true);
    }
    if (fore != kNoColour) {
        for (auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
            palette.setColor(role, ToQColor(fore));
        }
    }
    widget->setPalette(palette);
}

namespace {

constexpr QLatin1String kDrawing("drawing");

QVariantMap Bag(const ControlDesign& row, const char* fill, const char* back, const char* fore,
                const char* fontKey, const QFont& font) {
    QVariantMap bag;
    auto colour = [&](const char* key, Colour value) {
        if (key != nullptr && value != kNoColour) {
            bag[QString::fromLatin1(key)] = ToQColor(value);
        }
    };
    colour(fill, row.fill);
    colour(back, row.back);
    colour(fore, row.fore);
    if (fontKey != nullptr) {
        const QString key = QString::fromLatin1(fontKey);
        bag[key + QStringLiteral("_Name")] = font.family();
        bag[key + QStringLiteral("_Size")] = FontPoints(font);
        bag[key + QStringLiteral("_Bold")] = font.bold();
    }
    for (const auto& [name, value] : row.properties) {
        bag[QString::fromLatin1(name)] = value;
    }
    return bag;
}

template <class T> T* Captioned(const ControlDesign& row, QWidget* parent) {
    auto* widget = new T(parent);
    widget->setText(row.caption);
    widget->setBackgroundRole(QPalette::Window); // the buttons among them have another
    SetColours(widget, row.back, row.fore);
    return widget;
}

/// Of a field with round corners, which stay the panel's.
void SetFieldColours(QWidget* field, Colour back, Colour fore) {
    SetColours(field, kNoColour, fore);
    if (back != kNoColour) {
        QPalette palette = field->palette();
        palette.setColor(QPalette::Base, ToQColor(back));
        field->setPalette(palette);
    }
}

QWidget* MakeCombo(const ControlDesign& row, QWidget* parent) {
    auto* combo = new QComboBox(parent);
    for (const auto& [key, value] : row.properties) {
        if (QLatin1String(key) == QLatin1String("items")) {
            combo->addItems(value.toStringList());
        }
    }
    SetFieldColours(combo, row.back, row.fore);
    return combo;
}

/// Custom controls take their properties in one go, in the order that they need; pictures and lists make
/// something else of them.
bool ReadsDesignKeys(ControlKind kind) {
    return kind == ControlKind::Knob || kind == ControlKind::Button || kind == ControlKind::Slider ||
           kind == ControlKind::HyperLink || kind == ControlKind::Picture || kind == ControlKind::ComboBox;
}

QWidget* MakePicture(const ControlDesign& row, QWidget* parent, const FormDesign& form) {
    auto* picture = new Picture(parent);
    if (row.back != kNoColour) {
        picture->SetBackColor(ToQColor(row.back));
    }
    for (const auto& [key, value] : row.properties) {
        if (QLatin1String(key) == kDrawing) {
            picture->SetDrawing(FindDrawing(value.toString(), form));
            if (value.toString() == QLatin1String("panel")) {
                picture->SetPicture(QPixmap::fromImage(PanelShapePicture(form)));
            }
        }
    }
    return picture;
}

QWidget* MakeWidget(const ControlDesign& row, QWidget* parent, const QFont& font, const FormDesign& form,
                    const Form::CanvasMaker& makeCanvas) {
    switch (row.kind) {
    case ControlKind::Knob: {
        auto* knob = new KnobControl1(parent);
        knob->ReadProperties(Bag(row, "KnobFillColor", "KnobBorderColor", "KnobTextColor", "KnobFont", font));
        return knob;
    }
    case ControlKind::Button: {
        auto* button = new ButtonControl1(parent);
        QVariantMap bag =
            Bag(row, "ButtonFillColor", "ButtonBackColor", "ButtonForeColor", "ButtonFont", font);
        bag[QStringLiteral("ButtonCaption")] = row.caption;
        button->ReadProperties(bag);
        return button;
    }
    case ControlKind::Slider: {
        auto* slider = new SliderControl1(parent);
        slider->ReadProperties(Bag(row, "SliderFillColor", nullptr, nullptr, nullptr, font));
        return slider;
    }
    case ControlKind::HyperLink: {
        auto* link = new UserControl2(parent);
        QVariantMap bag = Bag(row, nullptr, "BackColor", nullptr, nullptr, font);
        const FaceDrawing drawing = FindDrawing(bag.take(kDrawing).toString(), form);
        if (drawing) {
            bag[QStringLiteral("Picture")] =
                RenderDrawing(drawing, row.place.size(), link->devicePixelRatioF());
        }
        link->ReadProperties(bag);
        return link;
    }
    case ControlKind::Label: {
        auto* label = Captioned<QLabel>(row, parent);
        label->setTextFormat(Qt::PlainText); // a text from elsewhere may look like markup
        return label;
    }
    case ControlKind::RotatedLabel:
        return Captioned<RotatedLabel>(row, parent);
    case ControlKind::CheckBox:
        return Captioned<QCheckBox>(row, parent);
    case ControlKind::OptionButton:
        return Captioned<QRadioButton>(row, parent);
    case ControlKind::TextBox: {
        auto* text = new QLineEdit(row.caption, parent);
        SetFieldColours(text, row.back, row.fore);
        return text;
    }
    case ControlKind::ComboBox:
        return MakeCombo(row, parent);
    case ControlKind::ListBox: {
        auto* list = new QListWidget(parent);
        SetFieldColours(list, row.back, row.fore);
        return list;
    }
    case ControlKind::Line: {
        auto* line = new QFrame(parent);
        line->setAttribute(Qt::WA_TransparentForMouseEvents); // what lies under it takes the mouse
        SetColours(line, row.back, row.fore);
        return line;
    }
    case ControlKind::Picture:
    case ControlKind::Frame:
        return MakePicture(row, parent, form);
    case ControlKind::Canvas:
        return makeCanvas ? makeCanvas(parent) : new QWidget(parent);
    }
    return nullptr;
}

} // namespace

QWidget* MakeControl(const ControlDesign& row, QWidget* parent, const QFont& font, const FormDesign& form,
                     const Form::CanvasMaker& makeCanvas) {
    QWidget* widget = MakeWidget(row, parent, font, form, makeCanvas);
    widget->setFont(font);
    widget->setToolTip(row.tip);
    if (!ReadsDesignKeys(row.kind)) {
        for (const auto& [key, value] : row.properties) {
            widget->setProperty(key, value);
        }
    }
    return widget;
}
