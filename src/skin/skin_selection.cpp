#include "skin/skin_selection.h"

#include "controls/button_control.h"
#include "controls/colour.h"
#include "controls/form.h"
#include "controls/knob_control.h"
#include "controls/picture.h"
#include "controls/slider_control.h"
#include "frame/log/debug_log.h"
#include "frame/record/record.h"
#include "skin/fine_skin.h"
#include "skin/plain_face.h"
#include "skin/skin_bitmap.h"
#include "skin/trace.h"

#include <QCoreApplication>
#include <QDir>
#include <QListWidget>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace {

const QString kPrefix = QStringLiteral("Corvantine_skin_");
const QString kSuffix = QStringLiteral(".bmp");

Form* FormOf(const QWidget& control) {
    for (QWidget* widget = control.parentWidget(); widget != nullptr; widget = widget->parentWidget()) {
        if (auto* form = qobject_cast<Form*>(widget)) {
            return form;
        }
    }
    return nullptr;
}

template <class T, std::size_t N> std::array<T*, N> Controls(Form& main, const char* const (&names)[N]) {
    std::array<T*, N> found;
    std::transform(std::begin(names), std::end(names), found.begin(),
                   [&](const char* name) { return main.control<T>(name); });
    return found;
}

} // namespace

bool SetWindowEffects(DebugLog& log, cDIBSection& sharedDIB, const Picture& image, Colour transparent,
                      cDIBSectionRegion& region) {
    Form* form = FormOf(image);
    Trace trace(
        log, QStringLiteral("SetWindowEffects"),
        QStringLiteral("i:%1.%2").arg(form == nullptr ? QString() : form->objectName(), image.objectName()));
    // Without a picture there is nothing to cut a shape from, and an outline of nothing would hide the form.
    if (form == nullptr ||
        !sharedDIB.CreateFromPictureStretchBlt(image.Image().toImage(), image.width(), image.height()) ||
        !region.Create(sharedDIB, transparent)) {
        return false;
    }
    region.SetApplied(form, true);
    return true;
}

SkinControls SkinControls::Of(Form& main) {
    SkinControls c;
    c.main = &main;
    c.Image1 = main.control<Picture>("Image1");
    c.SkinFiles = main.control<QListWidget>("SkinFiles");
    c.SkinColourList = main.control<QListWidget>("SkinColourList");
    c.SkinColourImage = main.control<Picture>("SkinColourImage");
    c.RunTimer = main.timer("RunTimer");
    c.VertCursorBar = main.control<Picture>("VertCursorBar");
    c.HorizCursorBar = main.control<Picture>("HorizCursorBar");
    c.runButtons = Controls<ButtonControl1>(main, {"RunButton", "OnceButton"});
    c.buttons = Controls<ButtonControl1>(main, {"TrigModeButton", "TrigTypeButton", "CloseButton",
                                                "MinimiseButton", "MinimiseMostlyButton", "UsersGuideButton",
                                                "FullScreenButton", "NormaliseButton", "SampleDotsButton"});
    c.knobs = Controls<KnobControl1>(main, {"HorizZoomKnob", "TimeBaseKnob", "TriggerKnob", "VertZoomKnob"});
    c.sliders = Controls<SliderControl1>(main, {"HorizPanSlider", "VertPanSlider", "PretriggerSlider"});
    return c;
}

SkinSelection::SkinSelection(Record& record, DebugLog& log, const SkinControls& controls, QString folder,
                             cDIBSection& sharedDIB, cDIBSectionRegion& mainRegion, Calls calls)
    : record_(record), log_(log), controls_(controls), folder_(std::move(folder)), sharedDIB_(sharedDIB),
      mainRegion_(mainRegion), calls_(std::move(calls)) {
    if (!calls_.doEvents) {
        calls_.doEvents = [] { QCoreApplication::processEvents(); };
    }
    if (!calls_.sleep) {
        calls_.sleep = [](int milliseconds) { QThread::msleep(static_cast<unsigned long>(milliseconds)); };
    }
    QWidget* image = controls_.SkinColourImage;
    connect(controls_.SkinColourImage, &Picture::MouseUp, this,
            [this, image](Qt::MouseButton, QPoint position) {
                if (image->rect().contains(position)) {
                    SkinColourImage_Click();
                }
            });
}

QString SkinSelection::FileOf(const QString& name) const {
    return QDir(folder_ + QStringLiteral("/skins")).filePath(kPrefix + name + kSuffix);
}

void SkinSelection::ListSkins() {
    const QDir skins(folder_ + QStringLiteral("/skins"));
    // A name is put together again from its parts, so only names in this very spelling count.
    const QStringList files =
        skins.entryList({kPrefix + QLatin1Char('*') + kSuffix}, QDir::Files | QDir::CaseSensitive,
                        QDir::Name | QDir::IgnoreCase);
    controls_.SkinFiles->clear();
    controls_.SkinFiles->addItems(files);
    controls_.SkinColourList->clear();
    log_.PrintLog(QStringLiteral("Listing skins"));
    for (const QString& file : files) {
        controls_.SkinColourList->addItem(file.mid(kFirstNameCharacter - 1).chopped(kSuffix.size()));
    }
    controls_.SkinColourImage->setVisible(!files.isEmpty());
    controls_.SkinColourList->setCurrentRow(files.isEmpty() ? -1 : 0);
    for (int i = 0; i < files.size() && controls_.Image1->Image().isNull(); ++i) {
        const QString file = skins.filePath(files[i]);
        const QImage skin = LoadSkinBitmap(file);
        if (!skin.isNull()) {
            controls_.Image1->SetPicture(QPixmap::fromImage(skin));
            controls_.Image1->SetDrawing(FineSkinDrawing(file, controls_.Image1->Image()));
        }
    }
    if (controls_.Image1->Image().isNull()) {
        controls_.Image1->SetPicture(PlainFace(controls_.Image1->size()));
        plainFace_ = true;
    }
}

