// Builds every form from its table and writes a picture of it, for the eyes of whoever changes the look:
//   corvantine_form_shots <folder of the skins> <folder for the pictures> [skin]
// QT_SCALE_FACTOR=2 gives the pictures of a fine screen.
#include "controls/button_control.h"
#include "controls/face_style.h"
#include "controls/form.h"
#include "controls/knob_control.h"
#include "controls/panel_picture.h"
#include "controls/picture.h"
#include "controls/slider_control.h"
#include "controls/symbol_font.h"
#include "frame/window/all_forms.h"
#include "frame/window/main_form_design.h"
#include "skin/fine_skin.h"

#include <QApplication>
#include <QBitmap>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QTest>
#include <cmath>
#include <memory>
#include <numbers>

namespace {

/// Stands where the plot will be, with something like a plot on it.
class PlotSketch : public QWidget {
  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::black);
        painter.setPen(QPen(QColor(0, 0, 0xC0), 1, Qt::DotLine));
        for (int i = 0; i <= 20; ++i) {
            const int y = i * (height() - 1) / 20;
            painter.drawLine(0, y, width(), y);
        }
        for (int i = 0; i <= 30; ++i) {
            const int x = i * (width() - 1) / 30;
            painter.drawLine(x, 0, x, height());
        }
        const QColor colours[] = {Qt::yellow, QColor(0x1B, 0xE2, 0xFF), QColor(0xFF, 0x1B, 0xF7),
                                  QColor(0x1B, 0xFF, 0x86)};
        for (int channel = 0; channel < 4; ++channel) {
            painter.setPen(QPen(colours[channel], 2));
            QPoint last;
            for (int x = 0; x < width(); ++x) {
                const double phase = 2 * std::numbers::pi * (channel + 2.0) * x / width();
                const double wave = channel == 1 ? (std::sin(phase) > 0 ? 1 : -1) : std::sin(phase);
                const QPoint next(x, static_cast<int>(height() * (0.2 + 0.2 * channel - 0.08 * wave)));
                if (x > 0) {
                    painter.drawLine(last, next);
                }
                last = next;
            }
        }
    }
};

QWidget* MakeSketch(QWidget* parent) {
    return new PlotSketch(parent);
}

QColor Brighter(const QColor& colour) {
    const auto up = [](int value) { return std::min(255, value + 0x20); };
    return {up(colour.red()), up(colour.green()), up(colour.blue())};
}

/// Gives the controls of the face the colours under their centres.
void Colour(const Form& face, const QImage& skin) {
    const auto sample = [&](const QWidget* widget) {
        const QRectF place(widget->geometry());
        return skin.pixelColor(static_cast<int>(std::nearbyint(place.x() + 0.5 * place.width())),
                               static_cast<int>(std::nearbyint(place.y() + 0.5 * place.height())));
    };
    for (auto* bar : {face.control<Picture>("VertCursorBar"), face.control<Picture>("HorizCursorBar")}) {
        bar->SetBackColor(sample(bar));
    }
    for (auto* button : face.findChildren<ButtonControl1*>(Qt::FindDirectChildrenOnly)) {
        button->SetButtonBackColor(sample(button));
    }
    for (const char* name : {"TrigModeButton", "TrigTypeButton"}) {
        auto* button = face.control<ButtonControl1>(name);
        button->SetButtonFillColor(sample(button));
    }
    for (auto* knob : face.findChildren<KnobControl1*>(Qt::FindDirectChildrenOnly)) {
        knob->SetKnobBorderColor(sample(knob));
        knob->SetKnobFillColor(Brighter(sample(knob)));
    }
    for (auto* slider : face.findChildren<SliderControl1*>(Qt::FindDirectChildrenOnly)) {
        slider->SetSliderFillColor(sample(slider));
    }
}

/// What the program writes into labels and lists at run time, at its longest.
void Fill(const Form& form) {
    const auto text = [&](const char* name, const QString& value) {
        if (auto* label = form.findChild<QLabel*>(name)) {
            label->setText(value);
        }
    };
    text("AcqModeLabel",
         "Acquistion mode: RIS (repetitive inputs, norm trig only, effective sample interval: "
         "1ns)");
    text("TriggerStatusLabel", "trigger ?.....");
    text("DelayLabel", "32.767ms");
    text("VersionText", "Ver1.0.0");
    text("ScopeSettingsLabel", "HORZ:1us/div VERT: CH1:0.03V/div(bw) CH2:0.3V/div CH3:30V/div CH4:3V/div");
    text("FFTStatsMag", "HORZ: 1250000Hz/div VERT: 3dB/div, Full-scale Ranges:  CH1:±0.3V CH2:±3V");
    text("FFTStatsFreq", "Cursor@ FREQ: 12.50MHz MAG: -12.3dB, CH1: -23.4dB CH2: -45.6dB");
    text("OtherInfoLabel", "Corvantine Ver1.0.0.  DATA ACQUIRED AT: 21/11/2026 14:05:33");
    for (int i = 0; i < 6; ++i) {
        const char* lines[] = {
            "Corvantine",           "loading...", "found 4 x Corvantines", "starting channel 4...",
            "Detected O.S.: Win ?", "Ver1.0.0"};
        if (auto* label = form.findChild<QLabel*>(ControlName("Label1", i))) {
            label->setText(lines[i]);
        }
    }
    if (auto* field = form.findChild<QLineEdit*>("CurrentNullText")) {
        field->setText("0.3 Volts/Div offset = -1.250 ADC steps");
    }
    const QColor colours[] = {Qt::yellow, QColor(0x1B, 0xE2, 0xFF), QColor(0xFF, 0x1B, 0xF7),
                              QColor(0x1B, 0xFF, 0x86)};
    for (int channel = 1; channel <= 4; ++channel) {
        if (auto* box = form.findChild<QCheckBox*>(ControlName("SaveCh", channel))) {
            QPalette palette = box->palette();
            palette.setColor(QPalette::Window, colours[channel - 1]);
            box->setPalette(palette);
        }
    }
    for (auto* combo : form.findChildren<QComboBox*>()) {
        combo->addItems(combo->objectName() == "FFTWindowCombo" ? QStringList{"Rectangular"}
                        : combo->objectName().endsWith("(1)")   ? QStringList{"+", "-", "x", "÷"}
                                                                : QStringList{"1", "2", "3", "4"});
    }
    for (auto* list : form.findChildren<QListWidget*>()) {
        list->addItems({"1:CV000017 2A 1F", "2:CV000023 2A 1F", "3:CV000024 2B 20", "4:CV000031 2B 20"});
    }
}

