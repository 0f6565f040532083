#include "gallery_pages.h"

#include "controls/button_control.h"
#include "controls/colour.h"
#include "controls/form.h"
#include "controls/host_hyperlink.h"
#include "controls/hyperlink_label.h"
#include "controls/knob_control.h"
#include "controls/slider_control.h"
#include "frame/window/all_forms.h"

#include <QApplication>
#include <QFocusEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace {

constexpr int kPageWidth = 980;
constexpr int kGap = 14;
constexpr int kPad = 7;
constexpr int kLegendHeight = 30;

QString Legend(const ControlDesign& row, const QString& form, const FontDesign& font) {
    const QString name = ControlName(row.name, row.index);
    QString legend = QStringLiteral("%1\n%2x%3").arg(name).arg(row.place.width()).arg(row.place.height());
    if (font.family != nullptr && row.kind != ControlKind::Slider && row.kind != ControlKind::HyperLink) {
        legend += QStringLiteral(" %1 %2").arg(QLatin1String(font.family)).arg(font.points);
    }
    return form.isEmpty() ? legend : QString(form).remove(QStringLiteral("Corvantine_")) + u'.' + legend;
}

Exhibit MakeExhibit(ControlDesign row, const QString& form, const FontDesign& formFont) {
    const FontDesign font = row.font.family == nullptr ? formFont : row.font;
    Exhibit exhibit;
    exhibit.legend = Legend(row, form, font);
    row.place.moveTo(0, 0);
    row.parent = nullptr;
    row.visible = true;
    row.font = font;
    exhibit.form.size = row.place.size();
    exhibit.form.font = font;
    exhibit.form.controls = {row};
    return exhibit;
}

bool Same(const ControlDesign& a, const ControlDesign& b) {
    return QLatin1String(a.name) == QLatin1String(b.name) && a.place.size() == b.place.size() &&
           a.caption == b.caption && a.fill == b.fill && a.back == b.back && a.properties == b.properties;
}

/// Every instance of a kind in the program's tables; what is the same on several panels once.
std::vector<Exhibit> Instances(ControlKind kind) {
    std::vector<Exhibit> exhibits;
    std::vector<ControlDesign> seen;
    for (const FormDesign& form : AllForms()) {
        for (const ControlDesign& row : form.controls) {
            const auto same = [&](const ControlDesign& other) { return Same(row, other); };
            if (row.kind == kind && std::none_of(seen.begin(), seen.end(), same)) {
                seen.push_back(row);
                exhibits.push_back(MakeExhibit(row, form.name, form.font));
            }
        }
    }
    return exhibits;
}

ControlDesign Button(QSize size, const QString& caption, const FontDesign& font) {
    return {.kind = ControlKind::Button,
            .name = "Button",
            .place = {{0, 0}, size},
            .caption = caption,
            .fill = 0x008000,
            .back = 0x707070,
            .fore = 0x00FF00,
            .font = font};
}

GalleryPage ButtonPage() {
    GalleryPage page{QStringLiteral("button"), Instances(ControlKind::Button)};
    auto show = [&](const ControlDesign& row, const QString& legend) -> Exhibit& {
        page.exhibits.push_back(MakeExhibit(row, {}, row.font));
        page.exhibits.back().legend = legend;
        return page.exhibits.back();
    };
    struct Step {
        int side;
        double points;
    };
    for (const Step step :
         {Step{15, 8.25}, Step{20, 8.25}, Step{24, 11.25}, Step{36, 15.75}, Step{72, 21.75}}) {
        for (const char* picture : {"0", "1", "2", "3", "4", "5", "6", "7", "8"}) {
            ControlDesign row =
                Button({step.side, step.side}, QString::fromLatin1(picture), SymbolFont(step.points));
            row.properties.emplace_back("ButtonDepth", step.side < 20 ? 1 : 2);
            show(row, QStringLiteral("\"%1\"\n%2 px").arg(QLatin1String(picture)).arg(step.side));
        }
    }
    for (int depth = 0; depth <= 4; ++depth) {
        for (bool sunk : {true, false}) {
            ControlDesign row = Button({44, 44}, QStringLiteral("on"), kPanelButtonFont);
            row.properties.emplace_back("ButtonDepth", depth);
            row.properties.emplace_back("ButtonSunk", sunk);
            const QString legend =
                QStringLiteral("depth %1%2").arg(depth).arg(QLatin1String(sunk ? "\nsunk" : ""));
            show(row, legend);
            if (sunk && depth > 0) {
                show(row, legend + QStringLiteral(", pressed")).pressed = true;
            }
        }
    }
    show(Button({30, 60}, QStringLiteral("tall"), kPanelButtonFont), QStringLiteral("tall"));
    show(Button({60, 30}, QStringLiteral("wide"), kPanelButtonFont), QStringLiteral("wide"));
    show(Button({44, 44}, QStringLiteral("clipboard"), kPanelButtonFont), QStringLiteral("too wide"));
    show(Button({24, 24}, QStringLiteral("4"), SymbolFont(11.25)), QStringLiteral("focus")).focus = true;
    show(Button({60, 60}, QStringLiteral("run"), kButtonFont), QStringLiteral("focus")).focus = true;
    return page;
}

