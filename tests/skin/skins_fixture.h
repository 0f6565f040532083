#pragma once

#include "bitmap_files.h"
#include "controls/button_control.h"
#include "controls/colour.h"
#include "controls/knob_control.h"
#include "controls/slider_control.h"
#include "frame/record/record.h"
#include "log_book.h"
#include "skin/skin_selection.h"
#include "toy_instrument.h"

#include <QDir>
#include <QListWidget>
#include <QTimer>
#include <QtTest/QTest>
#include <gtest/gtest.h>

inline const QString kSkin = QStringLiteral("Corvantine_skin_%1.bmp");

/// A face in its folder; whatever a skin change does is written down in its order.
class Skins : public testing::Test {
  protected:
    explicit Skins(bool log = false) : book(log) {}

    void SetUp() override {
        ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("skins")));
        timer->setInterval(1000000); // never fires by itself here
    }
    QString PathOf(const QString& name) const {
        return folder.filePath(QStringLiteral("skins/") + kSkin.arg(name));
    }
    void Put(const QString& name, const QImage& image) { ASSERT_TRUE(image.save(PathOf(name), "BMP")); }
    void Put(const QString& name, const QByteArray& bytes) {
        QFile file(PathOf(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    SkinSelection& Make() {
        skins = std::make_unique<SkinSelection>(
            record, book.log, SkinControls::Of(form), folder.path(), dib, region,
            SkinSelection::Calls{.doEvents =
                                     [this] {
                                         steps += QStringLiteral("events, %1").arg(State());
                                         if (onEvents) {
                                             onEvents();
                                         }
                                     },
                                 .sleep =
                                     [this](int milliseconds) {
                                         steps +=
                                             QStringLiteral("sleep %1, %2").arg(milliseconds).arg(State());
                                     },
                                 .closing = {}});
        skins->ListSkins();
        return *skins;
    }
    /// What shows of the controls that a change hides, and whether the acquisition runs.
    QString State() const {
        auto shown = [](bool visible) { return visible ? QStringLiteral("+") : QStringLiteral("-"); };
        QString state = shown(!Bar("VertCursorBar")->isHidden() && !Bar("HorizCursorBar")->isHidden());
        for (const char* name : kButtons) {
            state += shown(form.control<ButtonControl1>(name)->ButtonVisible());
        }
        for (const char* name : kKnobs) {
            state += shown(form.control<KnobControl1>(name)->KnobVisible());
        }
        for (const char* name : kSliders) {
            state += shown(form.control<SliderControl1>(name)->SliderVisible());
        }
        return state + (timer->isActive() ? QStringLiteral(" runs") : QString());
    }
    Picture* Bar(const char* name) const { return form.control<Picture>(name); }
    bool AllVisible() const { return !State().contains(QLatin1Char('-')); }
    Colour FaceAt(int x, int y) const {
        const QImage image = form.control<Picture>("Image1")->Image().toImage();
        return image.isNull() ? 0 : FromQColor(image.pixelColor(x, y));
    }

    static constexpr const char* kButtons[] = {
        "RunButton",        "OnceButton",      "TrigModeButton",       "TrigTypeButton",
        "CloseButton",      "MinimiseButton",  "MinimiseMostlyButton", "UsersGuideButton",
        "FullScreenButton", "NormaliseButton", "SampleDotsButton"};
    static constexpr const char* kKnobs[] = {"HorizZoomKnob", "TimeBaseKnob", "TriggerKnob", "VertZoomKnob"};
    static constexpr const char* kSliders[] = {"HorizPanSlider", "VertPanSlider", "PretriggerSlider"};

    QTemporaryDir folder;
    LogBook book;
    Record record;
    Form form{toy::FaceDesign()};
    QTimer* timer = form.timer("RunTimer");
    cDIBSection dib{book.log};
    cDIBSectionRegion region{book.log};
    std::unique_ptr<SkinSelection> skins;
    QStringList steps;
    std::function<void()> onEvents;
};

class LoggedSkins : public Skins {
  protected:
    LoggedSkins() : Skins(true) {}
};

inline QStringList TextsOf(const QListWidget& list) {
    QStringList texts;
    for (int i = 0; i < list.count(); ++i) {
        texts += list.item(i)->text();
    }
    return texts;
}