void SkinSelection::DressPlainFace() {
    if (plainFace_) {
        ColourControls();
    }
}

void SkinSelection::SkinColourImage_Click() {
    const int count = controls_.SkinColourList->count();
    // The events that a change lets through must not start another one inside it.
    if (count == 0 || busy_) {
        return;
    }
    ++SkinIndex;
    if (SkinIndex >= count) {
        SkinIndex = 0;
    }
    SetControlColorsToMatchSkin();
}

void SkinSelection::SetControlColorsToMatchSkin() {
    if (busy_) {
        return;
    }
    log_.PrintLog(QStringLiteral(">>> main.SetControlColorsToMatchSkin()"));
    if (controls_.SkinColourList->count() == 0) {
        log_.PrintLog(QStringLiteral("<<< main.SetControlColorsToMatchSkin"));
        return;
    }
    busy_ = true;
    log_.IncIndent();
    if (record_.Running) {
        controls_.RunTimer->stop();
    }
    if (ChangeFace() && record_.Running) {
        controls_.RunTimer->start();
    }
    log_.DecIndent();
    busy_ = false;
}

bool SkinSelection::ChangeFace() {
    HideControls();
    if (!GoesOn()) {
        return false;
    }
    const bool applied = ApplySkin();
    if (applied) {
        if (!GoesOn()) {
            return false;
        }
        ColourControls();
    }
    if (!ShowControls()) {
        return false;
    }
    if (applied) {
        calls_.sleep(kSettleTime);
    }
    return true;
}

bool SkinSelection::GoesOn() {
    calls_.doEvents();
    return !calls_.closing || !calls_.closing();
}

bool SkinSelection::ApplySkin() {
    const QPixmap former = controls_.Image1->Image();
    QString file;
    if (SkinIndex >= 0) {
        const QListWidgetItem* item = controls_.SkinColourList->item(SkinIndex);
        file = item == nullptr ? QString() : FileOf(item->text());
        const QImage skin = LoadSkinBitmap(file);
        if (skin.isNull()) {
            return false;
        }
        controls_.Image1->SetPicture(QPixmap::fromImage(skin));
        plainFace_ = false;
    }
    if (SetWindowEffects(log_, sharedDIB_, *controls_.Image1, kSkinKey, mainRegion_)) {
        if (!file.isEmpty()) {
            controls_.Image1->SetDrawing(FineSkinDrawing(file, controls_.Image1->Image()));
        }
        return true;
    }
    controls_.Image1->SetPicture(former);
    return false;
}

void SkinSelection::HideControls() {
    controls_.VertCursorBar->hide();
    controls_.HorizCursorBar->hide();
    for (ButtonControl1* button : controls_.buttons) {
        button->SetButtonVisible(false);
    }
    for (ButtonControl1* again : {controls_.buttons[0], controls_.buttons[1]}) {
        again->SetButtonVisible(false);
    }
    for (KnobControl1* knob : controls_.knobs) {
        knob->SetKnobVisible(false);
    }
    for (SliderControl1* slider : controls_.sliders) {
        slider->SetSliderVisible(false);
    }
}

void SkinSelection::ColourControls() {
    auto sample = [this](const QWidget* control) { return ToQColor(SkinColourAt(*control)); };
    for (Picture* bar : {controls_.VertCursorBar, controls_.HorizCursorBar}) {
        bar->SetBackColor(sample(bar));
    }
    for (ButtonControl1* button : controls_.runButtons) {
        button->SetButtonBackColor(sample(button));
    }
    for (ButtonControl1* button : controls_.buttons) {
        button->SetButtonBackColor(sample(button));
    }
    for (ButtonControl1* button : {controls_.buttons[0], controls_.buttons[1]}) {
        button->SetButtonFillColor(sample(button));
    }
    for (KnobControl1* knob : controls_.knobs) {
        knob->SetKnobBorderColor(sample(knob));
    }
    const auto& [horizZoom, timeBase, trigger, vertZoom] = controls_.knobs;
    for (KnobControl1* knob : {timeBase, trigger, vertZoom, horizZoom}) {
        knob->SetKnobFillColor(ToQColor(BrightenedSkinColour(*knob)));
    }
    for (SliderControl1* slider : controls_.sliders) {
        slider->SetSliderFillColor(sample(slider));
    }
}

bool SkinSelection::ShowControls() {
    controls_.VertCursorBar->show();
    controls_.HorizCursorBar->show();
    for (ButtonControl1* button : controls_.buttons) {
        button->SetButtonVisible(true);
    }
    if (!GoesOn()) {
        return false;
    }
    for (ButtonControl1* again : {controls_.buttons[0], controls_.buttons[1]}) {
        again->SetButtonVisible(true);
    }
    for (KnobControl1* knob : controls_.knobs) {
        knob->SetKnobVisible(true);
    }
    for (SliderControl1* slider : controls_.sliders) {
        slider->SetSliderVisible(true);
    }
    return true;
}

Colour SkinSelection::GetDIBPixel(int X, int Y) const {
    return sharedDIB_.Pixel(X, Y);
}

Colour SkinSelection::SkinColourAt(const QWidget& control) const {
    const QPoint place = control.mapTo(controls_.main, QPoint(0, 0));
    const QPoint at = SamplePoint({place, control.size()});
    return GetDIBPixel(at.x(), at.y());
}

Colour SkinSelection::BrightenedSkinColour(const QWidget& control) const {
    return Brightened(SkinColourAt(control));
}