class Shots {
  public:
    Shots(const QDir& skins, const QDir& out) : skins_(skins), out_(out) {}

    void Windows() {
        for (const FormDesign& design : AllForms()) {
            Form form(design, nullptr, MakeSketch);
            Fill(form);
            Show(form);
            Save(form, design.name);
        }
    }

    /// The face with its panels behind it, all closed or one pulled out.
    void Face(const QString& skinFile, const QString& openPanel) {
        const FormDesign& design = MainFormDesign();
        QWidget desk;
        QPalette palette = desk.palette();
        palette.setColor(QPalette::Window, QColor(0x5B, 0x7F, 0xA6));
        desk.setPalette(palette);
        const QRect anchor = AnchorPlace(design);
        const QPoint origin(24, 24);
        std::vector<std::unique_ptr<Form>> panels;
        for (const FormDesign& panel : AllPanels()) {
            auto form = std::make_unique<Form>(panel, &desk);
            Fill(*form);
            const QImage shape = form->control<Picture>("Image2")->Image().toImage();
            form->setMask(Mask(shape));
            const bool open = panel.name == openPanel;
            form->move(origin + anchor.topLeft() + QPoint(open ? anchor.width() : 0, 0));
            if (open) {
                form->raise();
            }
            panels.push_back(std::move(form));
        }
        Form face(design, &desk, MakeSketch);
        Fill(face);
        for (const char* name : {"VertCursorHandle", "HorizCursorHandle"}) {
            for (int i = 0; i < 3; ++i) {
                face.control<Picture>(name, i)->setVisible(true);
            }
        }
        face.move(origin);
        const QImage skin(skins_.filePath(skinFile));
        if (!skin.isNull()) {
            face.control<Picture>("Image1")->SetPicture(QPixmap::fromImage(skin));
            face.control<Picture>("Image1")->SetDrawing(
                FineSkinDrawing(skins_.filePath(skinFile), QPixmap::fromImage(skin)));
            face.setMask(Mask(skin));
            Colour(face, skin);
        }
        desk.resize(design.size.width() + 48 + 260, design.size.height() + 48);
        Show(desk);
        Save(desk, "face_" + QString(skinFile).remove("Corvantine_skin_").remove(".bmp") +
                       (openPanel.isEmpty() ? QString() : "_" + openPanel));
    }

  private:
    static QRect AnchorPlace(const FormDesign& design) {
        for (const ControlDesign& row : design.controls) {
            if (QLatin1String(row.name) == QLatin1String("TabSliderAnchorImage")) {
                return row.place;
            }
        }
        return {};
    }

    static QBitmap Mask(const QImage& picture) {
        return QBitmap::fromImage(
            picture.createMaskFromColor(picture.pixel(picture.width() - 1, 0), Qt::MaskInColor));
    }

    static void Show(QWidget& widget) {
        widget.show();
        QTest::qWait(250); // the controls draw behind a timer
    }

    void Save(QWidget& widget, const QString& name) {
        const double ratio = widget.devicePixelRatioF();
        const QString file = out_.filePath(QStringLiteral("%1@%2x.png").arg(name).arg(ratio));
        widget.grab().save(file);
        std::printf("%s\n", qPrintable(file));
    }

    QDir skins_;
    QDir out_;
};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    LoadSymbolFont();
    ApplyFaceStyle(application);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 3) {
        std::fprintf(stderr, "usage: corvantine_form_shots <skins> <out> [skin file]\n");
        return 1;
    }
    const QDir skins(arguments[1]);
    Shots shots(skins, QDir(arguments[2]));
    QStringList files = skins.entryList({"Corvantine_skin_*.bmp"}, QDir::Files, QDir::Name);
    if (arguments.size() > 3) {
        files = {arguments[3]};
    }
    shots.Windows();
    for (const QString& file : files) {
        shots.Face(file, {});
    }
    for (const FormDesign& panel : AllPanels()) {
        shots.Face(files.value(0), panel.name);
    }
    return 0;
}