GalleryPage SliderPage() {
    GalleryPage page{QStringLiteral("slider"), {}};
    for (const Exhibit& instance : Instances(ControlKind::Slider)) {
        page.exhibits.push_back(instance);
        for (double value : {0.0, 0.25, 1.0}) {
            Exhibit other = instance;
            other.form.controls[0].properties.emplace_back("SliderValue", value);
            other.legend = QStringLiteral("at %1").arg(value);
            page.exhibits.push_back(other);
        }
        Exhibit focused = instance;
        focused.focus = true;
        focused.legend = QStringLiteral("focus");
        page.exhibits.push_back(focused);
    }
    return page;
}

GalleryPage KnobPage() {
    GalleryPage page{QStringLiteral("knob"), Instances(ControlKind::Knob)};
    if (!page.exhibits.empty()) {
        Exhibit focused = page.exhibits.front();
        focused.focus = true;
        focused.legend = QStringLiteral("focus");
        page.exhibits.push_back(focused);
    }
    return page;
}

GalleryPage LinkPage() {
    GalleryPage page{QStringLiteral("link"), Instances(ControlKind::HyperLink)};
    if (!page.exhibits.empty()) {
        Exhibit focused = page.exhibits.front();
        focused.focus = true;
        focused.legend = QStringLiteral("focus");
        page.exhibits.push_back(focused);
    }
    return page;
}

/// The ground that a control has on its form.
QColor Plate(const ControlDesign& row) {
    return ToQColor(row.back != kNoColour && row.kind != ControlKind::Slider ? row.back : 0x707070);
}

void Listen(Form& form, const ControlDesign& row, const EventTeller& tell) {
    const QString name = ControlName(row.name, row.index);
    if (auto* knob = form.findChild<KnobControl1*>(name)) {
        QObject::connect(knob, &KnobControl1::Change,
                         [=] { tell(name + QStringLiteral(" Change %1").arg(knob->KnobValue())); });
        QObject::connect(knob, &KnobControl1::Done, [=] { tell(name + QStringLiteral(" Done")); });
    } else if (auto* button = form.findChild<ButtonControl1*>(name)) {
        QObject::connect(button, &ButtonControl1::Click, [=] { tell(name + QStringLiteral(" Click")); });
    } else if (auto* slider = form.findChild<SliderControl1*>(name)) {
        QObject::connect(slider, &SliderControl1::Change,
                         [=] { tell(name + QStringLiteral(" Change %1").arg(slider->SliderValue())); });
    } else if (auto* link = form.findChild<UserControl2*>(name)) {
        link->HyperLink()->SetOpener([=](const QString& target) {
            tell(name + QStringLiteral(" opens ") + target);
            return true;
        });
        QObject::connect(link, &UserControl2::Click,
                         [=] { link->HyperLink()->NavigateTo(QStringLiteral("http://localhost/")); });
    }
}

QSize CellSize(const Exhibit& exhibit, const QFontMetrics& metrics) {
    int width = exhibit.form.size.width() + 2 * kPad;
    for (const QString& line : exhibit.legend.split(u'\n')) {
        width = std::max(width, metrics.horizontalAdvance(line) + 2);
    }
    return {width, exhibit.form.size.height() + 2 * kPad + kLegendHeight};
}

void Pose(QWidget* control, const Exhibit& exhibit) {
    if (exhibit.focus) {
        QFocusEvent tab(QEvent::FocusIn, Qt::TabFocusReason);
        QApplication::sendEvent(control, &tab);
    }
    if (exhibit.pressed) {
        QMouseEvent press(QEvent::MouseButtonPress, {5, 5}, {5, 5}, Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(control, &press);
    }
}

void Hang(const Exhibit& exhibit, QRect cell, const EventTeller& tell, QWidget* wall) {
    auto* plate = new QWidget(wall);
    plate->setAutoFillBackground(true);
    QPalette palette;
    palette.setColor(QPalette::Window, Plate(exhibit.form.controls[0]));
    plate->setPalette(palette);
    const QSize size = exhibit.form.size + QSize(2 * kPad, 2 * kPad);
    plate->setGeometry({cell.topLeft(), size});
    auto* form = new Form(exhibit.form, plate);
    form->move(kPad, kPad);
    Listen(*form, exhibit.form.controls[0], tell);
    Pose(form->findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly), exhibit);

    auto* legend = new QLabel(exhibit.legend, wall);
    legend->setFont(wall->font());
    legend->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    legend->setGeometry(cell.x(), cell.y() + size.height() + 2, cell.width(), kLegendHeight);
}

} // namespace

std::vector<GalleryPage> GalleryPages() {
    return {KnobPage(), ButtonPage(), SliderPage(), LinkPage()};
}

QWidget* BuildPage(const GalleryPage& page, const EventTeller& tell, QWidget* parent) {
    auto* wall = new QWidget(parent);
    wall->setObjectName(page.name);
    QFont font;
    font.setPixelSize(10);
    wall->setFont(font);
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0x34, 0x37, 0x3C));
    palette.setColor(QPalette::WindowText, QColor(0xD8, 0xD8, 0xD8));
    wall->setPalette(palette);
    wall->setAutoFillBackground(true);

    const QFontMetrics metrics(font);
    QPoint next(kGap, kGap);
    int rowHeight = 0;
    for (const Exhibit& exhibit : page.exhibits) {
        const QSize size = CellSize(exhibit, metrics);
        if (next.x() + size.width() > kPageWidth && next.x() > kGap) {
            next = {kGap, next.y() + rowHeight + kGap};
            rowHeight = 0;
        }
        Hang(exhibit, {next, size}, tell, wall);
        next.rx() += size.width() + kGap;
        rowHeight = std::max(rowHeight, size.height());
    }
    wall->setFixedSize(kPageWidth + kGap, next.y() + rowHeight + kGap);
    return wall;
}
